// What each cube of a cover is needed for, against a walk over the points.
#include "twolevel/reduce.h"

#include <gtest/gtest.h>
#include <random>

#include "support/cube_texts.h"
#include "support/points.h"

namespace ostrel {
namespace {

/// The smallest cube that holds all of these points.
Cube hullOf(const Points& points, std::size_t width) {
  bool isIn[2][8] = {};
  for (std::size_t p = 0; p < points.size(); ++p) {
    for (std::size_t c = 0; c < width && points[p]; ++c) isIn[p >> c & 1U][c] = true;
  }
  Cube hull;
  for (std::size_t c = 0; c < width; ++c) {
    if (isIn[0][c] != isIn[1][c]) hull.set(c, isIn[1][c] ? '1' : '0');
  }
  return hull;
}

TEST(Reduce, LeavesWhatACubeIsNeededFor) {
  std::mt19937 random(11);
  for (unsigned round = 0; round < 300; ++round) {
    const std::size_t width = 3 + random() % 5;
    const CubeList cover = cubesOf(randomTexts(random, 1 + random() % 6, width));
    Points lower = pointsOf(cover, width);
    for (std::size_t p = 0; p < lower.size(); ++p) lower[p] = lower[p] && random() % 4 != 0;
    CubeList needed;
    for (std::size_t i = 0; i < cover.size(); ++i) {
      CubeList others = cover;
      others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
      Points own = without(lower, pointsOf(others, width));
      if (isIn(own, Points(own.size()))) continue;
      needed.push_back(hullOf(own, width));
    }
    Effort effort;
    Diagram diagram(width, 100'000, effort);
    const Diagram::Edge f = diagram.sum(cubesOf(lower, width));
    EXPECT_EQ(reducedCubes(diagram, f, cover), needed);
    if (f == Diagram::zero) continue;
    EXPECT_EQ(supercube(diagram, f), hullOf(lower, width));
  }
}

}  // namespace
}  // namespace ostrel
