// The sum of an exclusive OR of cubes.
#include "minimizer/xor_expansion.h"

#include <gtest/gtest.h>

#include "support/list_operations.h"

namespace ostrel {
namespace {

/// An exclusive-or sum by its rules alone: every slot against every new cube, nothing remembered.
CubeList expandPlainly(const CubeList& cubes, std::size_t width) {
  std::vector<CubeList> slots;
  bool isInverted = false;
  const auto takeOut = [width](CubeList& list, const CubeList& common) {
    const std::size_t before = list.size();
    sharpList(list, common, width);
    if (list.size() > before) simplifyList(list, width);
  };
  for (const Cube& cube : cubes) {
    if (cube.literalCount() == 0) {
      isInverted = !isInverted;
      continue;
    }
    CubeList upper = {cube};
    for (CubeList& lower : slots) {
      CubeList common;
      for (auto x = upper.rbegin(); x != upper.rend(); ++x) {
        for (auto y = lower.rbegin(); y != lower.rend(); ++y) {
          if (auto product = intersectCubes(*x, *y)) common.push_back(*product);
        }
      }
      if (common.size() > 2) simplifyList(common, width);
      if (common.empty()) continue;
      takeOut(lower, common);
      takeOut(upper, common);
    }
    slots.push_back(upper);
  }
  CubeList sum;
  for (const CubeList& slot : slots) sum.insert(sum.end(), slot.begin(), slot.end());
  if (slots.empty() && isInverted) sum.emplace_back();
  Effort unbounded;
  if (!slots.empty() && isInverted) complementList(sum, width, unbounded);
  return sum;
}

TEST(XorExpansion, ExpandsLikeAPlainWalkOverTheSlots) {
  std::mt19937 random(29);
  for (int round = 0; round < 500; ++round) {
    const std::size_t width = round % 10 == 0 ? 65 : 1 + random() % 7;
    const CubeList cubes = cubesOf(randomTexts(random, random() % 14, width));
    ASSERT_EQ(textsOf(xorExpand(cubes, width), width), textsOf(expandPlainly(cubes, width), width))
        << ::testing::PrintToString(textsOf(cubes, width));
  }
}

}  // namespace
}  // namespace ostrel
