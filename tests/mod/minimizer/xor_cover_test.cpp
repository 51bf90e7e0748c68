// Covers that are read as an exclusive OR.
#include "minimizer/xor_cover.h"

#include <bitset>
#include <gtest/gtest.h>

#include "support/list_operations.h"

namespace ostrel {
namespace {

TEST(XorCover, GivesKnownListsInOrder) {
  const struct {
    Texts in, out;
  } table[] = {
      {{"10", "11"}, {"1-"}},
      {{"1-", "-1"}, {"00", "--"}},
      {{"11-", "-11"}, {"010", "-1-"}},
      {{"1100", "1101", "0011", "0111"}, {"110-", "0-11"}},
      {{"110", "101", "011"}, {"000", "-0-", "1--", "--1"}},
      {{"111", "000"}, {"00-", "0-1", "-11"}},
      {{"1", "0"}, {"none"}},
      {{"10"}, {"none"}},
      {{"10", "10"}, {"10"}},
      {{"1-", "11"}, {"1-"}},
      {{"--", "01"}, {"--"}},
      {{"-1-1", "1-1-", "1-11"}, {"1111", "-1-1", "1-1-"}},
  };
  for (const auto& row : table) {
    EXPECT_EQ(coverByXor(row.in), row.out) << ::testing::PrintToString(row.in);
  }
  Texts points;
  Texts even;  // 128 as well, which only links of two literals join
  for (unsigned point = 0; point < 256; ++point) {
    const std::bitset<8> bits(point);
    if (point >= 128) points.push_back(bits.to_string());
    if (bits.count() % 2 == 0) even.push_back(bits.to_string());
  }
  EXPECT_EQ(coverByXor(even), (Texts{"------1-", "----1---", "--1-----", "1-------", "-------1",
                                     "-0------", "---0----", "-----0--"}));
  EXPECT_EQ(coverByXor(points), Texts{"1-------"});
  points.push_back("00000000");  // the 129th cube, although it would merge to few
  EXPECT_EQ(coverByXor(points), Texts{"none"});
}

}  // namespace
}  // namespace ostrel
