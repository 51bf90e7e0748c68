#include "report/json_writer.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdio>
#include <ostream>
#include <utility>

namespace ostrel {
namespace {

// What stands this deep has a line of its own; anything deeper follows on that line.
constexpr std::size_t lineDepth = 2;

/// The length of the UTF-8 sequence at the front of the text, which is not empty; 0 for none.
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 0 || first > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80) return 0;
  }
  // Too long for what it says, half of a pair, or beyond the last character.
  const bool isWrong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) ||
                       (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F);
  return isWrong ? 0 : length;
}

std::string escape(char c) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned char>(c));
  return text.data();
}

}  // namespace

std::string quotedJson(std::string_view text) {
  std::string quoted = "\"";
  while (!text.empty()) {
    const char c = text.front();
    const std::size_t length = sequenceLength(text);
    const bool isControl = static_cast<unsigned char>(c) < 0x20 || c == '\x7f';
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += length == 0 || isControl ? escape(c) : std::string(text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return quoted + '"';
}

void JsonWriter::breakLine() {
  stream_ << '\n' << std::string(hasElements_.size(), ' ');
}

void JsonWriter::separate() {
  if (std::exchange(isBehindKey_, false) || hasElements_.empty()) return;
  if (hasElements_.back()) stream_ << ',';
  if (hasElements_.size() <= lineDepth) {
    breakLine();
  } else if (hasElements_.back()) {
    stream_ << ' ';
  }
  hasElements_.back() = true;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  assert(!hasElements_.empty() && !isBehindKey_);
  separate();
  stream_ << quotedJson(name) << ": ";
  isBehindKey_ = true;
  return *this;
}

void JsonWriter::raw(std::string_view text) {
  separate();
  stream_ << text;
}

void JsonWriter::value(std::string_view text) {
  raw(quotedJson(text));
}

void JsonWriter::value(bool isTrue) {
  raw(isTrue ? "true" : "false");
}

void JsonWriter::value(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6f", number);
  raw(text.data());
}

void JsonWriter::begin(char bracket) {
  separate();
  stream_ << bracket;
  hasElements_.push_back(false);
}

void JsonWriter::end(char bracket) {
  assert(!hasElements_.empty() && !isBehindKey_);
  const bool hadElements = hasElements_.back();
  hasElements_.pop_back();
  if (hadElements && hasElements_.size() < lineDepth) breakLine();
  stream_ << bracket;
  if (hasElements_.empty()) stream_ << '\n';
}

}  // namespace ostrel
