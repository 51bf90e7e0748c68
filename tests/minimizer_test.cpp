// Cubes, sums of products and exclusive-or sums: known lists in their order, functions point by
// point, and the hashed searches against plain scans.
#include <algorithm>
#include <bitset>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <random>
#include <set>
#include <span>
#include <utility>

#include "minimizer/budgets.h"
#include "minimizer/column_map.h"
#include "minimizer/cover_bound.h"
#include "minimizer/cube_groups.h"
#include "minimizer/hash_index.h"
#include "minimizer/sum_of_products.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "minimizer/xor_order.h"
#include "minimizer/xor_pair.h"

namespace ostrel {
namespace {

using Texts = std::vector<std::string>;

CubeList cubesOf(const Texts& texts) {
  return CubeList(texts.begin(), texts.end());
}

Texts textsOf(const CubeList& cubes, std::size_t width) {
  Texts texts;
  for (const Cube& cube : cubes) texts.push_back(cube.text(width));
  return texts;
}

Texts randomTexts(std::mt19937& random, std::size_t count, std::size_t width) {
  const auto dashes = random() % 80;  // per cent
  Texts texts(count, std::string(width, '-'));
  for (std::string& text : texts) {
    for (char& c : text) {
      if (random() % 100 >= dashes) c = "01"[random() % 2];
    }
  }
  return texts;
}

// The operations on lists of Cubes, with an effort that never ends.
void simplifyList(CubeList& list, std::size_t width) {
  Effort unbounded;
  ListAlgebra<Cube>(width, unbounded).simplify(list);
}

void sharpList(CubeList& list, const CubeList& taken, std::size_t width) {
  Effort unbounded;
  ListAlgebra<Cube>(width, unbounded).sharp(list, taken);
}

template <PackedCube C = Cube>
CubeList xorExpand(const CubeList& cubes, std::size_t width) {
  Effort unbounded;
  XorExpansion<C> expansion(width, unbounded);
  typename XorExpansion<C>::State state;
  for (const Cube& cube : cubes) expansion.take(state, C(cube));
  const auto sum = expansion.sum(state);
  return CubeList(sum.begin(), sum.end());
}

// The operations on texts, so that one loop runs a table of them.
using Operation = std::function<Texts(const Texts&)>;
std::size_t widthOf(const Texts& texts) {
  return texts.empty() ? 2 : texts[0].size();
}

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
const Operation coverByXor = [](const Texts& texts) {
  const CubeList cubes = cubesOf(texts);
  const auto cover = xorCover(std::span<const Cube>(cubes), widthOf(texts));
  return cover ? textsOf(*cover, widthOf(texts)) : Texts{"none"};
};

TEST(Cube, ComparesAcrossBlocks) {
  const std::string dashes(130, '-');
  Cube wide(dashes);
  wide.set(3, '1');
  EXPECT_EQ(wide, Cube("---1"));
  wide.set(129, '0');
  EXPECT_TRUE(cubeContains(Cube("---1"), wide));
  EXPECT_FALSE(cubeContains(wide, Cube("---1")));
  Cube other = wide;
  other.invert(129);
  EXPECT_EQ(adjacentColumn(wide, other), std::optional<std::size_t>(129));
  EXPECT_FALSE(cubesIntersect(wide, other));
  wide.set(129, '-');
  EXPECT_EQ(literalHash(wide), literalHash(Cube("---1")));
}

// Whatever the secret is: rows chosen by their columns, and the same columns of other blocks.
TEST(Cube, HashesCantBeMadeToCollide) {
  std::set<std::uint64_t> hashes;
  for (unsigned bits = 0; bits < 1024; ++bits) {
    Cube cube;
    for (std::size_t b = 0; b < 10; ++b) cube.set(64 * b + 63, (bits >> b & 1U) != 0 ? '1' : '0');
    Cube sparse;
    sparse.set(64 * bits + bits % 32 + 32, '1');
    hashes.insert(literalHash(cube));
    hashes.insert(literalHash(sparse));
  }
  EXPECT_GT(hashes.size(), 2040U);  // one may come by chance, once in thousands of runs
}

TEST(Cube, MakesProductsPiecesAndMaps) {
  const struct {
    const char *a, *b, *product;
    bool pieced;
    Texts pieces;
  } table[] = {
      {"1-", "--", "1-", true, {}}, {"--", "11", "11", true, {"0-", "-0"}},
      {"10", "11", "", false, {}},  {"1--", "-01", "101", true, {"11-", "1-0"}},
      {"0-", "1-", "", false, {}},
  };
  for (const auto& row : table) {
    const Cube a((std::string_view(row.a)));
    const Cube b((std::string_view(row.b)));
    const auto product = intersectCubes(a, b);
    EXPECT_EQ(product ? product->text(widthOf({row.a})) : "", row.product);
    CubeList pieces;
    EXPECT_EQ(sharpCube(a, b, pieces), row.pieced);
    EXPECT_EQ(textsOf(pieces, widthOf({row.a})), row.pieces);
  }
  ColumnSet used;
  for (const std::size_t column : {70U, 3U, 5U}) used.insert(column);
  const ColumnMap map(used, 80);
  Cube wide("-----1");
  wide.set(70, '0');
  EXPECT_EQ(map.compact(wide).text(map.compactWidth()), "-10");
  EXPECT_EQ(map.restore(Cube("-10")), wide);
  EXPECT_EQ(adjacentColumn(Cube("1-0"), Cube("110")), std::nullopt);
  EXPECT_EQ(adjacentColumn(Cube("1-0"), Cube("0-1")), std::nullopt);
}

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
  for (unsigned point = 128; point < 256; ++point) {
    points.push_back(std::bitset<8>(point).to_string());
  }
  EXPECT_EQ(coverByXor(points), Texts{"1-------"});
  points.push_back("00000000");  // the 129th cube, although it would merge to few
  EXPECT_EQ(coverByXor(points), Texts{"none"});
}

// How many cubes hold each point of up to 256.
std::vector<unsigned> countPoints(const Texts& texts, std::size_t width) {
  std::vector<unsigned> counts(std::size_t{1} << width);
  for (unsigned point = 0; point < counts.size(); ++point) {
    for (const std::string& text : texts) {
      bool holds = true;
      for (std::size_t c = 0; c < width; ++c) holds &= text[c] != "10"[(point >> c) & 1U];
      counts[point] += holds ? 1U : 0U;
    }
  }
  return counts;
}

TEST(Minimizer, KeepsFunctions) {
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
TEST(Minimizer, LeavesNoRedundantCube) {
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

TEST(Minimizer, GivesTheSameListsInTwoBlocks) {
  std::mt19937 random(23);
  const std::string front(61, '-');
  for (int round = 0; round < 300; ++round) {
    const Texts in = randomTexts(random, 2 + random() % 14, 6);
    Texts wide = in;
    for (std::string& text : wide) text.insert(0, front);
    for (const Operation& operation : {minimize(0), simplify, complement, expandXor, coverByXor}) {
      Texts out = operation(in);
      for (std::string& text : out) text.insert(0, front);
      ASSERT_EQ(operation(wide), out) << ::testing::PrintToString(in);
    }
  }
}

TEST(Minimizer, SortsEqualCubesInItsOwnWay) {
  CubeList cubes = {Cube("1-"), Cube("0-"), Cube("-1")};
  sortByDashes(cubes);
  EXPECT_EQ(cubes, CubeList({Cube("0-"), Cube("-1"), Cube("1-")}));
  CubeList many;
  std::mt19937 random(7);
  for (int i = 0; i < 100; ++i) {
    Cube cube;
    for (std::size_t c = 0; c < 8; ++c) cube.set(c, "01-"[random() % 3]);
    many.push_back(cube);
  }
  sortByDashes(many);
  EXPECT_TRUE(std::is_sorted(many.begin(), many.end(), [](const Cube& a, const Cube& b) {
    return a.literalCount() > b.literalCount();
  }));
}

// The first of the best tries, worked out one by one.
TEST(Minimizer, FindsTheFirstOfTheShortestPairs) {
  std::mt19937 random(24);
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const std::size_t width = round % 4 == 0 ? 66 : 6;
    const CubeList cubes = cubesOf(randomTexts(random, 2 + random() % 8, width));
    auto cover = xorCover(std::span<const Cube>(cubes), width);
    const auto pair = bestXorPair(cubes, width, {1U << 20U, 1000, round % 2 == 0}, [] {});
    if (!cover) {
      ASSERT_FALSE(pair);
      continue;
    }
    sortByDashes(*cover);
    std::optional<XorPair> best;
    for (std::size_t i = 0; i < cover->size(); ++i) {
      if (round % 2 != 0 && (*cover)[i].literalCount() == 0) continue;
      CubeList others = *cover;
      others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
      CubeList sum = xorExpand(others, width);
      if (!best || sum.size() < best->right.size()) best = {(*cover)[i], std::move(sum)};
    }
    ASSERT_EQ(pair.has_value(), best.has_value());
    if (!pair) continue;
    ASSERT_EQ(pair->left, best->left);
    ASSERT_EQ(textsOf(pair->right, width), textsOf(best->right, width));
    ++found;
  }
  EXPECT_GT(found, 150);
}

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

TEST(Minimizer, ExpandsLikeAPlainWalkOverTheSlots) {
  std::mt19937 random(29);
  for (int round = 0; round < 500; ++round) {
    const std::size_t width = round % 10 == 0 ? 65 : 1 + random() % 7;
    const CubeList cubes = cubesOf(randomTexts(random, random() % 14, width));
    ASSERT_EQ(textsOf(xorExpand(cubes, width), width), textsOf(expandPlainly(cubes, width), width))
        << ::testing::PrintToString(textsOf(cubes, width));
  }
}

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

TEST(Minimizer, FindsWhatTheOthersCover) {
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

// Of the complement of odd parity each cube is a point, and all of them are found; flipped inside a
// cube, a function has a cover that consists of what either leaves of the other.
TEST(Minimizer, ProvesNoMoreCubesThanACoverHas) {
  const CubeList parity = cubesOf({"100", "010", "001", "111"});
  CoverBound bound(std::span<const Cube>(parity), 3);
  EXPECT_EQ(bound.ofXor({0, 0}, 9), 4U);
  EXPECT_EQ(bound.ofXor(Cube("111").block(0), 9), 3U);
  EXPECT_EQ(bound.ofXor(Cube("000").block(0), 3), 3U);
  std::mt19937 random(25);
  std::size_t proven = 0;
  std::size_t present = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::size_t width = round % 100 == 0 ? 64 : 2 + random() % 6;
    const CubeList cubes = cubesOf(randomTexts(random, 1 + random() % 12, width));
    const CubeList flipped = cubesOf(randomTexts(random, 1, width));
    CubeList cover = cubes;
    CubeList others = flipped;
    sharpList(cover, flipped, width);
    sharpList(others, cubes, width);
    cover.insert(cover.end(), others.begin(), others.end());
    simplifyList(cover, width);
    CoverBound lower(std::span<const Cube>(cubes), width);
    const std::size_t least = lower.ofXor(flipped[0].block(0), 1000);
    ASSERT_LE(least, cover.size());
    proven += least;
    present += cover.size();
  }
  EXPECT_GT(10 * proven, 6 * present);
}

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

// The steps of CubeGroups by plain scans: each group in order, each cube with its first partner.
using Groups = std::vector<CubeList>;
using Partner = std::function<bool(const Cube& a, const Cube& b)>;

void scanDuplicates(Groups& groups) {
  for (std::size_t d = 0; d + 1 < groups.size(); ++d) {
    CubeList kept;
    for (const Cube& cube : groups[d]) {
      if (std::find(kept.begin(), kept.end(), cube) == kept.end()) kept.push_back(cube);
    }
    groups[d] = kept;
  }
}

// Takes each cube that has a partner in group d + step out, with a partner of its own group, and
// appends it to the next group without the literal in which the two are opposite, if there is one.
void scanPartners(Groups& groups, std::size_t d, std::size_t step, const Partner& isPartner) {
  CubeList& group = groups[d];
  for (std::size_t a = 0; a < group.size();) {
    const CubeList& others = groups[d + step];
    std::size_t b = step == 0 ? a + 1 : 0;
    while (b < others.size() && !isPartner(group[a], others[b])) ++b;
    if (b >= others.size()) {
      ++a;
      continue;
    }
    Cube wider = group[a];
    others[b].forEachLiteral([&](std::size_t column, char literal) {
      if (wider.at(column) != literal) wider.set(column, '-');
    });
    if (!(wider == group[a])) groups[d + 1].push_back(wider);
    if (step == 0) group.erase(group.begin() + static_cast<std::ptrdiff_t>(b));
    group.erase(group.begin() + static_cast<std::ptrdiff_t>(a));
  }
}

/// The columns in which two cubes are opposite, and those in which only one has a literal.
std::pair<std::size_t, std::size_t> differences(const Cube& a, const Cube& b) {
  const Cube::Block x = a.block(0);
  const Cube::Block y = b.block(0);
  return {bitCount(x.care & y.care & (x.value ^ y.value)), bitCount(x.care ^ y.care)};
}

void scanMerge(Groups& groups) {
  const auto differInOne = [](const Cube& a, const Cube& b) {
    const auto [opposite, missing] = differences(a, b);
    return opposite + missing == 1;
  };
  scanDuplicates(groups);
  for (std::size_t d = 0; d + 1 < groups.size(); ++d) scanPartners(groups, d, 0, differInOne);
  for (std::size_t d = 0; d + 2 < groups.size(); ++d) scanPartners(groups, d, 1, differInOne);
}

void scanExpand(Groups& groups) {
  const auto expands = [](const Cube& a, const Cube& b) {
    return (b.block(0).care & ~a.block(0).care) == 0 && differences(a, b).first == 1;
  };
  scanDuplicates(groups);
  for (std::size_t d = 0; d + 2 < groups.size(); ++d) scanPartners(groups, d, 1, expands);
}

TEST(CubeGroups, FindByHashWhatAScanFinds) {
  std::mt19937 random(22);
  for (int round = 0; round < 100; ++round) {
    const std::size_t width = 6 + random() % 5;
    const CubeList list = cubesOf(randomTexts(random, 100 + random() % 500, width));
    Groups scanned(width + 1);
    for (auto cube = list.rbegin(); cube != list.rend(); ++cube) {
      scanned[dashCount(*cube, width)].push_back(*cube);
    }
    const bool expands = round % 2 == 0;
    expands ? scanExpand(scanned) : scanMerge(scanned);
    if (!scanned[width].empty()) scanned.assign(1, scanned[width]);
    CubeList expected;
    for (auto group = scanned.rbegin(); group != scanned.rend(); ++group) {
      expected.insert(expected.end(), group->begin(), group->end());
    }
    CubeGroups<Cube> groups(width);
    CubeList found = list;
    groups.groupByDashes(found);
    expands ? groups.expandGroups() : groups.mergeGroups(UniversalCube::StandsAlone);
    groups.flattenGroups(found);
    ASSERT_EQ(textsOf(found, width), textsOf(expected, width)) << "expands: " << expands;
  }
}

}  // namespace
}  // namespace ostrel
