// Ordered lists of cubes and the operations on one or two cubes that make new ones.
//
// A list is a sum of products. Its order is part of its value: it decides which cubes are merged
// first and in which order terms are written, so each operation says how it leaves its list. All
// cubes of a list have the list's width, which is handed along with it; a literal at or beyond
// that width is a caller's mistake.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "minimizer/cube.h"

namespace ostrel {

using CubeList = std::vector<Cube>;

/// Number of dashes among the columns 0 to width - 1.
template <PackedCube C>
std::size_t dashCount(const C& cube, std::size_t width) {
  return width - cube.literalCount();
}

/// Runs work(list) on the cubes, in plain values where they fit one block as almost all do, and
/// gives the list that it leaves. `width` is the width of the cubes before and after.
template <class Work>
CubeList onCubes(std::span<const Cube> cubes, std::size_t width, Work work) {
  if (width > 64) {
    CubeList list(cubes.begin(), cubes.end());
    work(list);
    return list;
  }
  std::vector<Cube64> list(cubes.begin(), cubes.end());
  work(list);
  return CubeList(list.begin(), list.end());
}

/// The product of two cubes: the points that lie in both. Nothing if there is none.
template <PackedCube C>
std::optional<C> intersectCubes(const C& a, const C& b) {
  if (!cubesIntersect(a, b)) return std::nullopt;
  const bool aIsLonger = a.blockCount() >= b.blockCount();
  std::optional<C> result = aIsLonger ? a : b;
  const C& other = aIsLonger ? b : a;
  for (std::size_t i = 0; i < other.blockCount(); ++i) {
    const Cube::Block x = result->block(i);
    const Cube::Block y = other.block(i);
    result->setBlock(i, {x.care | y.care, x.value | y.value});
  }
  return result;
}

/// The supercube: the smallest cube that holds both.
template <PackedCube C>
C supercube(const C& a, const C& b) {
  C result = a;
  for (std::size_t i = 0; i < a.blockCount(); ++i) {
    const Cube::Block x = a.block(i);
    const Cube::Block y = b.block(i);
    result.setBlock(i, {x.care & y.care & ~(x.value ^ y.value), x.value});
  }
  return result;
}

/// The column of the only difference of two cubes with dashes at the same places. Nothing if a
/// dash stands against a literal anywhere, or if the distance is not exactly 1.
template <PackedCube C>
std::optional<std::size_t> adjacentColumn(const C& a, const C& b) {
  std::optional<std::size_t> column;
  const std::size_t blocks = std::max(a.blockCount(), b.blockCount());
  for (std::size_t i = 0; i < blocks; ++i) {
    const Cube::Block x = a.block(i);
    const Cube::Block y = b.block(i);
    if (x.care != y.care) return std::nullopt;
    const std::uint64_t difference = x.value ^ y.value;
    if (difference == 0) continue;
    if (column || !isSingleBit(difference)) return std::nullopt;
    column = i * 64 + static_cast<std::size_t>(std::countr_zero(difference));
  }
  return column;
}

/// The plain sharp product: what is left of `a` when the points of `b` are taken away.
///
/// If the two are disjoint, `a` is left whole: the result is false and `pieces` stays as it is.
/// Otherwise the result is true, and for each column from left to right in which `a` has a dash
/// and `b` a literal, `a` with the inverse of that literal is appended to `pieces`; nothing is
/// appended if `a` lies inside `b`. The pieces overlap.
template <PackedCube C>
bool sharpCube(const C& a, const C& b, std::vector<C>& pieces) {
  if (!cubesIntersect(a, b)) return false;
  for (std::size_t i = 0; i < b.blockCount(); ++i) {
    const Cube::Block x = a.block(i);
    const Cube::Block y = b.block(i);
    for (std::uint64_t rest = y.care & ~x.care; rest != 0; rest &= rest - 1) {
      const std::uint64_t bit = lowestBit(rest);
      pieces.push_back(a);
      pieces.back().setBlock(i, {x.care | bit, x.value | (~y.value & bit)});
    }
  }
  return true;
}

}  // namespace ostrel
