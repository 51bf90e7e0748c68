// One cube and the rest as an exclusive OR.
#include "twolevel/cube_xor.h"

#include <gtest/gtest.h>

#include "support/points.h"
#include "twolevel/minimize.h"

namespace ostrel {
namespace {

TEST(CubeXor, FindsPairsThatAreTheFunction) {
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
TEST(CubeXor, FindsTheCarryOfACounter) {
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

}  // namespace
}  // namespace ostrel
