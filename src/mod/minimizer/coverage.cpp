// Coverage by tautology: cube c lies in the OR of cubes d1, d2, ... if and only if the cofactors of
// the d against c, that is, those that intersect c, freed of the literals of c, are together true
// everywhere.
//
// Example: is "1-" covered by "11" and "-0"? The cofactors are "-1" and "-0". Where the second
// column is 1 the first of them is true, so only 0 is in question; there the other has no literal
// left, and the cube is covered.
//
// With the cubes as bit sets, one for each literal, a cofactor is never written down: taking the
// cubes out that have a literal, and a column out of those that are looked at, is all there is to
// it. A question is a tautology if one cube has no literal in the columns in question. A column is
// settled where it occurs in one sense only (where that is false the cubes that use it vanish; if
// the others are a tautology, all are), or where some cube has no other literal (only the opposite
// value is still in question). When no column can be settled, the question is split on a column,
// and both halves must be tautologies. Each split removes a column, so at most `width` halves wait,
// and their memory is there from the start. The cost is exponential in the worst case, which is why
// the work is counted, a few passes over the columns in most, whatever the order of the cubes.
#include "minimizer/coverage.h"

#include <algorithm>
#include <bit>

namespace ostrel {
namespace {

/// Calls visit(column, word of the column, its bit) for each column of a set, in ascending order.
/// visit ends the walk by giving false, and may take its own column out of the set.
template <class Visit>
void forEachColumn(const std::uint64_t* columns, std::size_t blocks, Visit visit) {
  for (std::size_t i = 0; i < blocks; ++i) {
    for (std::uint64_t rest = columns[i]; rest != 0; rest &= rest - 1) {
      const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
      if (!visit(i * 64 + bit, i, rest & (~rest + 1))) return;
    }
  }
}

/// True if the two sets have a cube in common.
bool meet(const std::uint64_t* a, const std::uint64_t* b, std::size_t words) {
  std::uint64_t common = 0;
  for (std::size_t w = 0; w < words; ++w) common |= a[w] & b[w];
  return common != 0;
}

void takeOut(std::uint64_t* set, const std::uint64_t* others, std::size_t words) {
  for (std::size_t w = 0; w < words; ++w) set[w] &= ~others[w];
}

}  // namespace

void Coverage::reset(std::size_t width, std::size_t capacity) {
  blocks_ = std::max<std::size_t>((width + 63) / 64, 1);
  words_ = std::max<std::size_t>((capacity + 63) / 64, 1);
  count_ = 0;
  literals_.assign(2 * width * words_, 0);
  cubes_.assign(words_, 0);
  questions_.resize((width + 1) * (blocks_ + words_));
  once_.resize(words_);
  twice_.resize(words_);
  thrice_.resize(words_);
}

template <PackedCube C>
void Coverage::add(const C& cube) {
  const std::size_t word = count_ / 64;
  const Word bit = Word{1} << (count_ % 64);
  for (std::size_t i = 0; i < cube.blockCount(); ++i) {
    const Cube::Block block = cube.block(i);
    for (Word rest = block.care; rest != 0; rest &= rest - 1) {
      const auto column = static_cast<std::size_t>(std::countr_zero(rest));
      const std::size_t sense = (block.value >> column) & 1U;
      literals_[(2 * (i * 64 + column) + sense) * words_ + word] |= bit;
    }
  }
  cubes_[word] |= bit;
  ++count_;
}

template <PackedCube C>
bool Coverage::isCovered(const C& cube, std::size_t number, Effort& effort) {
  const Question first = question(0);
  std::copy(cubes_.begin(), cubes_.end(), first.cubes);
  first.cubes[number / 64] &= ~(Word{1} << (number % 64));
  const std::size_t width = literals_.size() / words_ / 2;
  for (std::size_t i = 0; i < blocks_; ++i) {
    const Cube::Block block = cube.block(i);
    for (Word rest = block.care; rest != 0; rest &= rest - 1) {
      const auto column = static_cast<std::size_t>(std::countr_zero(rest));
      const bool isOne = ((block.value >> column) & 1U) != 0;
      takeOut(first.cubes, literal(i * 64 + column, !isOne), words_);
    }
    const std::size_t left = width - std::min(width, i * 64);
    first.columns[i] = ~block.care & (left < 64 ? (Word{1} << left) - 1 : ~Word{0});
  }
  std::size_t open = 1;
  while (open > 0) {
    const Question last = question(open - 1);
    const Verdict verdict = judge(last, effort);
    if (verdict == Verdict::Uncovered) return false;
    if (verdict == Verdict::Covered) {
      --open;
    } else {
      split(last, question(open++));
    }
  }
  return true;
}

// Settles columns until there is none to settle.
Coverage::Verdict Coverage::judge(Question open, Effort& effort) {
  while (true) {
    if (!effort.spend(literals_.size())) return Verdict::Uncovered;
    if (!meet(open.cubes, open.cubes, words_)) return Verdict::Uncovered;
    const bool hasChanged = look(open);
    Word universal = 0;
    Word lone = 0;
    for (std::size_t w = 0; w < words_; ++w) {
      universal |= open.cubes[w] & ~once_[w];
      lone |= open.cubes[w] & once_[w] & ~twice_[w];
    }
    if (universal != 0) return Verdict::Covered;
    if (lone != 0) {
      if (settleLone(open) == Verdict::Covered) return Verdict::Covered;
    } else if (!hasChanged) {
      return Verdict::Open;
    }
  }
}

// Settles the columns with literals of one sense and counts the literals of the cubes that are
// left. True if a cube vanished.
bool Coverage::look(Question open) {
  std::fill(once_.begin(), once_.end(), 0);
  std::fill(twice_.begin(), twice_.end(), 0);
  std::fill(thrice_.begin(), thrice_.end(), 0);
  bool hasChanged = false;
  forEachColumn(open.columns, blocks_, [&](std::size_t column, std::size_t i, Word bit) {
    const Word* zeros = literal(column, false);
    const Word* ones = literal(column, true);
    const bool hasZero = meet(open.cubes, zeros, words_);
    const bool hasOne = meet(open.cubes, ones, words_);
    if (hasZero && hasOne) {
      for (std::size_t w = 0; w < words_; ++w) {
        const Word any = zeros[w] | ones[w];
        thrice_[w] |= twice_[w] & any;
        twice_[w] |= once_[w] & any;
        once_[w] |= any;
      }
      return true;
    }
    open.columns[i] &= ~bit;
    hasChanged |= hasZero || hasOne;
    if (hasZero) takeOut(open.cubes, zeros, words_);
    if (hasOne) takeOut(open.cubes, ones, words_);
    return true;
  });
  return hasChanged;
}

// Settles the columns in which a cube has its only literal.
Coverage::Verdict Coverage::settleLone(Question open) {
  for (std::size_t w = 0; w < words_; ++w) once_[w] &= open.cubes[w] & ~twice_[w];
  Verdict verdict = Verdict::Open;
  forEachColumn(open.columns, blocks_, [&](std::size_t column, std::size_t i, Word bit) {
    const Word* zeros = literal(column, false);
    const Word* ones = literal(column, true);
    const bool hasZero = meet(once_.data(), zeros, words_);
    const bool hasOne = meet(once_.data(), ones, words_);
    if (hasZero && hasOne) verdict = Verdict::Covered;
    if (hasZero || hasOne) open.columns[i] &= ~bit;
    if (hasZero) takeOut(open.cubes, zeros, words_);
    if (hasOne) takeOut(open.cubes, ones, words_);
    return verdict == Verdict::Open;
  });
  return verdict;
}

// Leaves the half for "1" of a column in the place of the question, and puts the half for "0" into
// `next`. A column of a cube with two literals is best: one half loses the cube, in the other it
// settles the second column.
void Coverage::split(Question open, Question next) {
  for (std::size_t w = 0; w < words_; ++w) twice_[w] &= open.cubes[w] & ~thrice_[w];
  std::size_t chosen = SIZE_MAX;
  forEachColumn(open.columns, blocks_, [&](std::size_t column, std::size_t, Word) {
    const bool isBest = meet(twice_.data(), literal(column, false), words_) ||
                        meet(twice_.data(), literal(column, true), words_);
    if (isBest || chosen == SIZE_MAX) chosen = column;
    return !isBest;
  });
  open.columns[chosen / 64] &= ~(Word{1} << (chosen % 64));
  std::copy_n(open.columns, blocks_ + words_, next.columns);
  takeOut(open.cubes, literal(chosen, false), words_);
  takeOut(next.cubes, literal(chosen, true), words_);
}

template void Coverage::add(const Cube&);
template void Coverage::add(const NarrowCube&);
template bool Coverage::isCovered(const Cube&, std::size_t, Effort&);
template bool Coverage::isCovered(const NarrowCube&, std::size_t, Effort&);

}  // namespace ostrel
