// Two-level minimisation: against the exact minimum by brute force where that is possible, by the
// definitions of cover, prime and irredundant elsewhere, and at the ends of its limits.
#include <algorithm>
#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <random>

#include "twolevel/cover_graph.h"
#include "twolevel/covering.h"
#include "twolevel/cube_xor.h"
#include "twolevel/iteration.h"
#include "twolevel/minimize.h"
#include "twolevel/raise_rows.h"

namespace ostrel {
namespace {

/// The points of a function of `width` columns; point p has bit c of p in column c.
using Points = std::vector<bool>;

Cube cubeOf(std::size_t point, std::size_t width) {
  Cube cube;
  for (std::size_t c = 0; c < width; ++c) cube.set(c, (point >> c & 1U) != 0 ? '1' : '0');
  return cube;
}

Points pointsOf(const CubeList& cubes, std::size_t width) {
  Points points(std::size_t{1} << width);
  for (std::size_t p = 0; p < points.size(); ++p) {
    const Cube point = cubeOf(p, width);
    points[p] = std::any_of(cubes.begin(), cubes.end(),
                            [&](const Cube& cube) { return cubeContains(cube, point); });
  }
  return points;
}

CubeList cubesOf(const Points& points, std::size_t width) {
  CubeList cubes;
  for (std::size_t p = 0; p < points.size(); ++p) {
    if (points[p]) cubes.push_back(cubeOf(p, width));
  }
  return cubes;
}

/// a and not b, in all points.
Points without(const Points& a, const Points& b) {
  Points result = a;
  for (std::size_t p = 0; p < a.size(); ++p) result[p] = a[p] && !b[p];
  return result;
}

bool isIn(const Points& inner, const Points& outer) {
  const Points rest = without(inner, outer);
  return std::find(rest.begin(), rest.end(), true) == rest.end();
}

/// The fewest cubes inside `upper` that hold all points of `lower`; points of four columns at most.
std::size_t bruteMinimum(unsigned lower, unsigned upper, std::size_t width) {
  std::vector<unsigned> implicants;
  for (std::size_t care = 0; care < std::size_t{1} << width; ++care) {
    for (std::size_t value = 0; value <= care; ++value) {
      if ((value & ~care) != 0) continue;
      unsigned cube = 0;
      for (unsigned p = 0; p < 1U << width; ++p) cube |= ((p ^ value) & care) == 0 ? 1U << p : 0U;
      if ((cube & ~upper) == 0) implicants.push_back(cube);
    }
  }
  const auto canCover = [&](const auto& self, unsigned open, std::size_t count) -> bool {
    if (open == 0) return true;
    return count > 0 && std::any_of(implicants.begin(), implicants.end(), [&](unsigned cube) {
             return (cube & open & (~open + 1)) != 0 && self(self, open & ~cube, count - 1);
           });
  };
  std::size_t count = 0;
  while (!canCover(canCover, lower, count)) ++count;
  return count;
}

/// All that the answer promises about one of its sets.
void expectGood(const MinimizedCover& cover, const Points& lower, const Points& upper,
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

void expectMinimum(const Points& on, const Points& off, std::size_t width) {
  const auto bits = [](const Points& points) {
    unsigned result = 0;
    for (std::size_t p = 0; p < points.size(); ++p) result |= points[p] ? 1U << p : 0U;
    return result;
  };
  const unsigned all = static_cast<unsigned>((std::uint64_t{1} << on.size()) - 1);
  PartialFunction function = {cubesOf(on, width), {}, cubesOf(off, width)};
  const auto result = minimize(function, WantedSets::Both, Thoroughness::Normal);
  EXPECT_EQ(result.on.state, CoverState::Minimum);
  EXPECT_EQ(result.off.state, CoverState::Minimum);
  EXPECT_EQ(result.on.cubes.size(), bruteMinimum(bits(on), all & ~bits(off), width));
  EXPECT_EQ(result.off.cubes.size(), bruteMinimum(bits(off), all & ~bits(on), width));
  EXPECT_TRUE(isIn(on, pointsOf(result.on.cubes, width)));
  EXPECT_TRUE(isIn(off, pointsOf(result.off.cubes, width)));
}

TEST(TwoLevel, FindsTheMinimumOfEveryPartialFunctionOfThreeColumns) {
  for (unsigned number = 0; number < 6561 && !testing::Test::HasFailure(); ++number) {
    Points on(8);
    Points off(8);
    for (unsigned p = 0, rest = number; p < 8; ++p, rest /= 3) {
      on[p] = rest % 3 == 1;
      off[p] = rest % 3 == 2;
    }
    expectMinimum(on, off, 3);
  }
}

TEST(TwoLevel, FindsTheMinimumOfFunctionsOfFourColumns) {
  std::mt19937 random(4);
  for (unsigned round = 0; round < 1500 && !testing::Test::HasFailure(); ++round) {
    const Drawn drawn(random, 4, round % 2 == 0 ? 0 : random() % 70);
    expectMinimum(drawn.on, drawn.off, 4);
  }
}

TEST(TwoLevel, GivesIrredundantPrimesWithinTheFunction) {
  std::mt19937 random(5);
  for (unsigned round = 0; round < 120 && !testing::Test::HasFailure(); ++round) {
    const Drawn drawn(random, 5 + round % 4, round % 3 == 0 ? 0 : random() % 90);
    const auto wanted =
        std::array{WantedSets::Both, WantedSets::Smaller, WantedSets::On}[round % 3];
    const auto level = std::array{Thoroughness::Fast, Thoroughness::Normal}[round % 2];
    const auto result = minimize(drawn.function(round % 4 < 2), wanted, level);
    Points notOff = drawn.on;
    Points notOn = drawn.off;
    for (std::size_t p = 0; p < notOn.size(); ++p) {
      notOn[p] = !drawn.on[p];
      notOff[p] = !drawn.off[p];
    }
    expectGood(result.on, drawn.on, notOff, drawn.width);
    expectGood(result.off, drawn.off, notOn, drawn.width);
  }
}

// The ways for functions that are too large, asked of small ones.
TEST(TwoLevel, KeepsFunctionsThatItCannotList) {
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

TEST(TwoLevel, CountsBeforeItLists) {
  PartialFunction pairs;
  for (std::size_t i = 0; i < 65; ++i) {
    pairs.on.emplace_back();
    pairs.on.back().set(i, '1');
    pairs.on.back().set(i + 65, '0');
  }
  const auto result = minimize(pairs, WantedSets::Both, Thoroughness::Normal);
  EXPECT_EQ(result.on.state, CoverState::Minimum);
  EXPECT_EQ(result.off.state, CoverState::Unknown);
  ASSERT_EQ(result.on.cubes.size(), 65U);
  for (const Cube& cube : pairs.on) {
    EXPECT_EQ(std::count(result.on.cubes.begin(), result.on.cubes.end(), cube), 1);
  }
}

// More columns than a diagram may have, and random cubes that no diagram is small for.
TEST(TwoLevel, GivesUpWithTheRowsItWasGiven) {
  std::mt19937 random(7);
  for (const std::size_t width : {100U, 600U}) {
    PartialFunction function;
    for (std::size_t i = 0; i < 700; ++i) {
      function.on.emplace_back();
      for (unsigned k = 0; k < 6; ++k) function.on.back().set(random() % width, "01"[random() % 2]);
    }
    function.on.push_back(function.on.front());
    const auto result = minimize(function, WantedSets::Smaller, Thoroughness::Fast);
    EXPECT_EQ(result.on.state, CoverState::Given);
    EXPECT_EQ(result.off.state, CoverState::Unknown);
    EXPECT_EQ(result.on.cubes.size(), 700U);
  }
}

TEST(TwoLevel, FindsPairsThatAreTheFunction) {
  std::mt19937 random(9);
  int pairs = 0;
  for (unsigned round = 0; round < 150 && !testing::Test::HasFailure(); ++round) {
    const Drawn drawn(random, 4 + round % 4, 0);
    const auto covers = minimize(drawn.function(false), WantedSets::Both, Thoroughness::Normal);
    const std::size_t limit = std::min(covers.on.cubes.size(), covers.off.cubes.size());
    const bool mayTurn = round % 2 == 0;
    std::size_t steps = 0;
    const auto pair =
        findCubeXor(covers.on.cubes, covers.off.cubes, limit, mayTurn, Thoroughness::Fast, steps);
    if (!pair) continue;
    ++pairs;
    EXPECT_LT(pair->right.size(), limit);
    EXPECT_TRUE(mayTurn || !pair->isTurned);
    const Points left = pointsOf({pair->left}, drawn.width);
    const Points right = pointsOf(pair->right, drawn.width);
    for (std::size_t p = 0; p < left.size(); ++p) {
      EXPECT_EQ((left[p] != right[p]) != pair->isTurned, drawn.on[p]);
    }
  }
  EXPECT_GT(pairs, 50);
}

// Bit 31 of a counter that can be loaded, over 65 columns: l d + l' (q XOR all lower bits).
TEST(TwoLevel, FindsTheCarryOfACounter) {
  CubeList bit(2);
  bit[0].set(0, '1');
  bit[0].set(64, '1');
  bit[1].set(0, '0');
  bit[1].set(32, '0');
  for (std::size_t i = 1; i < 32; ++i) {
    bit[1].set(i, '1');
    bit.emplace_back();
    for (const auto& [column, literal] : {std::pair{std::size_t{0}, '0'}, {32, '1'}, {i, '0'}}) {
      bit.back().set(column, literal);
    }
  }
  std::size_t steps = 0;
  const auto pair = findCubeXor(bit, {}, bit.size(), false, Thoroughness::Fast, steps);
  EXPECT_GT(steps, 0U);
  ASSERT_TRUE(pair);
  EXPECT_EQ(pair->right.size(), 2U);
}

TEST(TwoLevel, ConstantsHaveNoCubeOrTheUniversalOne) {
  const PartialFunction none;
  const auto zero = minimize(none, WantedSets::Both, Thoroughness::Normal);
  EXPECT_TRUE(zero.on.cubes.empty());
  EXPECT_EQ(zero.off.cubes, CubeList(1));
  const PartialFunction all = {{Cube("1-0"), Cube("0--"), Cube("--1")}, {}, std::nullopt};
  const auto one = minimize(all, WantedSets::Both, Thoroughness::Normal);
  EXPECT_EQ(one.on.cubes, CubeList(1));
  EXPECT_TRUE(one.off.cubes.empty());
  EXPECT_EQ(one.off.state, CoverState::Minimum);
}

TEST(TwoLevel, CoversTablesWithTheFewestColumns) {
  std::mt19937 random(8);
  for (unsigned round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
    const std::size_t columns = 4 + random() % 9;
    std::vector<CoveringRow> rows(2 + random() % 25);
    std::vector<unsigned> sets;
    for (CoveringRow& row : rows) {
      unsigned set = 1U << random() % columns;
      for (unsigned k = 0; k < 3; ++k) set |= 1U << random() % columns;
      for (unsigned c = 0; c < columns; ++c) {
        if ((set >> c & 1U) != 0) row.push_back(c);
      }
      sets.push_back(set);
    }
    int fewest = 99;
    for (unsigned choice = 0; choice < 1U << columns; ++choice) {
      const bool isCover =
          std::all_of(sets.begin(), sets.end(), [&](unsigned set) { return (set & choice) != 0; });
      if (isCover) fewest = std::min(fewest, std::popcount(choice));
    }
    const auto minimum = static_cast<std::size_t>(fewest);
    CoveringWork work;
    EXPECT_EQ(solveCovering(rows, columns, SIZE_MAX, work).columns.size(), minimum);
    EXPECT_EQ(solveCovering(rows, columns, minimum, work).bound, minimum) << "cut off";
    CoveringWork none = {Effort(1), Effort(1)};
    const Covering quick = solveCovering(rows, columns, SIZE_MAX, none);
    unsigned choice = 0;
    for (const std::uint32_t column : quick.columns) choice |= 1U << column;
    for (const unsigned set : sets) EXPECT_NE(set & choice, 0U);
    EXPECT_LE(quick.bound, minimum);
  }
}

}  // namespace
}  // namespace ostrel
