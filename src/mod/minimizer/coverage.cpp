// Coverage by tautology: cube c lies in the OR of cubes d1, d2, ... if and only if the cofactors of
// the d against c, that is, those that intersect c, freed of the literals of c, are together true
// everywhere.
//
// Example: is "1-" covered by "11" and "-0"? The cofactors are "-1" and "-0". Where the second
// column is 1 the first of them is true, so only 0 is in question; there the other has no literal
// left, and the cube is covered.
//
// A set of rows is a tautology if one row has no literal. A column is settled where one row has no
// other literal (only the opposite value is still in question), or where it occurs in one sense
// only (where that is false the rows that use it vanish; if the others are a tautology, all are).
// When no column can be settled, the question is split on a column of a shortest row, and both
// halves must be tautologies. The halves wait on a stack of segments in one array, so that depth
// costs no calls and no allocation. Each split removes a column, so at most `width` halves wait.
// The cost is exponential in the worst case, a few passes over the rows in most.
#include "minimizer/coverage.h"

#include <algorithm>
#include <bit>

namespace ostrel {

template <PackedCube C>
void Coverage::begin(const C& cube, std::size_t width) {
  stride_ = std::max<std::size_t>((width + 63) / 64, 1);
  cube_.resize(stride_);
  for (std::size_t i = 0; i < stride_; ++i) cube_[i] = cube.block(i);
  end_ = 0;
}

// Each cofactor is written, and the next one over it if the two cubes turn out to be disjoint: a
// good part of them is, in no order that a branch predictor could learn.
template <PackedCube C>
void Coverage::add(std::span<const C> others) {
  const std::size_t stride = stride_;
  makeRoom(others.size() * stride);
  Cube::Block* row = rows_.data() + end_;
  const Cube::Block* own = cube_.data();
  for (const C& other : others) {
    std::uint64_t opposite = 0;
    std::size_t i = 0;
    do {  // every row has a first block, and hardly any a second
      const Cube::Block block = other.block(i);
      opposite |= own[i].care & block.care & (own[i].value ^ block.value);
      row[i] = {block.care & ~own[i].care, block.value & ~own[i].care};
    } while (++i < stride);
    row += opposite == 0 ? stride : 0;
  }
  end_ = static_cast<std::size_t>(row - rows_.data());
}

bool Coverage::isCovered() {
  begins_.assign(1, 0);
  while (!begins_.empty()) {
    const std::size_t begin = begins_.back();
    const Verdict verdict = judge(begin);
    if (verdict == Verdict::Uncovered) return false;
    if (verdict == Verdict::Open) {
      split(begin);
    } else {
      end_ = begin;
      begins_.pop_back();
    }
  }
  return true;
}

// Judges the last segment, settling columns until there is none to settle.
Coverage::Verdict Coverage::judge(std::size_t begin) {
  do {
    if (begin == end_) return Verdict::Uncovered;
    if (look(begin)) return Verdict::Covered;
  } while (settleColumns(begin));
  return Verdict::Open;
}

// One pass over the rows for what they have in each column; true if they are a tautology at sight.
bool Coverage::look(std::size_t begin) {
  columns_.assign(stride_, Columns{});
  for (std::size_t row = begin; row < end_; row += stride_) {
    bool hasLiteral = false;
    bool hasMore = false;
    for (std::size_t i = 0; i < stride_; ++i) {
      const Cube::Block block = rows_[row + i];
      columns_[i].ones |= block.value;
      columns_[i].zeros |= block.care & ~block.value;
      hasMore |= (block.care & (block.care - 1)) != 0 || (hasLiteral && block.care != 0);
      hasLiteral |= block.care != 0;
    }
    if (!hasLiteral) return true;
    if (hasMore) continue;
    for (std::size_t i = 0; i < stride_; ++i) {
      const Cube::Block block = rows_[row + i];
      columns_[i].loneOnes |= block.value;
      columns_[i].loneZeros |= block.care & ~block.value;
      if ((columns_[i].loneOnes & columns_[i].loneZeros) != 0) return true;
    }
  }
  return false;
}

// Gives all columns that can be settled their value: rows that are false there are dropped, and the
// literals that are true there are taken out of the others. False if there is no such column.
bool Coverage::settleColumns(std::size_t begin) {
  const auto settledToZero = [](const Columns& c) { return c.loneOnes | (c.ones & ~c.zeros); };
  const auto settledToOne = [](const Columns& c) { return c.loneZeros | (c.zeros & ~c.ones); };
  std::uint64_t settled = 0;
  for (const Columns& c : columns_) settled |= settledToZero(c) | settledToOne(c);
  if (settled == 0) return false;
  std::size_t end = begin;
  for (std::size_t row = begin; row < end_; row += stride_) {
    std::uint64_t isFalse = 0;
    for (std::size_t i = 0; i < stride_; ++i) {
      const Cube::Block block = rows_[row + i];
      const std::uint64_t zero = settledToZero(columns_[i]);
      const std::uint64_t one = settledToOne(columns_[i]);
      isFalse |= (block.value & zero) | (block.care & ~block.value & one);
      rows_[end + i] = {block.care & ~(zero | one), block.value & ~(zero | one)};
    }
    if (isFalse == 0) end += stride_;
  }
  end_ = end;
  return true;
}

// Replaces the last segment by its two cofactors in a column of a shortest row: the one for "0" in
// place, the one for "1" as a new segment behind it.
void Coverage::split(std::size_t begin) {
  makeRoom(end_ - begin);
  const std::size_t shortest = shortestRow(begin);
  std::size_t at = 0;
  while (rows_[shortest + at].care == 0) ++at;
  const std::uint64_t bit = rows_[shortest + at].care & -rows_[shortest + at].care;
  std::size_t zeroEnd = begin;
  std::size_t oneEnd = end_;
  for (std::size_t row = begin; row < end_; row += stride_) {
    const bool isLiteral = (rows_[row + at].care & bit) != 0;
    const bool isOne = (rows_[row + at].value & bit) != 0;
    rows_[row + at].care &= ~bit;
    rows_[row + at].value &= ~bit;
    if (!isLiteral || isOne) oneEnd = copyRow(row, oneEnd);
    if (!isOne) zeroEnd = copyRow(row, zeroEnd);
  }
  // The first segment has shrunk: close the gap, so that each segment ends where the next begins.
  std::copy(rows_.data() + end_, rows_.data() + oneEnd, rows_.data() + zeroEnd);
  begins_.push_back(zeroEnd);
  end_ = zeroEnd + (oneEnd - end_);
}

std::size_t Coverage::copyRow(std::size_t from, std::size_t to) {
  for (std::size_t i = 0; i < stride_; ++i) rows_[to + i] = rows_[from + i];
  return to + stride_;
}

void Coverage::makeRoom(std::size_t blocks) {
  if (end_ + blocks > rows_.size()) rows_.resize(std::max(end_ + blocks, 2 * rows_.size()));
}

std::size_t Coverage::shortestRow(std::size_t begin) const {
  std::size_t shortest = begin;
  std::size_t fewest = SIZE_MAX;
  for (std::size_t row = begin; row < end_; row += stride_) {
    std::size_t literals = 0;
    for (std::size_t i = 0; i < stride_; ++i) {
      literals += static_cast<std::size_t>(std::popcount(rows_[row + i].care));
    }
    if (literals >= fewest) continue;
    fewest = literals;
    shortest = row;
  }
  return shortest;
}

template void Coverage::begin(const Cube&, std::size_t);
template void Coverage::begin(const NarrowCube&, std::size_t);
template void Coverage::add(std::span<const Cube>);
template void Coverage::add(std::span<const NarrowCube>);

}  // namespace ostrel
