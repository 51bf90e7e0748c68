// Idea. The text in blocks of 64 bytes, each of which stirs a state of eight words in 64 rounds.
// Example. "abc" gives ba7816bf 8f01cfea 414140de 5dae2223 b00361a3 96177a9c b410ff61 f20015ad.
// Cost. 64 rounds for each block.
// Order. None is seen outside: the hash is what the standard (FIPS 180-4, "SHA-256") says.
#include "fil/sha256.h"

#include <bit>
#include <cassert>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace ostrel {
namespace {

constexpr std::size_t blockSize = 64;

// The first 32 bits behind the point of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> roundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using Schedule = std::array<std::uint32_t, 64>;

Schedule scheduleOf(const char* block) {
  Schedule w{};
  for (std::size_t i = 0; i < blockSize; ++i) {
    w[i / 4] = w[i / 4] << 8U | static_cast<unsigned char>(block[i]);
  }
  for (std::size_t i = 16; i < w.size(); ++i) {
    const std::uint32_t a = w[i - 15];
    const std::uint32_t b = w[i - 2];
    w[i] = w[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3U) + w[i - 7] +
           (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10U);
  }
  return w;
}

std::string hex(std::uint32_t word) {
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789abcdef"[word >> shift & 15U];
  return text;
}

}  // namespace

void Sha256::mix(const char* block) {
  const Schedule w = scheduleOf(block);
  std::array<std::uint32_t, 8> s = state_;
  for (std::size_t i = 0; i < w.size(); ++i) {
    const std::uint32_t e = s[4];
    const std::uint32_t a = s[0];
    const std::uint32_t first = s[7] + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                ((e & s[5]) ^ (~e & s[6])) + roundConstants[i] + w[i];
    const std::uint32_t second = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) +
                                 ((a & s[1]) ^ (a & s[2]) ^ (s[1] & s[2]));
    s = {first + second, a, s[1], s[2], s[3] + first, e, s[5], s[6]};
  }
  for (std::size_t i = 0; i < s.size(); ++i) state_[i] += s[i];
}

void Sha256::update(std::string_view bytes) {
  size_ += bytes.size();
  rest_ += bytes;
  std::size_t done = 0;
  for (; rest_.size() - done >= blockSize; done += blockSize) mix(rest_.data() + done);
  rest_.erase(0, done);
}

std::string Sha256::hexDigest() {
  const std::uint64_t bits = size_ * 8;
  std::string end(1, '\x80');
  while ((rest_.size() + end.size()) % blockSize != blockSize - 8) end += '\0';
  for (int shift = 56; shift >= 0; shift -= 8) end += static_cast<char>(bits >> shift & 255U);
  update(end);
  assert(rest_.empty());
  std::string text;
  for (const std::uint32_t word : state_) text += hex(word);
  return text;
}

std::optional<FileHash> hashFile(const std::string& name) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(name, ignored)) return std::nullopt;
  std::ifstream file(name, std::ios::binary);
  Sha256 hash;
  FileHash result;
  std::string piece(1U << 16U, '\0');
  while (file) {
    file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    const auto count = static_cast<std::size_t>(file.gcount());
    hash.update(std::string_view(piece).substr(0, count));
    result.bytes += count;
  }
  if (!file.eof()) return std::nullopt;
  result.sha256 = hash.hexDigest();
  return result;
}

}  // namespace ostrel
