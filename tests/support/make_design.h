// Well-formed designs made from bytes, for fuzzers and tests. Every design can be read, so the
// bytes go into what the passes work on: who reads whom, functions that look like exclusive ORs,
// terms that several functions share.
#pragma once

#include <cstdint>
#include <span>
#include <string>

/// Bytes one after another, and zeros behind the last.
class Bytes {
 public:
  explicit Bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  bool empty() const { return bytes_.empty(); }

  unsigned next() {
    if (bytes_.empty()) return 0;
    const unsigned byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

/// The text of a PLA file; takes what it needs from the bytes, at most for a hundred rows.
std::string makeDesign(Bytes& bytes);
