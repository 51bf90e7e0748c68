// Sums of products: known lists in their order, functions point by point, and nothing redundant.
#include "minimizer/sum_of_products.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>

#include "support/list_operations.h"

namespace ostrel {
namespace {

// The operations on texts, so that one loop runs a table of them.
using Operation = std::function<Texts(const Texts&)>;

Operation inPlace(const std::function<void(CubeList&, std::size_t)>& operation) {
  return [operation](const Texts& texts) {
    CubeList list = cubesOf(texts);
    operation(list, widthOf(texts));
    return textsOf(list, widthOf(texts));
  };
}
Operation minimize(std::size_t unusedColumns) {
  return [unusedColumns](const Texts& texts) {
    const std::size_t width = widthOf(texts);
    return textsOf(minimizeList(cubesOf(texts), width, width + unusedColumns), width);
  };
}
const Operation simplify = inPlace(simplifyList);
const Operation complement = inPlace([](CubeList& list, std::size_t width) {
  Effort unbounded;
  complementList(list, width, unbounded);
});
const Operation expandXor = [](const Texts& texts) {
  return textsOf(xorExpand(cubesOf(texts), widthOf(texts)), widthOf(texts));
};

TEST(SumOfProducts, GivesKnownListsInOrder) {
  const struct {
    Operation operation;
    Texts in, out;
  } table[] = {
      {complement, {"11"}, {"0-", "-0"}},
      {complement, {"111"}, {"0--", "-0-", "--0"}},
      {complement, {"1-", "-1"}, {"00"}},
      {complement, {"10", "01"}, {"11", "00"}},
      {complement, {"00", "01", "10", "11"}, {}},
      {complement, {}, {}},
      {expandXor, {"1-", "-1"}, {"10", "01"}},
      {expandXor, {"--", "1-"}, {"0-"}},
      {expandXor, {"--", "1-", "-1"}, {"11", "00"}},
      {expandXor, {"11-", "-11", "1-1"}, {"110", "011", "1-1"}},
      {expandXor, {"10", "10"}, {}},
      {expandXor, {}, {}},
      {simplify, {"1-", "01"}, {"1-", "-1"}},
      {simplify, {"1-0", "-11", "11-"}, {"-11", "1-0"}},
      {simplify, {}, {}},
      {minimize(0), {"10", "11", "01"}, {"-1", "10"}},
      {minimize(0), {"100", "101", "111", "110"}, {"1--"}},
      {minimize(0), {"1--", "110"}, {"1--", "110"}},  // two groups apart
      {minimize(0), {"10", "10"}, {"10"}},
      // The universal cube removes all others only in a list that uses all columns, and only in a
      // list that does not is it freed of its duplicates.
      {minimize(0), {"0-", "1-", "11"}, {"--"}},
      {minimize(1), {"0-", "1-", "11"}, {"--", "11"}},
      {minimize(0), {"0-", "1-", "-0", "-1"}, {"--", "--"}},
      {minimize(1), {"0-", "1-", "-0", "-1"}, {"--"}},
      {minimize(1), {"0-", "1-", "-1"}, {"--"}},
  };
  for (const auto& row : table) {
    EXPECT_EQ(row.operation(row.in), row.out) << ::testing::PrintToString(row.in);
  }
  CubeList untouched = cubesOf({"00", "01", "10"});
  sharpList(untouched, {}, 2);
  EXPECT_EQ(textsOf(untouched, 2), (Texts{"00", "01", "10"}));
  // The whole cubes are put in front in reverse, the first one foremost; the merge turns the group.
  CubeList list = cubesOf({"1100", "0011", "0110", "--11"});
  sharpList(list, cubesOf({"0111"}), 4);
  EXPECT_EQ(textsOf(list, 4), (Texts{"-011", "1-11", "0110", "1100"}));
}

TEST(SumOfProducts, KeepsFunctions) {
  const auto any = [](unsigned count) { return count > 0; };
  const auto none = [](unsigned count) { return count == 0; };
  const auto odd = [](unsigned count) { return count % 2 == 1; };
  const struct {
    const char* name;
    Operation operation;
    std::function<bool(unsigned)> before, after;
  } table[] = {
      {"simplify", simplify, any, any},    {"complement", complement, none, any},
      {"minimize", minimize(0), any, any}, {"minimize narrowed", minimize(2), any, any},
      {"expandXor", expandXor, odd, any},  {"coverByXor", coverByXor, any, odd},
  };
  std::mt19937 random(20);
  for (int round = 0; round < 3000; ++round) {
    const std::size_t width = 2 + random() % 5;
    const Texts in = randomTexts(random, 2 + random() % 14, width);
    for (const auto& row : table) {
      const Texts out = row.operation(in);
      // The exclusive OR of a universal cube and of cubes that cancel has no sum of products.
      if (out.empty() && std::find(in.begin(), in.end(), std::string(width, '-')) != in.end()) {
        continue;
      }
      const auto before = countPoints(in, width);
      const auto after = countPoints(out, width);
      for (std::size_t point = 0; point < before.size(); ++point) {
        ASSERT_EQ(row.before(before[point]), row.after(after[point]))
            << row.name << ::testing::PrintToString(in) << ::testing::PrintToString(out);
      }
    }
  }
}

// Now and then with more cubes than a word has bits.
TEST(SumOfProducts, LeavesNoRedundantCube) {
  std::mt19937 random(21);
  std::size_t longest = 0;
  for (unsigned round = 0; round < 300; ++round) {
    const bool isLong = round % 30 == 0;
    const std::size_t width = isLong ? 8 : 6;
    const Texts in = randomTexts(random, 2 + random() % (isLong ? 300 : 30), width);
    const Texts list = simplify(in);
    longest = std::max(longest, list.size());
    const auto inPoints = countPoints(in, width);
    const auto listPoints = countPoints(list, width);
    EXPECT_TRUE(std::equal(inPoints.begin(), inPoints.end(), listPoints.begin(),
                           [](unsigned x, unsigned y) { return (x > 0) == (y > 0); }));
    const auto dashes = [](const std::string& t) { return std::count(t.begin(), t.end(), '-'); };
    for (const std::string& cube : list) {
      if (cube == std::string(width, '-')) break;  // it may stand more than once
      Texts others;
      std::copy_if(list.begin(), list.end(), std::back_inserter(others),
                   [&](const auto& t) { return &t != &cube && dashes(t) >= dashes(cube); });
      const auto own = countPoints({cube}, width);
      const auto covered = countPoints(others, width);
      EXPECT_FALSE(std::equal(own.begin(), own.end(), covered.begin(), std::less_equal<>()))
          << cube << ::testing::PrintToString(list);
    }
  }
  EXPECT_GT(longest, 64U);
}

TEST(SumOfProducts, GivesTheSameListsInTwoBlocks) {
  std::mt19937 random(23);
  const std::string front(61, '-');
  for (int round = 0; round < 300; ++round) {
    const Texts in = randomTexts(random, 2 + random() % 14, 6);
    Texts wide = in;
    for (std::string& text : wide) text.insert(0, front);
    for (const Operation& operation :
         {minimize(0), simplify, complement, expandXor, Operation(coverByXor)}) {
      Texts out = operation(in);
      for (std::string& text : out) text.insert(0, front);
      ASSERT_EQ(operation(wide), out) << ::testing::PrintToString(in);
    }
  }
}

}  // namespace
}  // namespace ostrel
