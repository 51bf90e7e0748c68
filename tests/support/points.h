// Functions of few columns as the list of their points.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <vector>

#include "twolevel/partial_function.h"

namespace ostrel {

/// The points of a function of `width` columns; point p has bit c of p in column c.
using Points = std::vector<bool>;

inline Cube cubeOf(std::size_t point, std::size_t width) {
  Cube cube;
  for (std::size_t c = 0; c < width; ++c) cube.set(c, (point >> c & 1U) != 0 ? '1' : '0');
  return cube;
}

inline Points pointsOf(const CubeList& cubes, std::size_t width) {
  Points points(std::size_t{1} << width);
  for (std::size_t p = 0; p < points.size(); ++p) {
    const Cube point = cubeOf(p, width);
    points[p] = std::any_of(cubes.begin(), cubes.end(),
                            [&](const Cube& cube) { return cubeContains(cube, point); });
  }
  return points;
}

inline CubeList cubesOf(const Points& points, std::size_t width) {
  CubeList cubes;
  for (std::size_t p = 0; p < points.size(); ++p) {
    if (points[p]) cubes.push_back(cubeOf(p, width));
  }
  return cubes;
}

/// a and not b, in all points.
inline Points without(const Points& a, const Points& b) {
  Points result = a;
  for (std::size_t p = 0; p < a.size(); ++p) result[p] = a[p] && !b[p];
  return result;
}

inline bool isIn(const Points& inner, const Points& outer) {
  const Points rest = without(inner, outer);
  return std::find(rest.begin(), rest.end(), true) == rest.end();
}

/// All that the answer promises about one of its sets.
inline void expectGood(const MinimizedCover& cover, const Points& lower, const Points& upper,
                       std::size_t width) {
  const Points covered = pointsOf(cover.cubes, width);
  EXPECT_TRUE(isIn(lower, covered));
  EXPECT_TRUE(isIn(covered, upper));
  EXPECT_LE(cover.bound, cover.cubes.size());
  EXPECT_EQ(cover.state == CoverState::Minimum, cover.bound == cover.cubes.size());
  for (std::size_t i = 0; i < cover.cubes.size(); ++i) {
    cover.cubes[i].forEachLiteral([&](std::size_t column, char) {
      Cube raised = cover.cubes[i];
      raised.set(column, '-');
      EXPECT_FALSE(isIn(pointsOf({raised}, width), upper)) << "not a prime";
    });
    CubeList others = cover.cubes;
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_FALSE(isIn(lower, pointsOf(others, width))) << "redundant";
  }
}

/// A function of few columns with each point drawn as 1, 0 or free.
struct Drawn {
  Drawn(std::mt19937& random, std::size_t columns, std::size_t freePerCent)
      : width(columns), on(std::size_t{1} << columns), off(on), free(on) {
    const std::size_t onPerCent = 10 + random() % 80;
    for (std::size_t p = 0; p < on.size(); ++p) {
      free[p] = random() % 100 < freePerCent;
      on[p] = !free[p] && random() % 100 < onPerCent;
      off[p] = !free[p] && !on[p];
    }
  }
  PartialFunction function(bool hasOff) const {
    PartialFunction result = {cubesOf(on, width), cubesOf(free, width), std::nullopt};
    if (hasOff) result.off = cubesOf(off, width);
    return result;
  }

  std::size_t width;
  Points on;
  Points off;
  Points free;
};

}  // namespace ostrel
