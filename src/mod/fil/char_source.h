// The characters of a text stream, one at a time.
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <streambuf>
#include <string>

#include "fil/text.h"

namespace ostrel {

/// Reads a stream without its formatting layer. A CR in front of a newline is dropped, so that a
/// file from a system with two-character line ends reads like any other.
class CharSource {
 public:
  explicit CharSource(std::istream& stream) : buffer_(*stream.rdbuf()) {}

  static constexpr int end = -1;

  /// The next character, 0 to 255, without taking it; `end` behind the last one.
  int peek() {
    if (pendingCr_) return '\r';
    const int c = buffer_.sgetc();
    return c == '\r' ? peekBehindCr() : c;
  }

  /// Takes the next character.
  int take() {
    const int c = peek();
    if (pendingCr_) {
      pendingCr_ = false;
    } else if (c != end) {
      buffer_.sbumpc();
    }
    return c;
  }

  void skipSpace() {
    for (int c = peek(); c != end && isSpace(static_cast<char>(c)); c = peek()) take();
  }

  /// Skips white space, newlines too, and takes what stands in front of the next white space, at
  /// most `limit` characters. None if nothing is left.
  std::optional<std::string> word(std::size_t limit);

  /// Takes an optional sign and digits behind white space; 0 in front means octal, 0x hexadecimal.
  /// None if there is no digit or the number needs more than 32 bits.
  std::optional<int> integer();

  /// Takes what is left of the line, at most `limit` characters; the newline stays.
  std::string restOfLine(std::size_t limit);

  /// Drops characters through the next newline, at most `limit`.
  void skipLine(std::size_t limit);

 private:
  int peekBehindCr();

  std::streambuf& buffer_;
  bool pendingCr_ = false;  // a lone CR was taken from the buffer and is still to be given out
};

}  // namespace ostrel
