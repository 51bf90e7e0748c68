// The secret of this process behind the hashes of what a file says many of.
//
// A hash that anybody can work out lets a file of a few hundred kilobytes name a hundred thousand
// things that all fall into one place of a table, and each look-up then walks over all of them.
// With a key that no file can know, the places are spread whatever the file says. Nothing that
// leaves the program may depend on it: tables are only looked things up in, never walked along.
#pragma once

#include <cstdint>
#include <ctime>
#include <exception>
#include <random>

namespace ostrel {

/// 64 bits from the system, or from the clock where the system has none to give.
inline std::uint64_t freshHashKey() noexcept {
  try {
    std::random_device source;
    return std::uint64_t{source()} << 32U | source();
  } catch (const std::exception&) {
    return static_cast<std::uint64_t>(std::time(nullptr)) * 0x9E3779B97F4A7C15;
  }
}

inline const std::uint64_t hashKey = freshHashKey();

/// Spreads the bits of a number over the whole result; different numbers stay different.
constexpr std::uint64_t mixBits(std::uint64_t x) {
  x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9;
  x = (x ^ (x >> 27U)) * 0x94D049BB133111EB;
  return x ^ (x >> 31U);
}

/// The odd factor number `index` of a multiplicative hash, drawn from the secret.
inline std::uint64_t hashFactor(std::uint64_t index) {
  return mixBits(hashKey + (index + 1) * 0x9E3779B97F4A7C15) | 1U;
}

}  // namespace ostrel
