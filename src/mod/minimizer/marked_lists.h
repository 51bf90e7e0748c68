// The lists that an exclusive-or cover is worked out in: cubes sorted by number of dashes.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "minimizer/budgets.h"
#include "minimizer/cube_list.h"

namespace ostrel {

/// A cube in a list that is being walked: removal is marked first and done when the walk is over.
template <PackedCube C>
struct MarkedCube {
  C cube;
  bool deleted = false;
};

/// New cubes come to the front of a list, and a walk that is under way must not meet them. So the
/// first element of the list is the *back* of the vector, and every walk runs from the back down.
template <PackedCube C>
using MarkedList = std::vector<MarkedCube<C>>;

/// Group d holds the cubes with d dashes, for d from 0 to the width.
template <PackedCube C>
using MarkedGroups = std::vector<MarkedList<C>>;

/// Links a cube in front of a list.
template <PackedCube C>
void pushCube(MarkedList<C>& list, C cube) {
  list.push_back({std::move(cube)});
}

/// Removes the cubes that are marked as deleted; the others keep their order.
template <PackedCube C>
void purgeGroup(MarkedList<C>& list) {
  std::erase_if(list, [](const MarkedCube<C>& cube) { return cube.deleted; });
}

/// Links a cube in front of the group of its dash count.
template <PackedCube C>
void pushCube(MarkedGroups<C>& groups, C cube) {
  const std::size_t dashes = dashCount(cube, groups.size() - 1);
  pushCube(groups[dashes], std::move(cube));
}

/// All cubes, in ascending number of dashes.
template <PackedCube C>
std::vector<C> unmarked(const MarkedGroups<C>& groups) {
  std::vector<C> cubes;
  for (const MarkedList<C>& group : groups) {
    for (std::size_t i = group.size(); i-- > 0;) cubes.push_back(group[i].cube);
  }
  return cubes;
}

/// Goes through the list in order and removes each cube with the first partner behind it, if
/// there is one: pairs(a, b) answers whether b is the partner of a. It may push cubes on other
/// lists. True if there was a pair.
template <PackedCube C, class Pairs>
bool removePairs(MarkedList<C>& list, Pairs pairs) {
  bool hasPair = false;
  for (std::size_t i = list.size(); i-- > 0;) {
    for (std::size_t j = i; j-- > 0 && !list[i].deleted;) {
      if (list[j].deleted || !pairs(list[i].cube, list[j].cube)) continue;
      list[i].deleted = list[j].deleted = true;
      hasPair = true;
    }
  }
  if (hasPair) purgeGroup(list);
  return hasPair;
}

/// Makes pairwise disjoint cubes with the same OR as `cubes` and merges neighbours among them.
/// False if the cover goes over the limit. `groups` has width + 1 empty groups.
template <PackedCube C>
bool buildDisjointCover(std::span<const C> cubes, MarkedGroups<C>& groups);

/// Rewrites the groups by identities of the exclusive OR, which stays the same, so that the cubes
/// become larger and mostly fewer. False if a group goes over the limit.
template <PackedCube C>
bool reduceXorCover(MarkedGroups<C>& groups);

}  // namespace ostrel
