// Numbers by the hash of what they stand for.
#include "minimizer/hash_index.h"

#include <gtest/gtest.h>
#include <random>

namespace ostrel {
namespace {

// Numbers of one key are met in the order of adding, also when the buckets had to grow.
TEST(HashIndex, MeetsTheNumbersOfAKeyInOrder) {
  std::mt19937 random(31);
  HashIndex index;
  for (const std::size_t expected : {0U, 300U}) {
    index.reset(expected);
    std::vector<std::uint64_t> keys;
    for (int i = 0; i < 300; ++i) {
      keys.push_back((random() % 2 == 0 ? std::uint64_t{7} << 61U : 7U) + random() % 20);
      ASSERT_EQ(index.add(keys.back()), keys.size() - 1);
    }
    for (const std::uint64_t key : keys) {
      std::vector<std::uint32_t> met;
      const auto last = index.find(key, [&](std::uint32_t number) {
        met.push_back(number);
        return false;
      });
      std::vector<std::uint32_t> all;
      for (std::uint32_t n = 0; n < keys.size(); ++n) {
        if (keys[n] == key) all.push_back(n);
      }
      ASSERT_EQ(met, all);
      ASSERT_EQ(last, HashIndex::none);
    }
    ASSERT_EQ(index.find(6, [](std::uint32_t) { return true; }), HashIndex::none);
  }
}

}  // namespace
}  // namespace ostrel
