#include "fil/clock.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace ostrel {

namespace {

std::string formatted(const char* format, const std::tm& time) {
  std::array<char, 64> text{};  // 24 characters up to the year 9999
  return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

/// The day of the month has a blank in front of a single digit, which not every library can print.
std::string textOf(const std::tm& time) {
  const std::string day = std::to_string(time.tm_mday);
  const char* gap = time.tm_mday < 10 ? "  " : " ";
  return formatted("%a %b", time) + gap + day + formatted(" %H:%M:%S %Y", time);
}

}  // namespace

std::string timeText(std::time_t time) {
  const std::tm* local = std::localtime(&time);
  return textOf(local == nullptr ? std::tm{} : *local);
}

std::string fileDate() {
  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  const std::string_view text = fixed == nullptr ? "" : fixed;
  std::time_t time = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), time);
  const bool isNumber = fault == std::errc() && end == text.data() + text.size();
  const std::tm* universal = isNumber ? std::gmtime(&time) : nullptr;
  return universal == nullptr ? timeText(std::time(nullptr)) : textOf(*universal);
}

}  // namespace ostrel
