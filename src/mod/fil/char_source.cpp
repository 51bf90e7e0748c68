#include "fil/char_source.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ostrel {
namespace {

int digitValue(int c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 16;
}

}  // namespace

int CharSource::peekBehindCr() {
  buffer_.sbumpc();
  if (buffer_.sgetc() == '\n') return '\n';
  pendingCr_ = true;
  return '\r';
}

std::optional<std::string> CharSource::word(std::size_t limit) {
  skipSpace();
  std::string text;
  for (int c = peek(); c != end && !isSpace(static_cast<char>(c)) && text.size() < limit;
       c = peek()) {
    text += static_cast<char>(take());
  }
  if (text.empty()) return std::nullopt;
  return text;
}

std::optional<int> CharSource::integer() {
  skipSpace();
  const bool negative = peek() == '-';
  if (negative || peek() == '+') take();
  int radix = 10;
  bool hasDigit = false;
  if (peek() == '0') {
    take();
    radix = 8;
    hasDigit = true;
    if (peek() == 'x' || peek() == 'X') {
      take();
      radix = 16;
      hasDigit = false;
    }
  }
  constexpr std::int64_t limit = std::int64_t{std::numeric_limits<int>::max()} + 1;
  std::int64_t value = 0;
  for (; digitValue(peek()) < radix; hasDigit = true) {
    value = std::min(value * radix + digitValue(take()), limit);
  }
  if (!hasDigit || (value == limit && !negative)) return std::nullopt;
  return static_cast<int>(negative ? -value : value);
}

std::string CharSource::restOfLine(std::size_t limit) {
  std::string text;
  for (int c = peek(); c != end && c != '\n' && text.size() < limit; c = peek()) {
    text += static_cast<char>(take());
  }
  return text;
}

void CharSource::skipLine(std::size_t limit) {
  for (std::size_t i = 0; i < limit; ++i) {
    const int c = take();
    if (c == end || c == '\n') return;
  }
}

}  // namespace ostrel
