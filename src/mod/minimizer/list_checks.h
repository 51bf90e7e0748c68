// What operations on lists of cubes promise, for assertions at their exits.
//
// The checks look at a part of long lists only, so that a build with assertions is slower by a
// factor and not by a power.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "minimizer/cube_list.h"

namespace ostrel {

inline constexpr std::size_t checkedCubes = 64;

template <PackedCube C>
std::span<const C> checkedPart(std::span<const C> list) {
  return list.first(std::min(list.size(), checkedCubes));
}

/// True if no cube of one list shares a point with a cube of the other.
template <PackedCube C>
bool haveNoCommonPoint(std::span<const C> a, std::span<const C> b) {
  return std::ranges::none_of(checkedPart(a), [b](const C& x) {
    return std::ranges::any_of(checkedPart(b), [&x](const C& y) { return cubesIntersect(x, y); });
  });
}

/// True if no two cubes of a list share a point.
template <PackedCube C>
bool isDisjoint(std::span<const C> list) {
  const std::span<const C> part = checkedPart(list);
  for (std::size_t i = 0; i < part.size(); ++i) {
    if (!haveNoCommonPoint(part.subspan(i, 1), part.first(i))) return false;
  }
  return true;
}

/// The points that a list stands for: those in some cube, in none, or in an odd number of them.
enum class PointsOf { AnyCube, NoCube, OddCubes };

template <PackedCube C>
bool holds(std::span<const C> list, PointsOf points, const C& point) {
  const auto count =
      std::ranges::count_if(list, [&](const C& cube) { return cubeContains(cube, point); });
  return points == PointsOf::OddCubes ? count % 2 == 1
                                      : (count > 0) == (points == PointsOf::AnyCube);
}

/// The point of a cube, over that many blocks, that has the bits of `dashes` where the cube has
/// dashes.
template <PackedCube C>
C cornerOf(const C& cube, std::size_t blocks, std::uint64_t dashes) {
  C corner = cube;
  for (std::size_t i = 0; i < blocks; ++i) {
    const Cube::Block b = cube.block(i);
    corner.setBlock(i, {~std::uint64_t{0}, b.value | (dashes & ~b.care)});
  }
  return corner;
}

/// True if the two lists stand for the same points, as far as three corners of each cube tell.
template <PackedCube C>
bool agree(std::span<const C> a, PointsOf ofA, std::span<const C> b, PointsOf ofB) {
  std::size_t blocks = 1;
  for (const C& cube : a) blocks = std::max(blocks, cube.blockCount());
  for (const C& cube : b) blocks = std::max(blocks, cube.blockCount());
  const auto agreeIn = [&](const C& cube) {
    for (const std::uint64_t dashes : {std::uint64_t{0}, ~std::uint64_t{0}, 0xA5C36996A5C36996U}) {
      const C corner = cornerOf(cube, blocks, dashes);
      if (holds(a, ofA, corner) != holds(b, ofB, corner)) return false;
    }
    return true;
  };
  return std::ranges::all_of(checkedPart(a), agreeIn) &&
         std::ranges::all_of(checkedPart(b), agreeIn);
}

}  // namespace ostrel
