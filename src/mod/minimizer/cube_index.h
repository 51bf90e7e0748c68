// Finds cubes, and the neighbours of a cube, by hash instead of by comparison with a whole list.
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
#include <vector>

#include "minimizer/cube.h"
#include "minimizer/hash_key.h"

namespace ostrel {

/// The factors of the lower halves of a block; with their own halves exchanged they are those of
/// the upper ones.
struct HashFactors {
  std::uint64_t care;
  std::uint64_t value;
};

/// Drawn from the secret by the block's number, so that blocks cannot stand in for one another.
inline HashFactors hashFactors(std::size_t block) {
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

/// Calls visit(change) for each literal of the cube, in column order. `change(factors, bit number,
/// literal is "1")` gives what a change of that literal adds to the hash; visit gets hash plus
/// that, and ends the walk by giving false.
template <PackedCube C, class Change, class Visit>
void forEachNeighbourHash(const C& cube, std::uint64_t hash, Change change, Visit visit) {
  for (std::size_t i = 0; i < cube.blockCount(); ++i) {
    const Cube::Block block = cube.block(i);
    const HashFactors factors = hashFactors(i);
    for (std::uint64_t rest = block.care; rest != 0; rest &= rest - 1) {
      const auto bit = static_cast<unsigned>(std::countr_zero(rest));
      if (!visit(hash + change(factors, bit, ((block.value >> bit) & 1U) != 0))) return;
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

/// A hash table from a 64-bit key to the numbers that were added under it, in the order of adding.
/// It is refilled for each list and keeps its memory.
class CubeIndex {
 public:
  static constexpr std::uint32_t none = UINT32_MAX;

  /// Empties the table and makes room for the numbers 0 to capacity - 1.
  void reset(std::size_t capacity);

  /// Adds a number behind all others of its key. Each number is added at most once.
  void add(std::uint64_t key, std::size_t number);

  /// The first number of a key, or `none`; next() gives the one behind it.
  std::uint32_t first(std::uint64_t key) const {
    const std::uint64_t bit = key >> bitShift_;
    if (((filter_[bit / 64] >> (bit % 64)) & 1U) == 0) return none;
    const Slot& slot = slots_[find(key)];
    return slot.last == none ? none : slot.first;
  }
  std::uint32_t next(std::uint32_t number) const { return next_[number]; }

  /// Takes a number out that was added under `key`.
  void remove(std::uint64_t key, std::size_t number);

 private:
  struct Slot {
    std::uint64_t key = 0;
    std::uint32_t first = none;  // `none` in a used slot: all its numbers were removed
    std::uint32_t last = none;   // `none`: the slot is free
  };

  /// The slot of a key, or the free one where it belongs.
  std::size_t find(std::uint64_t key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = static_cast<std::size_t>(key >> slotShift_);
    while (slots_[i].last != none && slots_[i].key != key) i = (i + 1) & mask;
    return i;
  }

  std::vector<Slot> slots_;  // a power of two, at most half full; probed linearly
  std::vector<std::uint32_t> next_;

  // 32 bits for each slot, of which one is set where a key was added. Most look-ups are for
  // neighbours that do not exist, and end here, in a table small enough for the nearest cache.
  std::vector<std::uint64_t> filter_;

  // Keys are sums of products, so it is their high bits that are well mixed.
  unsigned slotShift_ = 0;
  unsigned bitShift_ = 0;
};

}  // namespace ostrel
