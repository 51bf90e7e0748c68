// Factoring: the functions stay what they were through each step, nodes earn their price, and no
// function is wider than it may be.
#include "factor/factor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string_view>

#include "factor/divisors.h"
#include "factor/merge.h"
#include "support/sanitized.h"

namespace ostrel {
namespace {

Network networkOf(std::vector<std::vector<std::string_view>> covers, std::size_t limit) {
  Network network = {covers[0][0].size(), covers.size(), {}, limit};
  for (const auto& cover : covers) {
    NetworkFunction& function = network.functions.emplace_back();
    for (const std::string_view text : cover) function.on.emplace_back(text);
    function.limit = limit;
  }
  return network;
}

bool isIn(const CubeList& cover, const Cube& point) {
  return std::ranges::any_of(cover, [&](const Cube& cube) { return cubeContains(cube, point); });
}

/// The outputs at a point; each cover of a complement has to say the opposite of its function.
std::vector<bool> valuesAt(const Network& network, std::size_t point) {
  Cube all;
  for (std::size_t c = 0; c < network.width; ++c) all.set(c, (point >> c & 1U) != 0 ? '1' : '0');
  std::vector<bool> values(network.functions.size());
  // Nodes read nodes: as many rounds as there are of them settle every value.
  for (std::size_t round = network.outputs; round <= network.functions.size(); ++round) {
    for (std::size_t f = network.functions.size(); f-- > 0;) {
      if (network.functions[f].isGone) continue;
      values[f] = isIn(network.functions[f].on, all);
      if (f >= network.outputs) all.set(network.columnOf(f), values[f] ? '1' : '0');
    }
  }
  for (std::size_t f = 0; f < values.size(); ++f) {
    const NetworkFunction& function = network.functions[f];
    if (!function.hasOff || function.isGone) continue;
    EXPECT_NE(isIn(function.off, all), values[f]) << f;
  }
  values.resize(network.outputs);
  return values;
}

void expectSame(const Network& network, const Network& original) {
  for (std::size_t p = 0; p < std::size_t{1} << original.width; ++p) {
    ASSERT_EQ(valuesAt(network, p), valuesAt(original, p)) << p;
  }
}

TEST(Factor, FindsADivisorInEitherSense) {
  // b + c in two outputs, its complement in the third; b XOR c and its complement likewise.
  for (const auto& covers : {std::vector<std::vector<std::string_view>>{
                                 {"11---1", "1-1--1"}, {"-1-11-", "--111-"}, {"-00-11"}},
                             {{"110--1", "101--1"}, {"-1011-", "-0111-"}, {"-00-11", "-11-11"}}}) {
    const Network original = networkOf(covers, 16);
    Network network = original;
    Effort effort;
    ASSERT_TRUE(extractDivisors(network, {}, effort));
    ASSERT_GT(network.functions.size(), 3U);
    const std::size_t column = network.columnOf(3);
    for (std::size_t f = 0; f < 3; ++f) {
      EXPECT_EQ(network.functions[f].on.size(), 1U);
      EXPECT_TRUE(reads(network.functions[f], column)) << f;
    }
    expectSame(network, original);
    minimizeNetwork(network, Thoroughness::Fast, effort);
    mergeNodes(network, {.price = 100}, effort);
    for (std::size_t f = 3; f < network.functions.size(); ++f) {
      EXPECT_TRUE(network.functions[f].isGone) << "a node is dearer than what it saves";
    }
    expectSame(network, original);
    Effort nothing(3);
    Network same = original;
    EXPECT_FALSE(extractDivisors(same, {}, nothing));
    EXPECT_EQ(same.functions.size(), 3U);
  }
}

TEST(Factor, KeepsFunctionsAndNeverCostsMoreThanCutting) {
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    Network original = {7, 3, {}, 4};
    for (int f = 0; f < 3; ++f) {
      NetworkFunction& function = original.functions.emplace_back();
      function.limit = 4;
      function.mayTurn = f != 1;
      for (int i = 0; i < 12; ++i) {
        Cube cube;
        for (std::size_t c = 0; c < 7; ++c) cube.set(c, "01--"[random() % 4]);
        function.on.push_back(cube);
      }
    }
    const FactorLimits limits = {.price = 1 + random() % 8, .cluster = 3};
    Network network = original;
    ASSERT_TRUE(factor(network, limits));
    expectSame(network, original);
    EXPECT_LE(costOf(network, limits), costOf(original, limits));
    for (std::size_t f = 3; f < network.functions.size(); ++f) {
      for (std::size_t newer = f; newer < network.functions.size(); ++newer) {
        EXPECT_FALSE(reads(network.functions[f], network.columnOf(newer))) << "not older";
      }
    }
  }
}

TEST(Factor, AFunctionThatHasToBeCutPaysForTheCuts) {
  // c + d + e + f in two products, each four terms wide without its node.
  for (const bool hasRoom : {false, true}) {
    const Network original = networkOf(
        {{"1-1---", "1--1--", "1---1-", "1----1"}, {"-11---", "-1-1--", "-1--1-", "-1---1"}},
        hasRoom ? 4 : 3);
    Network network = original;
    for (NetworkFunction& function : network.functions) function.mayTurn = false;
    const FactorLimits limits = {.price = 7};
    EXPECT_EQ(costOf(network, limits), hasRoom ? 8U : 24U);
    network.functions[0].limit = 2;
    EXPECT_EQ(costOf(network.functions[0], limits), 20U) << "two cuts";
    network.functions[0].limit = original.functions[0].limit;
    ASSERT_TRUE(factor(network, limits));
    EXPECT_EQ(network.functions.size(), hasRoom ? 2U : 3U);
    for (const NetworkFunction& function : network.functions) {
      EXPECT_LE(function.termCount(), function.limit);
    }
    expectSame(network, original);
  }
}

/// The covers with the literal in front of each cube.
void addProducts(CubeList& sum, const CubeList& cover, std::size_t a, char va, std::size_t b,
                 char vb) {
  for (Cube cube : cover) {
    cube.set(a, va);
    cube.set(b, vb);
    sum.push_back(cube);
  }
}

TEST(Factor, AnAdderThatWasFlattenedFindsItsCarries) {
  constexpr std::size_t bits = isSanitized ? 6 : 8;
  Network network = {2 * bits, bits + 1, {}, 8};
  CubeList carry;
  CubeList none = {Cube()};
  for (std::size_t i = 0; i < bits; ++i) {
    const std::size_t a = i;
    const std::size_t b = bits + i;
    NetworkFunction& sum = network.functions.emplace_back();
    sum.limit = 8;
    addProducts(sum.on, carry, a, '0', b, '0');
    addProducts(sum.on, carry, a, '1', b, '1');
    addProducts(sum.on, none, a, '0', b, '1');
    addProducts(sum.on, none, a, '1', b, '0');
    CubeList next = {Cube()};
    next.back().set(a, '1');
    next.back().set(b, '1');
    addProducts(next, carry, a, '1', b, '-');
    addProducts(next, carry, a, '-', b, '1');
    CubeList noNext = {Cube()};
    noNext.back().set(a, '0');
    noNext.back().set(b, '0');
    addProducts(noNext, none, a, '0', b, '-');
    addProducts(noNext, none, a, '-', b, '0');
    carry = std::move(next);
    none = std::move(noNext);
  }
  NetworkFunction& last = network.functions.emplace_back();
  last.on = carry;
  last.limit = 8;
  const FactorLimits limits;
  EXPECT_GT(costOf(network, limits), std::size_t{4} << bits);
  ASSERT_TRUE(factor(network, limits));
  EXPECT_LE(costOf(network, limits), 17 * bits);
}

// With the node's fourteen products in its place the complement stays short, and the function gets
// more cubes than anybody lists.
TEST(Factor, AMergedNodeLeavesEveryFunctionACoverOfItsOwn) {
  constexpr std::size_t width = 29;
  Network network = {width, 1, {{}, {}}, 16};
  NetworkFunction& reader = network.functions.front();
  reader.on.resize(2);
  reader.off.resize(1);
  for (const std::size_t c : {width - 1, width}) {
    reader.on[c - (width - 1)].set(c, '0');
    reader.off.front().set(c, '1');
  }
  reader.hasOff = true;
  reader.mayTurn = false;
  for (std::size_t c = 0; c + 1 < width; c += 2) {
    Cube& product = network.functions.back().on.emplace_back();
    product.set(c, '1');
    product.set(c + 1, '1');
  }
  Effort effort;
  mergeNodes(network, {}, effort);
  EXPECT_FALSE(network.functions.front().on.empty());
}

TEST(Factor, DepthIsKept) {
  const Network original = networkOf(
      {{"11---1", "1-1--1", "1--1-1", "1---11"}, {"01----", "0-1---", "0--1--", "0---1-"}}, 16);
  for (const bool isLimited : {false, true}) {
    Network network = original;
    Effort effort;
    ASSERT_TRUE(extractDivisors(network, {.depth = isLimited ? 1 : SIZE_MAX}, effort));
    bool hasTwo = false;
    for (std::size_t f = 2; f < network.functions.size(); ++f) {
      for (std::size_t g = 2; g < network.functions.size(); ++g) {
        hasTwo |= reads(network.functions[f], network.columnOf(g));
      }
    }
    EXPECT_EQ(hasTwo, !isLimited);
    expectSame(network, original);
  }
}

}  // namespace
}  // namespace ostrel
