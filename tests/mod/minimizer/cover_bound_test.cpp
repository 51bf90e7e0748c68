// How many cubes a cover must have.
#include "minimizer/cover_bound.h"

#include <gtest/gtest.h>

#include "support/list_operations.h"

namespace ostrel {
namespace {

// Of the complement of odd parity each cube is a point, and all of them are found; flipped inside a
// cube, a function has a cover that consists of what either leaves of the other.
TEST(CoverBound, ProvesNoMoreCubesThanACoverHas) {
  const CubeList parity = cubesOf({"100", "010", "001", "111"});
  CoverBound bound(std::span<const Cube>(parity), 3);
  EXPECT_EQ(bound.ofXor({0, 0}, 9), 4U);
  EXPECT_EQ(bound.ofXor(Cube("111").block(0), 9), 3U);
  EXPECT_EQ(bound.ofXor(Cube("000").block(0), 3), 3U);
  std::mt19937 random(25);
  std::size_t proven = 0;
  std::size_t present = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::size_t width = round % 100 == 0 ? 64 : 2 + random() % 6;
    const CubeList cubes = cubesOf(randomTexts(random, 1 + random() % 12, width));
    const CubeList flipped = cubesOf(randomTexts(random, 1, width));
    CubeList cover = cubes;
    CubeList others = flipped;
    sharpList(cover, flipped, width);
    sharpList(others, cubes, width);
    cover.insert(cover.end(), others.begin(), others.end());
    simplifyList(cover, width);
    CoverBound lower(std::span<const Cube>(cubes), width);
    const std::size_t least = lower.ofXor(flipped[0].block(0), 1000);
    ASSERT_LE(least, cover.size());
    proven += least;
    present += cover.size();
  }
  EXPECT_GT(10 * proven, 6 * present);
}

}  // namespace
}  // namespace ostrel
