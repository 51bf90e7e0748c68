// Which cubes of a list the others cover.
#include "minimizer/coverage.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

#include "support/cube_texts.h"

namespace ostrel {
namespace {

/// The numbers of the cubes that a walk from the first to the last finds covered and takes out.
template <PackedCube C>
std::vector<std::size_t> coveredIn(const Texts& texts) {
  Coverage<C> coverage;
  Effort unbounded;
  coverage.reset(widthOf(texts));
  std::vector<C> cubes;
  for (const std::string& text : texts) coverage.add(cubes.emplace_back(Cube(text)));
  std::vector<std::size_t> covered;
  for (std::size_t i = 0; i < cubes.size(); ++i) {
    if (!coverage.isCovered(cubes[i], i, unbounded)) continue;
    coverage.remove(i);
    covered.push_back(i);
  }
  return covered;
}

TEST(Coverage, FindsWhatTheOthersCover) {
  std::mt19937 random(30);
  std::size_t count = 0;
  for (int round = 0; round < 1000; ++round) {
    const Texts list = randomTexts(random, 1 + random() % 40, 2 + random() % 7);
    const std::vector<std::size_t> covered = coveredIn<Cube64>(list);
    ASSERT_EQ(covered, coveredIn<Cube>(list)) << "round " << round;
    std::vector<std::size_t> expected;
    std::vector<unsigned> all = countPoints(list, widthOf(list));
    for (std::size_t i = 0; i < list.size(); ++i) {
      const auto own = countPoints({list[i]}, widthOf(list));
      // Each of its points is counted for another one as well.
      if (!std::equal(own.begin(), own.end(), all.begin(),
                      [](unsigned one, unsigned any) { return one == 0 || any > 1; })) {
        continue;
      }
      std::transform(all.begin(), all.end(), own.begin(), all.begin(), std::minus<>());
      expected.push_back(i);
    }
    ASSERT_EQ(covered, expected) << "round " << round;
    count += covered.size();
  }
  EXPECT_GT(count, 1000U);
}

}  // namespace
}  // namespace ostrel
