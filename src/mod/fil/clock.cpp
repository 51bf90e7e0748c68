#include "fil/clock.h"

#include <array>

namespace ostrel {

std::string timeText(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  std::array<char, 64> text{};  // 24 characters up to the year 9999
  return {text.data(), std::strftime(text.data(), text.size(), "%a %b %e %H:%M:%S %Y", &local)};
}

}  // namespace ostrel
