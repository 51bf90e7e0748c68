// SHA-256, by which a report names the bytes of a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

/// The hash of FIPS 180-4, over bytes that come in pieces.
class Sha256 {
 public:
  void update(std::string_view bytes);

  /// The hash of all bytes so far as 64 hexadecimal digits; nothing may follow.
  std::string hexDigest();

 private:
  void mix(const char* block);

  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::string rest_;  // less than a block
  std::uint64_t size_ = 0;
};

/// The length and the hash of a file.
struct FileHash {
  std::uint64_t bytes = 0;
  std::string sha256;
};

/// Reads the file of a name; nothing if it is no plain file, which could give other bytes each
/// time, or can't be read to its end.
std::optional<FileHash> hashFile(const std::string& name);

}  // namespace ostrel
