// How many terms a Signal may keep.
#include "logic/split_limits.h"

#include <gtest/gtest.h>

#include "support/built_design.h"

namespace ostrel {
namespace {

TEST(SplitLimits, ChecksItsLimits) {
  const std::string rows = [] {
    std::string text;
    for (int i = 0; i < 16; ++i) {
      for (int bit = 0; bit < 4; ++bit) text += ((i >> bit) & 1) != 0 ? '1' : '0';
      text += i == 0 ? " 111\n" : " 011\n";
    }
    return text;
  }();
  const std::string text =
      "#$ PINS 6 a b c d X Y\n.i 4\n.o 3\n.ilb a b c d\n.ob X.X1 X.X2 Y\n.p 16\n" + rows;
  const struct {
    int limit, splitMax, shareMin, cluster;
    std::size_t pair, plain;  // candidates among the pair and the plain function
  } table[] = {
      {16, 16, 2, 5, 1, 0},   // the right operand gives one term to the gate
      {16, 16, 2, 18, 0, 0},  // but not to a cluster that is wider than the limit
      {15, 16, 2, 5, 1, 1},
      {3, 16, 17, 5, 1, 0},  // a limit below what is worth sharing is raised, at most to the split
  };
  for (const auto& row : table) {
    Options options;
    options.splitMax = row.splitMax;
    options.shareMin = row.shareMin;
    options.clusterSize = row.cluster;
    Built built(text, options);
    std::vector<Candidate> pair;
    std::vector<Candidate> plain;
    addWideLogic(built.signal("X"), row.limit, Announce::No, pair);
    addWideLogic(built.signal("Y"), row.limit, Announce::No, plain);
    EXPECT_EQ(pair.size(), row.pair) << row.limit << ' ' << row.cluster;
    EXPECT_EQ(plain.size(), row.plain) << row.limit;
  }
}

}  // namespace
}  // namespace ostrel
