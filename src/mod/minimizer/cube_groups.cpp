// Merging and expansion of a sum of products in groups of equal dash count.
//
// Idea. The joining of neighbours ("10", "11" to "1-"), subsumption and expansion by consensus, as
// in the method of Quine (1952) and McCluskey (1956), but greedy: a cube takes one partner and is
// done with. All three need a partner with as many dashes or one more, so with the cubes sorted by
// number of dashes each step looks into one group.
//
// Example. "10", "11", "01" stand in group 0 in reverse order, "01" first. It differs from "11" in
// one column: both go, and "-1" is appended to group 1. "10" stays, and the list is "-1", "10".
//
// Cost. A step costs a scan of the group for each cube of a short group, and one look-up for each
// literal of each cube of a long one. Long groups come from the rows of a file, of which a function
// may have any number; what the algorithms make themselves is bounded by the budgets.
//
// Order. Part of the output, do not tidy: each step goes through the groups upward and through each
// group in order, and gives a cube the *first* partner in order; a made cube goes to the end of the
// next group, where its own turn comes; sorting reverses the list. That the last group keeps its
// duplicates where the universal cube stands alone shows in the output as well.
#include "minimizer/cube_groups.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace ostrel {

template <PackedCube C>
void CubeGroups<C>::add(std::size_t dashes, const C& cube) {
  groups_[dashes].push_back(cube);
  lowest_ = std::min(lowest_, dashes);
  highest_ = std::max(highest_, dashes);
}

template <PackedCube C>
void CubeGroups<C>::groupByDashes(std::vector<C>& list) {
  assert(lowest_ > width());  // all groups are empty
  for (auto cube = list.rbegin(); cube != list.rend(); ++cube) {
    assert(widthOf(*cube) <= width());
    add(dashCount(*cube, width()), *cube);
  }
  list.clear();
}

template <PackedCube C>
void CubeGroups<C>::flattenGroups(std::vector<C>& list) {
  assert(isInPlace());
  list.clear();
  for (std::size_t d = highest_ + 1; d-- > lowest_;) {
    std::move(groups_[d].begin(), groups_[d].end(), std::back_inserter(list));
    groups_[d].clear();
  }
  lowest_ = width() + 1;
  highest_ = 0;
}

/// True if each cube stands in the group of its dash count.
template <PackedCube C>
bool CubeGroups<C>::isInPlace() const {
  for (std::size_t d = 0; d < groups_.size(); ++d) {
    const auto isStray = [&](const C& cube) {
      return dashCount(cube, width()) != d || d < lowest_ || d > highest_;
    };
    if (std::any_of(groups_[d].begin(), groups_[d].end(), isStray)) return false;
  }
  return true;
}

/// The groups that the universal cube doesn't stand in, or all if it is a cube like any other.
template <PackedCube C>
std::size_t CubeGroups<C>::ordinaryGroups(UniversalCube universal) const {
  return universal == UniversalCube::StandsAlone ? width() : width() + 1;
}

template <PackedCube C>
bool CubeGroups<C>::dropDuplicates(UniversalCube universal) {
  bool anyTwins = false;
  const std::size_t end = std::min(highest_ + 1, ordinaryGroups(universal));
  for (std::size_t d = lowest_; d < end; ++d) {
    if (!mayHaveTwins(groups_[d])) continue;
    dropDuplicatesOf(groups_[d]);
    anyTwins = true;
  }
  return anyTwins;
}

/// False if no two cubes of the group have their dashes in the same columns: most groups are such,
/// and to see that takes a fifth of the time of a search for duplicates and neighbours.
template <PackedCube C>
bool CubeGroups<C>::mayHaveTwins(const Group& group) {
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
  const bool isLong = group.size() > scanLimit;
  HashIndex& index = scratch_.index;
  if (isLong) index.reset(group.size());
  std::size_t kept = 0;
  for (std::size_t i = 0; i < group.size(); ++i) {
    const auto isSame = [&](std::size_t k) { return group[k] == group[i]; };
    const std::uint64_t key = isLong ? literalHash(group[i]) : 0;
    std::size_t k = 0;
    if (isLong) {
      if (index.find(key, isSame) != HashIndex::none) continue;
      index.add(key);
    } else {
      while (k < kept && !isSame(k)) ++k;
      if (k < kept) continue;
    }
    if (kept != i) group[kept] = std::move(group[i]);
    ++kept;
  }
  group.resize(kept);
}

template <PackedCube C>
void CubeGroups<C>::mergeGroups(UniversalCube universal) {
  const bool anyTwins = dropDuplicates(universal);
  for (std::size_t d = lowest_; anyTwins && d <= highest_ && d < width(); ++d) joinNeighbours(d);
  const std::size_t end = std::min(highest_ + 1, ordinaryGroups(universal));
  for (std::size_t d = lowest_; d + 1 < end; ++d) dropContained(d);
  if (universal == UniversalCube::StandsAlone) keepUniversalAlone();
}

// A cube that was passed and is still there found no partner, although this cube, if they are
// neighbours, was there to be found. So all neighbours that are left stand behind.
template <PackedCube C>
void CubeGroups<C>::joinNeighbours(std::size_t dashes) {
  Group& group = groups_[dashes];
  if (group.size() < 2) return;
  FirstPartner<C, Neighbour> neighbours(group, 0, scratch_);
  neighbours.enterUpTo(group.size());
  bool hasJoined = false;
  for (std::size_t a = 0; a < group.size(); ++a) {
    if (neighbours.isGone(a)) continue;
    const std::size_t b = neighbours.of(group[a], a + 1);
    if (b == neighbours.none) continue;
    assert(b > a);
    C joined = group[a];
    joined.set(*adjacentColumn(group[a], group[b]), '-');
    add(dashes + 1, joined);
    neighbours.withdraw(a);
    neighbours.withdraw(b);
    hasJoined = true;
  }
  if (hasJoined) eraseGone(group);
}

template <PackedCube C>
void CubeGroups<C>::dropContained(std::size_t dashes) {
  const Group& larger = groups_[dashes + 1];
  if (groups_[dashes].empty() || larger.empty()) return;
  FirstPartner<C, Container> containers(larger, 0, scratch_);
  containers.enterUpTo(larger.size());
  std::erase_if(groups_[dashes],
                [&](const C& cube) { return containers.of(cube) != containers.none; });
}

template <PackedCube C>
void CubeGroups<C>::expandGroups() {
  dropDuplicates(UniversalCube::StandsAlone);
  const std::size_t end = std::min(highest_ + 1, width());
  for (std::size_t d = lowest_; d + 1 < end; ++d) expandGroup(d);
  keepUniversalAlone();
}

// If b agrees with a except for an opposite literal in one column, and has one dash more, then a
// without the literal of that column is a OR a part of b, their consensus. The grown cube joins the
// end of the larger group at once, as a partner for the cubes that follow.
template <PackedCube C>
void CubeGroups<C>::expandGroup(std::size_t dashes) {
  Group& larger = groups_[dashes + 1];
  if (groups_[dashes].empty() || larger.empty()) return;
  FirstPartner<C, Expander> partners(larger, groups_[dashes].size(), scratch_);
  partners.enterUpTo(larger.size());
  std::erase_if(groups_[dashes], [&](const C& cube) {
    const std::size_t b = partners.of(cube);
    if (b == partners.none) return false;
    C expanded = cube;
    expanded.set(*Expander::column(cube, larger[b]), '-');
    larger.push_back(expanded);
    partners.enterUpTo(larger.size());
    return true;
  });
}

template <PackedCube C>
void CubeGroups<C>::keepUniversalAlone() {
  if (groups_.back().empty()) return;
  for (std::size_t d = lowest_; d < width(); ++d) groups_[d].clear();
  lowest_ = width();
}

// The cubes are numbered from the most dashes down, so that when the walk goes up, the groups that
// no longer help are the last numbers.
template <PackedCube C>
void CubeGroups<C>::dropRedundant(Effort& effort) {
  const std::size_t end = std::min(highest_ + 1, width());
  std::size_t count = 0;
  for (std::size_t d = lowest_; d < end; ++d) count += groups_[d].size();
  if (count < 2) return;
  coverage_.reset(width());
  for (std::size_t d = end; d-- > lowest_;) {
    for (const C& cube : groups_[d]) coverage_.add(cube);
  }
  for (std::size_t d = lowest_; d < end; ++d) {
    count -= groups_[d].size();
    std::size_t number = count;
    std::erase_if(groups_[d], [&](const C& cube) {
      const bool isRedundant = coverage_.isCovered(cube, number, effort);
      if (isRedundant) coverage_.remove(number);
      ++number;
      return isRedundant;
    });
    while (number-- > count) coverage_.remove(number);
  }
}

/// Removes the cubes that were withdrawn in a search.
template <PackedCube C>
void CubeGroups<C>::eraseGone(Group& group) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < group.size(); ++i) {
    if (scratch_.gone[i] != 0) continue;
    if (kept != i) group[kept] = std::move(group[i]);
    ++kept;
  }
  group.resize(kept);
}

template class CubeGroups<Cube>;
template class CubeGroups<Cube64>;

}  // namespace ostrel
