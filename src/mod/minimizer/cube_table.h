// The lists that an exclusive-or cover is worked out in: cubes sorted by number of dashes.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "minimizer/cube_list.h"

namespace ostrel {

/// A cube in a list that is being walked: removal is marked first and done when the walk is over.
template <PackedCube C>
struct Implicant {
  C cube;
  bool deleted = false;
};

/// New cubes come to the front of a list, and a walk that is under way must not meet them. So the
/// first element of the list is the *back* of the vector, and every walk runs from the back down.
template <PackedCube C>
using ImplicantList = std::vector<Implicant<C>>;

/// Group d holds the cubes with d dashes, for d from 0 to the width.
template <PackedCube C>
using CubeTable = std::vector<ImplicantList<C>>;

/// The disjoint cover, and each group of an exclusive-or cover, may hold this many cubes when it
/// is counted. More than that can't become a useful XOR pair; it bounds the pairwise comparisons.
inline constexpr std::size_t groupLimit = 128;

/// Links a cube in front of a list.
template <PackedCube C>
void pushCube(ImplicantList<C>& list, C cube) {
  list.push_back({std::move(cube)});
}

/// Removes the cubes that are marked as deleted; the others keep their order.
template <PackedCube C>
void purgeGroup(ImplicantList<C>& list) {
  std::erase_if(list, [](const Implicant<C>& implicant) { return implicant.deleted; });
}

/// Links a cube in front of the group of its dash count.
template <PackedCube C>
void pushCube(CubeTable<C>& table, C cube) {
  const std::size_t dashes = dashCount(cube, table.size() - 1);
  pushCube(table[dashes], std::move(cube));
}

/// Goes through the list in order and removes each cube with the first partner behind it, if
/// there is one: pairs(a, b) answers whether b is the partner of a. It may push cubes on other
/// lists. True if there was a pair.
template <PackedCube C, class Pairs>
bool removePairs(ImplicantList<C>& list, Pairs pairs) {
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
/// False if the cover goes over the limit. `table` has width + 1 empty groups.
template <PackedCube C>
bool buildDisjointCover(std::span<const C> cubes, CubeTable<C>& table);

/// Rewrites the table by identities of the exclusive OR, which stays the same, so that the cubes
/// become larger and mostly fewer. False if a group goes over the limit.
template <PackedCube C>
bool reduceXorCover(CubeTable<C>& table);

}  // namespace ostrel
