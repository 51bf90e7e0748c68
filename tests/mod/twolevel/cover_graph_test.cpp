// Sets of cubes in one graph.
#include "twolevel/cover_graph.h"

#include <gtest/gtest.h>

#include "support/points.h"

namespace ostrel {
namespace {

TEST(CoverGraph, ListsTheCubesThatMeetAFunction) {
  std::mt19937 random(12);
  for (unsigned round = 0; round < 100; ++round) {
    const Drawn drawn(random, 4 + round % 4, 30);
    const Drawn other(random, drawn.width, 0);
    Effort effort;
    Diagram diagram(drawn.width, 100'000, effort);
    CoverGraph covers(100'000, effort);
    const auto lower = diagram.sum(cubesOf(drawn.on, drawn.width));
    const auto upper = diagram.disjunction(lower, diagram.sum(cubesOf(drawn.free, drawn.width)));
    const CoverGraph::Set set = irredundantCover(diagram, covers, lower, upper).cubes;
    CubeList meeting = covers.first(set, SIZE_MAX);
    std::erase_if(meeting, [&](const Cube& cube) {
      return isIn(pointsOf({cube}, drawn.width), without(pointsOf({cube}, drawn.width), other.on));
    });
    const auto f = diagram.sum(cubesOf(other.on, drawn.width));
    EXPECT_EQ(covers.listMeeting(set, diagram, f, meeting.size()), meeting);
    if (meeting.empty() || set == CoverGraph::universal) continue;
    EXPECT_EQ(covers.listMeeting(set, diagram, f, meeting.size() - 1), std::nullopt);
    effort = Effort(1);
    EXPECT_EQ(covers.listMeeting(set, diagram, f, meeting.size()), std::nullopt);
  }
}

}  // namespace
}  // namespace ostrel
