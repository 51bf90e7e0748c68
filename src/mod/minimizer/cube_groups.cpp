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
#include <span>
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
    if (column || !std::has_single_bit(opposite)) return std::nullopt;
    column = i * 64 + static_cast<std::size_t>(std::countr_zero(opposite));
  }
  return column;
}

}  // namespace

template <PackedCube C>
void CubeGroups<C>::groupByDashes(std::vector<C>& list) {
  sizes_.assign(groups_.size(), 0);
  for (const C& cube : list) {
    assert(cube.literalCount() <= width());
    ++sizes_[dashCount(cube, width())];
  }
  for (std::size_t d = 0; d < groups_.size(); ++d) groups_[d].reserve(sizes_[d]);
  for (auto cube = list.rbegin(); cube != list.rend(); ++cube) {
    groups_[dashCount(*cube, width())].push_back(std::move(*cube));
  }
  list.clear();
}

template <PackedCube C>
void CubeGroups<C>::flattenGroups(std::vector<C>& list) {
  list.clear();
  for (auto group = groups_.rbegin(); group != groups_.rend(); ++group) {
    std::move(group->begin(), group->end(), std::back_inserter(list));
    group->clear();
  }
}

template <PackedCube C>
void CubeGroups<C>::dropDuplicates(std::size_t groupCount) {
  const std::size_t count = std::min(groupCount, groups_.size());
  for (std::size_t d = 0; d < count; ++d) dropDuplicatesOf(groups_[d]);
}

template <PackedCube C>
void CubeGroups<C>::dropDuplicatesOf(std::vector<C>& group) {
  if (group.size() < 2) return;
  gone_.assign(group.size(), 0);
  const bool useIndex = group.size() > scanLimit;
  if (useIndex) index_.reset(group.size());
  for (std::size_t i = 0; i < group.size(); ++i) {
    if (useIndex) {
      const std::uint64_t key = literalHash(group[i]);
      for (auto k = index_.first(key); k != CubeIndex::none && gone_[i] == 0; k = index_.next(k)) {
        gone_[i] = group[k] == group[i];
      }
      if (gone_[i] == 0) index_.add(key, i);
    } else {
      for (std::size_t k = 0; k < i && gone_[i] == 0; ++k) gone_[i] = group[k] == group[i];
    }
  }
  eraseGone(group);
}

template <PackedCube C>
void CubeGroups<C>::mergeGroups(std::size_t universalGroup) {
  dropDuplicates(universalGroup);
  for (std::size_t d = 0; d < width(); ++d) joinNeighbours(d);
  for (std::size_t d = 0; d < width() && d + 2 <= universalGroup; ++d) dropContained(d);
  if (universalGroup == width()) keepUniversalAlone();
}

// The partner of a cube is the first one behind it that is still there and differs in exactly one
// literal. Nothing needs to tell "behind" from "in front": a cube that was passed and is still
// there found no partner, although this cube, if they are neighbours, was there to be found. So
// all neighbours that are left stand behind.
template <PackedCube C>
void CubeGroups<C>::joinNeighbours(std::size_t dashes) {
  std::vector<C>& group = groups_[dashes];
  if (group.size() < 2) return;
  gone_.assign(group.size(), 0);
  const bool useIndex = group.size() > scanLimit;
  if (useIndex) {
    index_.reset(group.size());
    for (std::size_t i = 0; i < group.size(); ++i) index_.add(literalHash(group[i]), i);
  }
  for (std::size_t a = 0; a < group.size(); ++a) {
    if (gone_[a] != 0) continue;
    const std::size_t b = useIndex ? indexedNeighbour(group, a) : scannedNeighbour(group, a);
    if (b == group.size()) continue;
    if (useIndex) {
      index_.remove(literalHash(group[a]), a);
      index_.remove(literalHash(group[b]), b);
    }
    gone_[a] = gone_[b] = 1;
    const std::size_t column = *adjacentColumn(group[a], group[b]);
    groups_[dashes + 1].push_back(std::move(group[a]));
    groups_[dashes + 1].back().set(column, '-');
  }
  eraseGone(group);
}

template <PackedCube C>
std::size_t CubeGroups<C>::scannedNeighbour(const std::vector<C>& group, std::size_t a) const {
  std::size_t b = a + 1;
  while (b < group.size() && (gone_[b] != 0 || !adjacentColumn(group[a], group[b]))) ++b;
  return b;
}

template <PackedCube C>
std::size_t CubeGroups<C>::indexedNeighbour(const std::vector<C>& group, std::size_t a) const {
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
  std::vector<C>& group = groups_[dashes];
  const std::vector<C>& larger = groups_[dashes + 1];
  if (group.empty() || larger.empty()) return;
  gone_.assign(group.size(), 0);
  const bool useIndex = larger.size() > scanLimit;
  if (useIndex) {
    index_.reset(larger.size());
    for (std::size_t i = 0; i < larger.size(); ++i) index_.add(literalHash(larger[i]), i);
  }
  for (std::size_t a = 0; a < group.size(); ++a) {
    const auto contains = [&](const C& cube) { return cubeContains(cube, group[a]); };
    if (!useIndex) {
      gone_[a] = std::any_of(larger.begin(), larger.end(), contains);
      continue;
    }
    bool isContained = false;
    forEachNeighbourHash(group[a], literalHash(group[a]), droppedLiteral, [&](std::uint64_t key) {
      auto b = index_.first(key);
      while (b != CubeIndex::none && !contains(larger[b])) b = index_.next(b);
      isContained = b != CubeIndex::none;
      return !isContained;
    });
    gone_[a] = isContained;
  }
  eraseGone(group);
}

template <PackedCube C>
void CubeGroups<C>::expandGroups() {
  dropDuplicates(width());
  for (std::size_t d = 0; d + 2 <= width(); ++d) expandGroup(d);
  keepUniversalAlone();
}

// If b agrees with a except for an opposite literal in one column, and has one dash more, then a
// without the literal of that column is a OR a part of b. The grown cube joins the end of the
// larger group at once, as a partner for the cubes that follow.
template <PackedCube C>
void CubeGroups<C>::expandGroup(std::size_t dashes) {
  std::vector<C>& group = groups_[dashes];
  std::vector<C>& larger = groups_[dashes + 1];
  if (group.empty() || larger.empty()) return;
  gone_.assign(group.size(), 0);
  const bool useIndex = larger.size() > scanLimit;
  if (useIndex) {
    index_.reset(larger.size() + group.size());
    for (std::size_t i = 0; i < larger.size(); ++i) index_.add(careHash(larger[i]), i);
  }
  for (std::size_t a = 0; a < group.size(); ++a) {
    const auto expands = [&](const C& cube) { return expandableColumn(group[a], cube); };
    const auto b = useIndex
                       ? indexedExpander(group[a], larger)
                       : static_cast<std::size_t>(
                             std::find_if(larger.begin(), larger.end(), expands) - larger.begin());
    if (b == larger.size()) continue;
    const std::size_t column = *expandableColumn(group[a], larger[b]);
    group[a].set(column, '-');
    if (useIndex) index_.add(careHash(group[a]), larger.size());
    larger.push_back(std::move(group[a]));
    gone_[a] = 1;
  }
  eraseGone(group);
}

// The literals of a partner stand in all columns but one of the cube's literals: one look-up for
// each column that may be missing finds all of them.
template <PackedCube C>
std::size_t CubeGroups<C>::indexedExpander(const C& cube, const std::vector<C>& larger) const {
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
  for (std::size_t d = 0; d < width(); ++d) groups_[d].clear();
}

// The cubes that stay close up to the front of their group while the walk goes on, so that those
// which may cover are two runs of it.
template <PackedCube C>
void CubeGroups<C>::dropRedundant() {
  for (std::size_t d = 0; d < width(); ++d) {
    std::vector<C>& group = groups_[d];
    std::size_t kept = 0;
    for (std::size_t i = 0; i < group.size(); ++i) {
      if (isRedundant(d, kept, i)) continue;
      if (kept != i) group[kept] = std::move(group[i]);
      ++kept;
    }
    group.resize(kept);
  }
}

template <PackedCube C>
bool CubeGroups<C>::isRedundant(std::size_t dashes, std::size_t keptEnd, std::size_t position) {
  const std::span<const C> group = groups_[dashes];
  coverage_.begin(group[position], width());
  for (std::size_t d = width() - 1; d > dashes; --d) coverage_.add(std::span<const C>(groups_[d]));
  coverage_.add(group.first(keptEnd));
  coverage_.add(group.subspan(position + 1));
  return coverage_.isCovered();
}

template <PackedCube C>
void CubeGroups<C>::eraseGone(std::vector<C>& group) {
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
