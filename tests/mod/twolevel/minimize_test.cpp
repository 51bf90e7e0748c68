// Two-level minimisation: against the exact minimum by brute force where that is possible, by the
// definitions of cover, prime and irredundant elsewhere, and at the ends of its limits.
#include "twolevel/minimize.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "support/points.h"

namespace ostrel {
namespace {

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
// A set that promises far more cubes than the other is left as the first step made it.
TEST(TwoLevel, LeavesTheHopelessSet) {
  const struct {
    std::size_t firstFactor, factors;  // (a + b + ...) and so many columns more
    bool hasFree, isTried;
  } table[] = {{1, 8, true, true},  {1, 9, true, false}, {1, 8, false, false},
               {5, 8, false, true}, {5, 9, false, true}, {5, 17, false, false}};
  for (const auto& row : table) {
    PartialFunction function;
    for (std::size_t i = 0; i < row.firstFactor; ++i) {
      function.on.emplace_back();
      function.on.back().set(i, '1');
      for (std::size_t f = 0; f < row.factors; ++f)
        function.on.back().set(row.firstFactor + f, '1');
    }
    if (row.hasFree) {
      function.dontCare = {Cube("00")};
      for (std::size_t f = 2; f <= row.factors; ++f) function.dontCare[0].set(f, '1');
    }
    const auto result = minimize(function, WantedSets::Smaller, Thoroughness::Normal);
    EXPECT_EQ(result.on.cubes.size(), row.firstFactor);
    EXPECT_EQ(result.off.cubes.size(), row.factors + 1);
    EXPECT_EQ(result.off.state, row.isTried ? CoverState::Minimum : CoverState::Irredundant)
        << row.firstFactor << " " << row.factors << " " << row.hasFree;
  }
}

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

}  // namespace
}  // namespace ostrel
