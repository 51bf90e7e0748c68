// A set of columns as a bit set: supports, read relations and used columns are unions and
// intersections of machine words.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrel {

/// The number of bits that are set. std::popcount is a call into a library on a machine that need
/// not have the instruction for it.
constexpr std::size_t bitCount(std::uint64_t word) {
  word -= (word >> 1) & 0x5555555555555555;
  word = (word & 0x3333333333333333) + ((word >> 2) & 0x3333333333333333);
  return static_cast<std::size_t>(
      (((word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F) * 0x0101010101010101) >> 56);
}

/// True if exactly one bit is set; std::has_single_bit makes the same call.
constexpr bool isSingleBit(std::uint64_t word) {
  return word != 0 && (word & (word - 1)) == 0;
}

/// The lowest bit that is set, alone; 0 for 0.
constexpr std::uint64_t lowestBit(std::uint64_t word) {
  return word & (~word + 1);
}

/// A set of column indices. It grows on insertion; a column beyond the stored words is absent.
class ColumnSet {
 public:
  bool contains(std::size_t column) const {
    return column / 64 < words_.size() && ((words_[column / 64] >> (column % 64)) & 1U) != 0;
  }

  void insert(std::size_t column) { insertWord(column / 64, std::uint64_t{1} << (column % 64)); }

  /// Adds the columns 64 * index + b for each bit b that is set in `bits`.
  void insertWord(std::size_t index, std::uint64_t bits) {
    if (bits == 0) return;
    if (index >= words_.size()) words_.resize(index + 1);
    words_[index] |= bits;
  }

  /// Empties the set and keeps its memory.
  void clear() { words_.clear(); }

  bool empty() const {
    for (const std::uint64_t word : words_) {
      if (word != 0) return false;
    }
    return true;
  }

  std::size_t size() const {
    std::size_t count = 0;
    for (const std::uint64_t word : words_) count += bitCount(word);
    return count;
  }

  /// Calls visit(column) for each column of the set, in ascending order.
  template <class Visit>
  void forEach(Visit visit) const {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      for (std::uint64_t rest = words_[i]; rest != 0; rest &= rest - 1) {
        visit(i * 64 + static_cast<std::size_t>(std::countr_zero(rest)));
      }
    }
  }

 private:
  std::vector<std::uint64_t> words_;
};

}  // namespace ostrel
