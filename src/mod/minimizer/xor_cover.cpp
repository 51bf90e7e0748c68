// An exclusive-or sum in two stages.
//
// Idea. Cubes that share no point have the same OR and exclusive OR, so the cubes are made disjoint
// first; then the list is shortened by identities that hold for the exclusive OR alone. What comes
// out is an exclusive-or sum of products in the field's sense (ESOP), not a smallest one.
//
// Example. "11-", "-11". Made disjoint, they are "110" and "-11", and a cross-link of these two
// gives "010", "-1-". Every point of the function lies in "-1-" alone, and the point "010", which
// is none of them, lies in both.
//
// Cost. That of its stages (disjoint_cover.cpp, exorlink.cpp), which both end at 128 cubes.
//
// Order. Part of the output, do not tidy: the groups come upward, each in its own order, and the
// sort that picks left operands (xor_order.h) does not keep the order of equals.
#include "minimizer/xor_cover.h"

#include <cassert>

#include "minimizer/list_checks.h"
#include "minimizer/marked_lists.h"

namespace ostrel {

template <PackedCube C>
std::optional<std::vector<C>> xorCover(std::span<const C> cubes, std::size_t width) {
  if (cubes.size() < 2 || width < 2) return std::nullopt;
  MarkedGroups<C> groups(width + 1);
  if (!buildDisjointCover(cubes, groups) || !reduceXorCover(groups)) return std::nullopt;
  std::vector<C> sum = unmarked(groups);
  assert(agree<C>(cubes, PointsOf::AnyCube, sum, PointsOf::OddCubes));
  return sum;
}

template std::optional<std::vector<Cube>> xorCover(std::span<const Cube>, std::size_t);
template std::optional<std::vector<Cube64>> xorCover(std::span<const Cube64>, std::size_t);

}  // namespace ostrel
