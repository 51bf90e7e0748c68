// Hashes of cubes, and of the neighbours of a cube.
//
// The hash is linear in the bits of a cube: hash = sum over half blocks of care * C + value * V,
// modulo 2^64, with secret factors C and V for each half. A literal that is inverted or dropped
// adds or takes away one shifted factor, so the hash of each neighbour costs a few instructions and
// no neighbour needs to be built. It is halves because a factor that is shifted by up to 31 places
// keeps 32 of its secret bits; of one shifted by 63 only a bit is left, which is known, and rows
// that differ in such columns alone would all have one hash. Equal hashes are a hint and no proof;
// whoever looks up tests the cubes that it is given.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "minimizer/cube.h"
#include "minimizer/hash_key.h"

namespace ostrel {

/// The factors of the lower halves of a block; with their own halves exchanged they are those of
/// the upper ones.
struct HashFactors {
  std::uint64_t care;
  std::uint64_t value;
};

/// Those of the first block, the only one of nearly all cubes: drawn once.
inline const HashFactors firstHashFactors = {hashFactor(0), hashFactor(1)};

/// Drawn from the secret by the block's number, so that blocks cannot stand in for one another.
inline HashFactors hashFactors(std::size_t block) {
  if (block == 0) return firstHashFactors;
  return {hashFactor(2 * block), hashFactor(2 * block + 1)};
}

/// What 64 bits of a cube add to its hash, and what a single one of them does.
inline std::uint64_t hashOfBits(std::uint64_t factor, std::uint64_t bits) {
  return (bits & UINT32_MAX) * factor + (bits >> 32U) * std::rotl(factor, 32);
}
inline std::uint64_t hashOfBit(std::uint64_t factor, unsigned bit) {
  return std::rotl(factor, static_cast<int>(bit & 32U)) << (bit & 31U);
}

/// The hash of the places of the literals, whatever their sense.
template <PackedCube C>
std::uint64_t careHash(const C& cube) {
  std::uint64_t hash = 0;
  for (std::size_t i = 0; i < cube.blockCount(); ++i) {
    hash += hashOfBits(hashFactors(i).care, cube.block(i).care);
  }
  return hash;
}

/// The hash of all literals; equal for equal cubes, however many blocks each one stores.
template <PackedCube C>
std::uint64_t literalHash(const C& cube) {
  std::uint64_t hash = 0;
  for (std::size_t i = 0; i < cube.blockCount(); ++i) {
    const Cube::Block block = cube.block(i);
    if (block.care == 0) continue;
    const HashFactors factors = hashFactors(i);
    hash += hashOfBits(factors.care, block.care) + hashOfBits(factors.value, block.value);
  }
  return hash;
}

/// Calls visit(hash + change) for each literal of the cube, in column order: `change(factors, bit
/// number, literal is "1")` gives what a change of that literal adds to the hash.
template <PackedCube C, class Change, class Visit>
void forEachNeighbourHash(const C& cube, std::uint64_t hash, Change change, Visit visit) {
  for (std::size_t i = 0; i < cube.blockCount(); ++i) {
    const Cube::Block block = cube.block(i);
    const HashFactors factors = hashFactors(i);
    for (std::uint64_t rest = block.care; rest != 0; rest &= rest - 1) {
      const auto bit = static_cast<unsigned>(std::countr_zero(rest));
      visit(hash + change(factors, bit, ((block.value >> bit) & 1U) != 0));
    }
  }
}

/// Hash changes for forEachNeighbourHash: the literal is inverted, or becomes a dash in a hash of
/// all literals, or becomes a dash in a hash of places.
inline std::uint64_t invertedLiteral(HashFactors f, unsigned bit, bool isOne) {
  const std::uint64_t change = hashOfBit(f.value, bit);
  return isOne ? -change : change;
}
inline std::uint64_t droppedLiteral(HashFactors f, unsigned bit, bool isOne) {
  return -hashOfBit(f.care, bit) - (isOne ? hashOfBit(f.value, bit) : 0);
}
inline std::uint64_t droppedPlace(HashFactors f, unsigned bit, bool /*isOne*/) {
  return -hashOfBit(f.care, bit);
}

}  // namespace ostrel
