// Coverage by tautology.
//
// Idea. Cube c lies in the OR of cubes d1, d2, ... if and only if the cofactors of the d against c,
// that is, those that intersect c, freed of the literals of c, are together true everywhere; and
// that is found by unate reduction and splitting (Brayton, Hachtel, McMullen, Sangiovanni-
// Vincentelli, "Logic Minimization Algorithms for VLSI Synthesis", 1984). A cofactor is never
// written down: a question is a list of cubes and the columns in which they are looked at. It is a
// tautology if one cube has no literal there. A column is settled where it occurs in one sense only
// (where that is false the cubes that use it vanish; if the others are a tautology, all are), or
// where some cube has no other literal (only the opposite value is still in question). When no
// column can be settled, the question is split on a column of the cube with the fewest literals,
// and both halves must be tautologies.
//
// Example. Is "1-" covered by "11" and "-0"? Only the second column is looked at. Where it is 1 the
// first of them is true, so only 0 is in question; there the other has no literal left, and the
// cube is covered.
//
// Cost. A few passes over the cubes for most questions, a few word operations for each cube and
// block; exponential in the worst case, which is why the work is counted. Each split removes a
// column, so no more halves than columns wait.
//
// Order. None: the answer does not depend on the order of the cubes.
#include "minimizer/coverage.h"

#include <algorithm>
#include <cassert>
#include <type_traits>

namespace ostrel {

template <PackedCube C>
std::size_t Coverage<C>::blocks() const {
  return std::is_same_v<C, Cube64> ? 1 : blocks_;
}

template <PackedCube C>
void Coverage<C>::reset(std::size_t width) {
  blocks_ = std::max<std::size_t>((width + 63) / 64, 1);
  assert(blocks_ == blocks());
  rows_.clear();
  seen_.resize(blocks_);
  settled_.resize(blocks_);
}

template <PackedCube C>
void Coverage<C>::add(const C& cube) {
  assert(widthOf(cube) <= 64 * blocks());
  for (std::size_t i = 0; i < blocks(); ++i) {
    const Cube::Block b = cube.block(i);
    rows_.push_back({b.value, b.care ^ b.value});
  }
}

template <PackedCube C>
void Coverage<C>::remove(std::size_t number) {
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(number * blocks());
  std::fill_n(begin, blocks(), Literals{~Word{0}, ~Word{0}});
}

template <PackedCube C>
bool Coverage<C>::isCovered(const C& cube, std::size_t number, Effort& effort) {
  if (ask(cube, number)) return true;
  while (!begins_.empty()) {
    switch (judge(effort)) {
      case Verdict::Uncovered:
        return false;
      case Verdict::Covered:
        open_.resize(begins_.back());
        begins_.pop_back();
        columns_.resize(columns_.size() - blocks());
        break;
      case Verdict::Open:
        split();
        break;
    }
  }
  return true;
}

/// Makes the first question. True if a single cube answers it.
template <PackedCube C>
bool Coverage<C>::ask(const C& cube, std::size_t number) {
  open_.clear();
  begins_.assign(1, 0);
  columns_.clear();
  for (std::size_t i = 0; i < blocks(); ++i) {
    const Cube::Block b = cube.block(i);
    columns_.push_back(~b.care);
    settled_[i] = {b.care ^ b.value, b.value};
  }
  const auto isGone = [](Literals row) { return (row.ones & row.zeros) != 0; };
  // Most cubes are apart, and mostly by their first block: that alone has to be fast.
  const bool isUniversal = widthOf(cube) == 0;
  const Literals opposite = settled_.front();
  const Literals* const end = rows_.data() + rows_.size();
  std::uint32_t other = 0;
  for (const Literals* first = rows_.data(); first != end; first += blocks(), ++other) {
    if (first->meets(opposite) || other == number) continue;
    bool isApart = false;
    Word left = first->any() & columns_.front();
    for (std::size_t i = 1; i < blocks(); ++i) {
      isApart |= first[i].meets(settled_[i]);
      left |= first[i].any() & columns_[i];
    }
    if (isApart || (isUniversal && isGone(*first))) continue;
    if (left == 0) return true;
    open_.push_back(other);
  }
  return false;
}

// Settles columns of the last question until there is none to settle.
template <PackedCube C>
typename Coverage<C>::Verdict Coverage<C>::judge(Effort& effort) {
  while (open_.size() > begins_.back() &&
         effort.spend((open_.size() - begins_.back()) * blocks())) {
    if (look()) return Verdict::Covered;
    if (!settle()) return Verdict::Open;
  }
  return Verdict::Uncovered;
}

// Collects the literals, and those of cubes that have no other. True if the question is answered:
// by a cube without a literal, or by two lone ones that are opposite.
template <PackedCube C>
bool Coverage<C>::look() {
  std::fill(seen_.begin(), seen_.end(), Literals{});
  std::fill(settled_.begin(), settled_.end(), Literals{});
  for (std::size_t k = begins_.back(); k < open_.size(); ++k) {
    Word columnsOfCube = 0;
    bool isLone = true;
    for (std::size_t i = 0; i < blocks(); ++i) {
      const Literals literals = row(open_[k])[i].in(columns()[i]);
      seen_[i].add(literals);
      isLone &= columnsOfCube == 0 || literals.any() == 0;
      columnsOfCube |= literals.any();
    }
    if (columnsOfCube == 0) return true;
    if (!isLone || !isSingleBit(columnsOfCube)) continue;
    for (std::size_t i = 0; i < blocks(); ++i) settled_[i].add(row(open_[k])[i].in(columns()[i]));
  }
  return std::any_of(settled_.begin(), settled_.end(),
                     [](Literals lone) { return (lone.ones & lone.zeros) != 0; });
}

// Takes the columns with literals of one sense and those of lone literals out of the question, and
// the cubes that vanish with them. False if there is none.
template <PackedCube C>
bool Coverage<C>::settle() {
  Word any = 0;
  for (std::size_t i = 0; i < blocks(); ++i) {
    const Word oneSided = seen_[i].ones ^ seen_[i].zeros;
    settled_[i].add({oneSided, oneSided});
    any |= settled_[i].any();
    columns()[i] &= ~settled_[i].any();
  }
  if (any == 0) return false;
  std::size_t kept = begins_.back();
  for (std::size_t k = begins_.back(); k < open_.size(); ++k) {
    bool vanishes = false;
    for (std::size_t i = 0; i < blocks(); ++i) vanishes |= row(open_[k])[i].meets(settled_[i]);
    if (!vanishes) open_[kept++] = open_[k];
  }
  open_.resize(kept);
  return true;
}

// Leaves the half for "0" of a column in the place of the question, and puts the half for "1"
// behind it.
template <PackedCube C>
void Coverage<C>::split() {
  const auto [block, bit] = columnToSplit();
  columns()[block] &= ~bit;
  columns_.insert(columns_.end(), columns_.end() - static_cast<std::ptrdiff_t>(blocks()),
                  columns_.end());
  const std::size_t end = open_.size();
  std::size_t kept = begins_.back();
  for (std::size_t k = begins_.back(); k < end; ++k) {
    const Literals literals = row(open_[k])[block];
    if ((literals.zeros & bit) == 0) open_.push_back(open_[k]);
    if ((literals.ones & bit) == 0) open_[kept++] = open_[k];
  }
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(kept),
              open_.begin() + static_cast<std::ptrdiff_t>(end));
  begins_.push_back(kept);
}

// The first column of the first of the cubes with the fewest literals: one half loses the cube, in
// the other it has the fewest left to be settled by.
template <PackedCube C>
std::pair<std::size_t, typename Coverage<C>::Word> Coverage<C>::columnToSplit() {
  std::size_t fewest = SIZE_MAX;
  std::uint32_t shortest = 0;
  for (std::size_t k = begins_.back(); k < open_.size(); ++k) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < blocks(); ++i) {
      count += bitCount(row(open_[k])[i].in(columns()[i]).any());
    }
    if (count < fewest) shortest = open_[k];
    fewest = std::min(fewest, count);
  }
  std::size_t block = 0;
  while (row(shortest)[block].in(columns()[block]).any() == 0) ++block;
  const Word left = row(shortest)[block].in(columns()[block]).any();
  return {block, lowestBit(left)};
}

template class Coverage<Cube>;
template class Coverage<Cube64>;

}  // namespace ostrel
