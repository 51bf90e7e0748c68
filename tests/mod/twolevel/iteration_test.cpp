// The ways for functions that are too large, asked of small ones.
#include "twolevel/iteration.h"

#include <gtest/gtest.h>

#include "support/points.h"
#include "twolevel/cover_graph.h"
#include "twolevel/minimum_cover.h"
#include "twolevel/raise_rows.h"

namespace ostrel {
namespace {

TEST(Iteration, KeepsFunctionsThatItCannotList) {
  std::mt19937 random(6);
  for (unsigned round = 0; round < 60 && !testing::Test::HasFailure(); ++round) {
    const Drawn drawn(random, 6 + round % 3, round % 2 == 0 ? 0 : 40);
    Points notOff = drawn.on;
    for (std::size_t p = 0; p < notOff.size(); ++p) notOff[p] = !drawn.off[p];
    const PartialFunction function = drawn.function(round % 4 < 2);
    const Points raised = pointsOf(raiseRows(function, normalLimits).cubes, drawn.width);
    EXPECT_TRUE(isIn(drawn.on, raised) && isIn(raised, notOff));

    Effort effort;
    Diagram diagram(drawn.width, 100'000, effort);
    CoverGraph covers(100'000, effort);
    const auto lower = diagram.sum(function.on);
    const auto upper = diagram.disjunction(lower, diagram.sum(function.dontCare));
    const CoverGraph::Set first = irredundantCover(diagram, covers, lower, upper).cubes;
    const CoverTask task = {diagram, lower, upper, covers.first(first, 10'000)};
    WorkLimits few = normalLimits;
    if (round % 3 == 0) few.rows = 20;
    const MinimizedCover cover = iterate(task, partEssentials(task), few);
    EXPECT_LE(cover.cubes.size(), task.cover.size());
    expectGood(cover, drawn.on, notOff, drawn.width);
  }
}

}  // namespace
}  // namespace ostrel
