// Merging and expansion of a sum of products in groups of equal dash count.
//
// Example for joining: "10", "11", "01" stand in group 0 in reverse order, "01" first. It differs
// from "11" in one column: both go, and "-1" is appended to group 1. "10" stays, and the list is
// "-1", "10".
//
// Each step goes through the groups upward and through each group in order, and gives a cube the
// *first* partner in order; a made cube goes to the end of the next group, where its own turn
// comes. The partner of a cube is one of few texts (one literal inverted, dropped, or both), so
// in large groups it is found by hash: a step costs one look-up for each literal of each cube
// instead of a comparison with every other cube. The lists are the same either way.
#include "minimizer/cube_groups.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>

namespace ostrel {
namespace {

// Groups with more cubes than this are searched by hash, smaller ones by a plain scan. Below about
// 16 cubes the scan is faster, above 64 the hash; in between the two take the same time.
constexpr std::size_t scanLimit = 32;

// For cubes a, and b with one dash more, all in columns that are literals of a: the column in
// which the two have opposite literals. Nothing if b has a literal where a has a dash, or if
// their distance is not exactly 1.
template <PackedCube C>
std::optional<std::size_t> expandableColumn(const C& a, const C& b) {
  std::optional<std::size_t> column;
  const std::size_t blocks = std::max(a.blockCount(), b.blockCount());
  for (std::size_t i = 0; i < blocks; ++i) {
    const Cube::Block x = a.block(i);
    const Cube::Block y = b.block(i);
    if ((y.care & ~x.care) != 0) return std::nullopt;
    const std::uint64_t opposite = y.care & (x.value ^ y.value);
    if (opposite == 0) continue;
    if (column || !isSingleBit(opposite)) return std::nullopt;
    column = i * 64 + static_cast<std::size_t>(std::countr_zero(opposite));
  }
  return column;
}

}  // namespace

template <PackedCube C>
void CubeGroups<C>::add(std::size_t dashes, const C& cube) {
  groups_[dashes].push_back(cube);
  lowest_ = std::min(lowest_, dashes);
  highest_ = std::max(highest_, dashes);
}

template <PackedCube C>
void CubeGroups<C>::groupByDashes(std::vector<C>& list) {
  for (auto cube = list.rbegin(); cube != list.rend(); ++cube) {
    assert(cube->literalCount() <= width());
    add(dashCount(*cube, width()), *cube);
  }
  mayHaveTwins_ = true;
  list.clear();
}

template <PackedCube C>
void CubeGroups<C>::flattenGroups(std::vector<C>& list) {
  list.clear();
  for (std::size_t d = highest_ + 1; d-- > lowest_;) {
    std::move(groups_[d].begin(), groups_[d].end(), std::back_inserter(list));
    groups_[d].clear();
  }
  lowest_ = width() + 1;
  highest_ = 0;
}

template <PackedCube C>
void CubeGroups<C>::dropDuplicates(std::size_t groupCount) {
  if (!mayHaveTwins_) return;
  mayHaveTwins_ = false;
  for (std::size_t d = lowest_; d <= highest_ && d < groupCount; ++d) {
    if (!hasTwins(groups_[d])) continue;
    dropDuplicatesOf(groups_[d]);
    mayHaveTwins_ = true;
  }
}

template <PackedCube C>
bool CubeGroups<C>::hasTwins(const Group& group) {
  if (group.size() > scanLimit) return true;  // as good as certain
  for (std::size_t a = 1; a < group.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      if (haveSameDashes(group[a], group[b])) return true;
    }
  }
  return false;
}

template <PackedCube C>
void CubeGroups<C>::dropDuplicatesOf(Group& group) {
  if (group.size() <= scanLimit) {
    for (std::size_t a = 0; a + 1 < group.size(); ++a) {
      const auto behind = group.begin() + static_cast<std::ptrdiff_t>(a) + 1;
      group.erase(std::remove(behind, group.end(), group[a]), group.end());
    }
    return;
  }
  gone_.assign(group.size(), 0);
  index_.reset(group.size());
  for (std::size_t i = 0; i < group.size(); ++i) {
    const std::uint64_t key = literalHash(group[i]);
    for (auto k = index_.first(key); k != CubeIndex::none && gone_[i] == 0; k = index_.next(k)) {
      gone_[i] = group[k] == group[i];
    }
    if (gone_[i] == 0) index_.add(key, i);
  }
  eraseGone(group);
}

template <PackedCube C>
void CubeGroups<C>::mergeGroups(std::size_t universalGroup) {
  dropDuplicates(universalGroup);
  for (std::size_t d = lowest_; mayHaveTwins_ && d <= highest_ && d < width(); ++d) {
    joinNeighbours(d);
  }
  for (std::size_t d = lowest_; d < highest_ && d + 2 <= universalGroup; ++d) dropContained(d);
  if (universalGroup == width()) keepUniversalAlone();
}

template <PackedCube C>
void CubeGroups<C>::joinNeighbours(std::size_t dashes) {
  const std::size_t size = groups_[dashes].size();
  if (size < 2) return;
  size <= scanLimit ? scanNeighbours(dashes) : indexNeighbours(dashes);
}

template <PackedCube C>
void CubeGroups<C>::join(std::size_t dashes, const C& a, const C& b) {
  C joined = a;
  joined.set(*adjacentColumn(a, b), '-');
  add(dashes + 1, joined);
}

template <PackedCube C>
void CubeGroups<C>::scanNeighbours(std::size_t dashes) {
  Group& group = groups_[dashes];
  for (auto a = group.begin(); a != group.end();) {
    const auto isNeighbour = [a](const C& b) { return adjacentColumn(*a, b).has_value(); };
    const auto b = std::find_if(a + 1, group.end(), isNeighbour);
    if (b == group.end()) {
      ++a;
      continue;
    }
    join(dashes, *a, *b);
    group.erase(b);
    a = group.erase(a);
  }
}

// The partner of a cube is the first one behind it that is still there and differs in exactly one
// literal. Nothing needs to tell "behind" from "in front": a cube that was passed and is still
// there found no partner, although this cube, if they are neighbours, was there to be found. So
// all neighbours that are left stand behind.
template <PackedCube C>
void CubeGroups<C>::indexNeighbours(std::size_t dashes) {
  Group& group = groups_[dashes];
  gone_.assign(group.size(), 0);
  index_.reset(group.size());
  for (std::size_t i = 0; i < group.size(); ++i) index_.add(literalHash(group[i]), i);
  for (std::size_t a = 0; a < group.size(); ++a) {
    if (gone_[a] != 0) continue;
    const std::size_t b = indexedNeighbour(group, a);
    if (b == group.size()) continue;
    join(dashes, group[a], group[b]);
    for (const std::size_t joined : {a, b}) {
      index_.remove(literalHash(group[joined]), joined);
      gone_[joined] = 1;
    }
  }
  eraseGone(group);
}

template <PackedCube C>
std::size_t CubeGroups<C>::indexedNeighbour(const Group& group, std::size_t a) const {
  std::size_t best = group.size();
  forEachNeighbourHash(group[a], literalHash(group[a]), invertedLiteral, [&](std::uint64_t key) {
    auto b = index_.first(key);
    while (b != CubeIndex::none && !adjacentColumn(group[a], group[b])) b = index_.next(b);
    if (b != CubeIndex::none) best = std::min<std::size_t>(best, b);
    return true;
  });
  return best;
}

// A cube of the next group differs from a cube in exactly one place if and only if it contains it.
template <PackedCube C>
void CubeGroups<C>::dropContained(std::size_t dashes) {
  Group& group = groups_[dashes];
  const Group& larger = groups_[dashes + 1];
  if (group.empty() || larger.empty()) return;
  const bool useIndex = larger.size() > scanLimit;
  if (useIndex) {
    index_.reset(larger.size());
    for (std::size_t i = 0; i < larger.size(); ++i) index_.add(literalHash(larger[i]), i);
  }
  std::erase_if(group, [&](const C& inner) {
    const auto contains = [&inner](const C& outer) { return cubeContains(outer, inner); };
    if (!useIndex) return std::any_of(larger.begin(), larger.end(), contains);
    bool isContained = false;
    forEachNeighbourHash(inner, literalHash(inner), droppedLiteral, [&](std::uint64_t key) {
      auto b = index_.first(key);
      while (b != CubeIndex::none && !contains(larger[b])) b = index_.next(b);
      isContained = b != CubeIndex::none;
      return !isContained;
    });
    return isContained;
  });
}

template <PackedCube C>
void CubeGroups<C>::expandGroups() {
  dropDuplicates(width());
  for (std::size_t d = lowest_; d < highest_ && d + 2 <= width(); ++d) expandGroup(d);
  keepUniversalAlone();
}

// If b agrees with a except for an opposite literal in one column, and has one dash more, then a
// without the literal of that column is a OR a part of b. The grown cube joins the end of the
// larger group at once, as a partner for the cubes that follow.
template <PackedCube C>
void CubeGroups<C>::expandGroup(std::size_t dashes) {
  const std::size_t larger = groups_[dashes + 1].size();
  if (groups_[dashes].empty() || larger == 0) return;
  larger <= scanLimit ? scanExpanders(dashes) : indexExpanders(dashes);
}

template <PackedCube C>
void CubeGroups<C>::scanExpanders(std::size_t dashes) {
  Group& larger = groups_[dashes + 1];
  std::erase_if(groups_[dashes], [&](const C& cube) {
    for (const C& partner : larger) {
      const auto column = expandableColumn(cube, partner);
      if (!column) continue;
      larger.push_back(cube);
      larger.back().set(*column, '-');
      mayHaveTwins_ = true;
      return true;
    }
    return false;
  });
}

template <PackedCube C>
void CubeGroups<C>::indexExpanders(std::size_t dashes) {
  Group& larger = groups_[dashes + 1];
  index_.reset(larger.size() + groups_[dashes].size());
  for (std::size_t i = 0; i < larger.size(); ++i) index_.add(careHash(larger[i]), i);
  std::erase_if(groups_[dashes], [&](const C& cube) {
    const std::size_t b = indexedExpander(cube, larger);
    if (b == larger.size()) return false;
    C expanded = cube;
    expanded.set(*expandableColumn(cube, larger[b]), '-');
    index_.add(careHash(expanded), larger.size());
    larger.push_back(std::move(expanded));
    mayHaveTwins_ = true;
    return true;
  });
}

// The literals of a partner stand in all columns but one of the cube's literals: one look-up for
// each column that may be missing finds all of them.
template <PackedCube C>
std::size_t CubeGroups<C>::indexedExpander(const C& cube, const Group& larger) const {
  std::size_t best = larger.size();
  forEachNeighbourHash(cube, careHash(cube), droppedPlace, [&](std::uint64_t key) {
    auto b = index_.first(key);
    while (b < best && !expandableColumn(cube, larger[b])) b = index_.next(b);
    if (b < best) best = b;
    return true;
  });
  return best;
}

template <PackedCube C>
void CubeGroups<C>::keepUniversalAlone() {
  if (groups_.back().empty()) return;
  for (std::size_t d = lowest_; d < width(); ++d) groups_[d].clear();
  lowest_ = width();
}

template <PackedCube C>
void CubeGroups<C>::dropRedundant(Effort& effort) {
  const std::size_t end = std::min(highest_ + 1, width());
  std::size_t count = 0;
  for (std::size_t d = lowest_; d < end; ++d) count += groups_[d].size();
  if (count < 2) return;
  if constexpr (std::is_same_v<C, NarrowCube>) {
    if (count <= RowCoverage::capacity) {
      rowCoverage_.reset();
      dropCovered(rowCoverage_, end, count, effort);
      return;
    }
  }
  coverage_.reset(width(), count);
  dropCovered(coverage_, end, count, effort);
}

// The cubes are numbered from the most dashes down, so that when the walk goes up, the groups that
// no longer help are the last numbers.
template <PackedCube C>
template <class AnyCoverage>
void CubeGroups<C>::dropCovered(AnyCoverage& coverage, std::size_t end, std::size_t count,
                                Effort& effort) {
  for (std::size_t d = end; d-- > lowest_;) {
    for (const C& cube : groups_[d]) coverage.add(cube);
  }
  for (std::size_t d = lowest_; d < end; ++d) {
    count -= groups_[d].size();
    std::size_t number = count;
    std::erase_if(groups_[d], [&](const C& cube) {
      const bool isRedundant = coverage.isCovered(cube, number, effort);
      if (isRedundant) coverage.remove(number);
      ++number;
      return isRedundant;
    });
    while (number-- > count) coverage.remove(number);
  }
}

template <PackedCube C>
void CubeGroups<C>::eraseGone(Group& group) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < group.size(); ++i) {
    if (gone_[i] != 0) continue;
    if (kept != i) group[kept] = std::move(group[i]);
    ++kept;
  }
  group.resize(kept);
}

template class CubeGroups<Cube>;
template class CubeGroups<NarrowCube>;

}  // namespace ostrel
