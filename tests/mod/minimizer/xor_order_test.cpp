// The order in which the cubes of a list are tried.
#include "minimizer/xor_order.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "minimizer/cube_list.h"

namespace ostrel {
namespace {

TEST(XorOrder, SortsEqualCubesInItsOwnWay) {
  CubeList cubes = {Cube("1-"), Cube("0-"), Cube("-1")};
  sortByDashes(cubes);
  EXPECT_EQ(cubes, CubeList({Cube("0-"), Cube("-1"), Cube("1-")}));
  CubeList many;
  std::mt19937 random(7);
  for (int i = 0; i < 100; ++i) {
    Cube cube;
    for (std::size_t c = 0; c < 8; ++c) cube.set(c, "01-"[random() % 3]);
    many.push_back(cube);
  }
  sortByDashes(many);
  EXPECT_TRUE(std::is_sorted(many.begin(), many.end(), [](const Cube& a, const Cube& b) {
    return a.literalCount() > b.literalCount();
  }));
}

}  // namespace
}  // namespace ostrel
