// Pairs against all tries one by one.
#include "minimizer/xor_pair.h"

#include <gtest/gtest.h>

#include "minimizer/budgets.h"
#include "minimizer/xor_order.h"
#include "support/list_operations.h"

namespace ostrel {
namespace {

// The first of the best tries, worked out one by one.
TEST(XorPair, FindsTheFirstOfTheShortestPairs) {
  std::mt19937 random(24);
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const std::size_t width = round % 4 == 0 ? 66 : 6;
    const CubeList cubes = cubesOf(randomTexts(random, 2 + random() % 8, width));
    auto cover = xorCover(std::span<const Cube>(cubes), width);
    const auto pair = bestXorPair(cubes, width, {1U << 20U, 1000, round % 2 == 0}, [] {});
    if (!cover) {
      ASSERT_FALSE(pair);
      continue;
    }
    sortByDashes(*cover);
    std::optional<XorPair> best;
    for (std::size_t i = 0; i < cover->size(); ++i) {
      if (round % 2 != 0 && (*cover)[i].literalCount() == 0) continue;
      CubeList others = *cover;
      others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
      CubeList sum = xorExpand(others, width);
      if (!best || sum.size() < best->right.size()) best = {(*cover)[i], std::move(sum)};
    }
    ASSERT_EQ(pair.has_value(), best.has_value());
    if (!pair) continue;
    ASSERT_EQ(pair->left, best->left);
    ASSERT_EQ(textsOf(pair->right, width), textsOf(best->right, width));
    ++found;
  }
  EXPECT_GT(found, 150);
}

}  // namespace
}  // namespace ostrel
