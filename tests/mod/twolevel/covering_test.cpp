// Covering tables against all choices of columns.
#include "twolevel/covering.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <random>

namespace ostrel {
namespace {

TEST(Covering, CoversTablesWithTheFewestColumns) {
  std::mt19937 random(8);
  for (unsigned round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
    const std::size_t columns = 4 + random() % 9;
    std::vector<CoveringRow> rows(2 + random() % 25);
    std::vector<unsigned> sets;
    for (CoveringRow& row : rows) {
      unsigned set = 1U << random() % columns;
      for (unsigned k = 0; k < 3; ++k) set |= 1U << random() % columns;
      for (unsigned c = 0; c < columns; ++c) {
        if ((set >> c & 1U) != 0) row.push_back(c);
      }
      sets.push_back(set);
    }
    int fewest = 99;
    for (unsigned choice = 0; choice < 1U << columns; ++choice) {
      const bool isCover =
          std::all_of(sets.begin(), sets.end(), [&](unsigned set) { return (set & choice) != 0; });
      if (isCover) fewest = std::min(fewest, std::popcount(choice));
    }
    const auto minimum = static_cast<std::size_t>(fewest);
    CoveringWork work;
    EXPECT_EQ(solveCovering(rows, columns, SIZE_MAX, work).columns.size(), minimum);
    EXPECT_EQ(solveCovering(rows, columns, minimum, work).bound, minimum) << "cut off";
    CoveringWork none = {Effort(1), Effort(1)};
    const Covering quick = solveCovering(rows, columns, SIZE_MAX, none);
    unsigned choice = 0;
    for (const std::uint32_t column : quick.columns) choice |= 1U << column;
    for (const unsigned set : sets) EXPECT_NE(set & choice, 0U);
    EXPECT_LE(quick.bound, minimum);
  }
}

TEST(Covering, KeepsTheFirstOfEqualAnswers) {
  const std::vector<CoveringRow> rows = {{1, 3, 5}, {0, 1, 4}, {3, 4, 5}, {0, 1, 5},
                                         {1, 2, 4}, {0, 2, 3}, {0, 2, 4}};
  CoveringWork work;
  EXPECT_EQ(solveCovering(rows, 6, SIZE_MAX, work).columns, (std::vector<std::uint32_t>{0, 1, 3}));
}

}  // namespace
}  // namespace ostrel
