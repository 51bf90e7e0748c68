// Raising rows without a diagram.
#include "twolevel/raise_rows.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(RaiseRows, CountsTheRowsThatItLooksAt) {
  const PartialFunction function = {{Cube("1111")}, {}, CubeList(50, Cube("0---"))};
  const MinimizedCover raised = raiseRows(function, normalLimits);
  EXPECT_EQ(raised.cubes, CubeList{Cube("1---")});
  EXPECT_EQ(raised.steps, 4U * 50 + 1);  // each literal against each row, and a look at the rest
}

}  // namespace
}  // namespace ostrel
