#include "run/same_file.h"

#include <filesystem>
#include <system_error>

namespace ostrel {

bool isSameFile(const std::string& a, const std::string& b) {
  if (a.empty() || b.empty()) return false;
  std::error_code ignored;
  if (a == b || std::filesystem::equivalent(a, b, ignored)) return true;
  const auto place = [&](const std::string& name) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(name, ignored), ignored);
  };
  const std::filesystem::path first = place(a);
  return !first.empty() && first == place(b);
}

}  // namespace ostrel
