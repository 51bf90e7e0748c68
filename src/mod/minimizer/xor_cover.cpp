// An exclusive-or sum in two stages: cubes that share no point have the same OR and exclusive OR,
// so the cubes are made disjoint first; then the list is shortened by identities that hold for the
// exclusive OR alone.
//
// Example: "11-", "-11". Made disjoint, they are "110" and "-11", and a cross-link of these two
// gives "010", "-1-". Every point of the function lies in "-1-" alone, and the point "010", which
// is none of them, lies in both.
#include "minimizer/xor_cover.h"

#include <utility>

#include "minimizer/cube_table.h"

namespace ostrel {

namespace {

template <PackedCube C>
std::optional<std::vector<C>> coverByXor(std::span<const C> cubes, std::size_t width) {
  CubeTable<C> table(width + 1);
  if (!buildDisjointCover(cubes, table) || !reduceXorCover(table)) return std::nullopt;
  std::vector<C> result;
  for (ImplicantList<C>& group : table) {
    for (std::size_t i = group.size(); i-- > 0;) result.push_back(std::move(group[i].cube));
  }
  return result;
}

}  // namespace

std::optional<CubeList> xorCover(std::span<const Cube> cubes, std::size_t width) {
  if (cubes.size() < 2 || width < 2) return std::nullopt;
  if (width > 64) return coverByXor(cubes, width);
  const std::vector<NarrowCube> light = narrowed(cubes);
  const auto sum = coverByXor<NarrowCube>(light, width);
  if (!sum) return std::nullopt;
  CubeList result;
  widen(*sum, result);
  return result;
}

}  // namespace ostrel
