// How much work each level of thoroughness allows.
#include "twolevel/work_limits.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(WorkLimits, GrowWithTheThoroughness) {
  const Thoroughness levels[] = {Thoroughness::Trial, Thoroughness::Fast, Thoroughness::Normal,
                                 Thoroughness::Deep};
  for (std::size_t i = 1; i < 4; ++i) {
    EXPECT_LT(workLimits(levels[i - 1]).primes, workLimits(levels[i]).primes);
  }
}

}  // namespace
}  // namespace ostrel
