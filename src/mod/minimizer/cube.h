// A cube is a product of literals over numbered columns (variables), packed two bits a column.
//
// In text a cube has one character for each column: "1" is the true literal, "0" the complemented
// literal and "-", a dash, says that the column does not matter. The cube stands for all points
// that agree with its literals. Packed, a column has a care bit (it is a literal) and a value bit
// (its sense). Both bits of a dash are 0, so every column beyond the stored blocks is a dash:
// widening a cube by don't-care columns costs nothing, and a cube carries no width. The width
// travels with the list that holds the cubes.
#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "minimizer/column_set.h"

namespace ostrel {

class Cube64;

class Cube {
 public:
  /// 64 neighbouring columns. A value bit is 0 wherever the care bit is 0.
  struct Block {
    std::uint64_t care = 0;
    std::uint64_t value = 0;
    friend bool operator==(const Block&, const Block&) = default;

    char at(std::size_t bit) const {
      if (((care >> bit) & 1U) == 0) return '-';
      return ((value >> bit) & 1U) != 0 ? '1' : '0';
    }
    void invert(std::size_t bit) { value ^= care & (std::uint64_t{1} << bit); }

    /// Calls visit(offset + bit, literal) for each literal in column order.
    template <class Visit>
    void forEachLiteral(std::size_t offset, Visit visit) const {
      for (std::uint64_t rest = care; rest != 0; rest &= rest - 1) {
        const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
        visit(offset + bit, ((value >> bit) & 1U) != 0 ? '1' : '0');
      }
    }
  };

  /// The universal cube: every column is a dash.
  Cube() = default;

  /// The cube of a text; each character other than '0' and '1' is a dash.
  explicit Cube(std::string_view text);

  explicit Cube(const Cube64& cube);
  Cube(const Cube& other);
  Cube& operator=(const Cube& other);
  Cube(Cube&& other) noexcept;
  Cube& operator=(Cube&& other) noexcept;
  ~Cube() = default;

  /// The text of the columns 0 to width - 1.
  std::string text(std::size_t width) const;

  /// '0', '1' or '-'.
  char at(std::size_t column) const { return block(column / 64).at(column % 64); }

  /// Sets a column to '0' or '1', or to a dash for any other character.
  void set(std::size_t column, char literal);

  /// Exchanges '0' and '1' in a column; a dash stays.
  void invert(std::size_t column) {
    if (column / 64 >= blockCount_) return;
    mutableBlock(column / 64).invert(column % 64);
  }

  /// Number of columns that are not a dash.
  std::size_t literalCount() const {
    std::size_t count = bitCount(first_.care);
    for (std::size_t i = 1; i < blockCount_; ++i) count += bitCount(rest_[i - 1].care);
    return count;
  }

  /// Adds the columns of all literals to `columns`.
  void addSupportTo(ColumnSet& columns) const {
    for (std::size_t i = 0; i < blockCount_; ++i) columns.insertWord(i, block(i).care);
  }

  /// Calls visit(column, literal) for each literal in column order, literal being '0' or '1'.
  template <class Visit>
  void forEachLiteral(Visit visit) const {
    for (std::size_t i = 0; i < blockCount_; ++i) block(i).forEachLiteral(i * 64, visit);
  }

  /// Stored blocks, at least 1. Block i holds the columns 64 * i to 64 * i + 63.
  std::size_t blockCount() const { return blockCount_; }
  Block block(std::size_t i) const {
    if (i == 0) return first_;
    return i < blockCount_ ? rest_[i - 1] : Block{};
  }
  /// Replaces block i, storing more blocks where needed; value bits without care bit are dropped.
  void setBlock(std::size_t i, Block b);

 private:
  Block& mutableBlock(std::size_t i) { return i == 0 ? first_ : rest_[i - 1]; }
  void grow(std::size_t blockCount);

  Block first_;                    // enough for almost every cube of compact columns
  std::size_t blockCount_ = 1;     // first_ counts
  std::unique_ptr<Block[]> rest_;  // blocks 1 to blockCount_ - 1
};

/// A cube of at most 64 columns, as the algorithms hold it: one block and nothing to own, so that
/// lists of them move as plain memory. It halves the time of a run, which is mostly that of moving
/// cubes between lists.
class Cube64 {
 public:
  Cube64() = default;
  explicit Cube64(const Cube& cube) : block_(cube.block(0)) {}

  void set(std::size_t column, char literal) {
    const std::uint64_t bit = std::uint64_t{1} << column;
    block_.care = literal == '-' ? block_.care & ~bit : block_.care | bit;
    block_.value = literal == '1' ? block_.value | bit : block_.value & ~bit;
  }
  char at(std::size_t column) const { return block_.at(column); }
  void invert(std::size_t column) { block_.invert(column); }
  std::size_t literalCount() const { return bitCount(block_.care); }
  template <class Visit>
  void forEachLiteral(Visit visit) const {
    block_.forEachLiteral(0, visit);
  }
  static constexpr std::size_t blockCount() { return 1; }
  Cube::Block block(std::size_t /*i*/) const { return block_; }
  void setBlock(std::size_t /*i*/, Cube::Block b) { block_ = {b.care, b.value & b.care}; }

 private:
  Cube::Block block_;
};

inline Cube::Cube(const Cube64& cube) : first_(cube.block(0)) {}

/// Cube or Cube64: whatever shows its columns as blocks.
template <class C>
concept PackedCube = requires(const C& cube) {
  { cube.blockCount() } -> std::convertible_to<std::size_t>;
  { cube.block(0) } -> std::same_as<Cube::Block>;
};

/// One more than the last column with a literal: the least width that the cube fits in.
template <PackedCube C>
std::size_t widthOf(const C& cube) {
  for (std::size_t i = cube.blockCount(); i-- > 0;) {
    if (cube.block(i).care != 0) return 64 * i + std::bit_width(cube.block(i).care);
  }
  return 0;
}

/// True if test(block of a, block of b) holds for all blocks of the two cubes.
template <PackedCube C, class Test>
bool everyBlock(const C& a, const C& b, Test test) {
  const std::size_t count = std::max(a.blockCount(), b.blockCount());
  for (std::size_t i = 0; i < count; ++i) {
    if (!test(a.block(i), b.block(i))) return false;
  }
  return true;
}

/// Two cubes are equal when they have the same literals.
template <PackedCube C>
bool operator==(const C& a, const C& b) {
  return everyBlock(a, b, [](Cube::Block x, Cube::Block y) { return x == y; });
}

/// True if some point lies in both cubes, that is, if no column is "0" in one and "1" in the other.
template <PackedCube C>
bool cubesIntersect(const C& a, const C& b) {
  return everyBlock(a, b, [](Cube::Block x, Cube::Block y) {
    return (x.care & y.care & (x.value ^ y.value)) == 0;
  });
}

/// Containment: every point of `inner` lies in `outer`; a cube contains itself. A literal of
/// `outer` that `inner` lacks, or has in the other sense, is all that can speak against it.
template <PackedCube C>
bool cubeContains(const C& outer, const C& inner) {
  return everyBlock(outer, inner, [](Cube::Block x, Cube::Block y) {
    return (x.care & ~(y.care & ~(x.value ^ y.value))) == 0;
  });
}

/// True if the two cubes have literals in the same columns.
template <PackedCube C>
bool haveSameDashes(const C& a, const C& b) {
  return everyBlock(a, b, [](Cube::Block x, Cube::Block y) { return x.care == y.care; });
}

}  // namespace ostrel
