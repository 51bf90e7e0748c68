#include "fil/clock.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace ostrel {

namespace {

std::string textOf(const std::tm& time) {
  std::array<char, 64> text{};  // 24 characters up to the year 9999
  return {text.data(), std::strftime(text.data(), text.size(), "%a %b %e %H:%M:%S %Y", &time)};
}

}  // namespace

std::string timeText(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  return textOf(local);
}

std::string fileDate() {
  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  const std::string_view text = fixed == nullptr ? "" : fixed;
  std::time_t time = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), time);
  std::tm universal{};
  const bool isNumber = fault == std::errc() && end == text.data() + text.size();
  if (!isNumber || gmtime_r(&time, &universal) == nullptr) return timeText(std::time(nullptr));
  return textOf(universal);
}

}  // namespace ostrel
