#include "run/same_file.h"

#include <filesystem>
#include <system_error>

namespace ostrel {

bool isSameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;
  return a == b || std::filesystem::equivalent(a, b, ignored);
}

}  // namespace ostrel
