// One Equation: constants, choice of sets, reduction, order of terms, exclusive-or synthesis.
#include "equation/equation.h"

#include <climits>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "support/cube_texts.h"

namespace ostrel {
namespace {

/// An Equation over texts, with a table of its own.
struct Bench {
  explicit Bench(const Texts& on, const Texts& off = {}, std::size_t columns = 0)
      : terms(std::max({columns, widthOf(on), widthOf(off)})), equation(terms) {
    for (const std::string& text : on) equation.addOnTerm(terms.term(Cube(text)));
    for (const std::string& text : off) equation.addOffTerm(terms.term(Cube(text)));
    equation.extension = Extension::None;
  }

  static std::size_t widthOf(const Texts& texts) { return texts.empty() ? 0 : texts[0].size(); }

  Texts texts(const TermChain& chain) const {
    Texts result;
    for (const Term term : chain) result.push_back(terms.cube(term).text(terms.width()));
    return result;
  }
  Texts on() const { return texts(equation.onSet()); }
  Texts off() const { return texts(equation.offSet()); }

  TermTable terms;
  Equation equation;
};

bool covers(const TermChain& chain, const TermTable& terms, unsigned point, std::size_t width) {
  Cube minterm;
  for (std::size_t c = 0; c < width; ++c) minterm.set(c, ((point >> c) & 1U) != 0 ? '1' : '0');
  return std::any_of(chain.begin(), chain.end(),
                     [&](Term term) { return cubesIntersect(terms.cube(term), minterm); });
}

/// The value at a point, polarity included; by the OFF set where there is no ON set.
bool valueAt(const Equation& equation, const TermTable& terms, unsigned point, std::size_t width) {
  const bool value = equation.onSet().empty() ? !equation.offSet().empty() &&
                                                    !covers(equation.offSet(), terms, point, width)
                                              : covers(equation.onSet(), terms, point, width);
  return value != (equation.polarity == Polarity::Inverted);
}

TEST(Equation, KnowsConstants) {
  const struct {
    Texts on, off;
    bool inverted, zero, one, either;
  } table[] = {
      {{}, {}, false, true, false, true},           {{}, {}, true, false, true, true},
      {{"--"}, {}, false, false, true, true},       {{"--"}, {}, true, true, false, true},
      {{}, {"--"}, false, true, false, true},       {{}, {"--"}, true, false, true, true},
      {{"1-"}, {}, false, false, false, false},     {{}, {"1-"}, false, false, false, false},
      {{"--"}, {"1-"}, false, false, false, false},
  };
  for (const auto& row : table) {
    Bench bench(row.on, row.off, 2);
    if (row.inverted) bench.equation.togglePolarity();
    EXPECT_EQ(bench.equation.isConstant(Constant::Zero), row.zero);
    EXPECT_EQ(bench.equation.isConstant(Constant::One), row.one);
    EXPECT_EQ(bench.equation.isConstant(Constant::Either), row.either);
  }
}

TEST(Equation, KeepsOneSet) {
  const Texts two = {"10", "01"};
  const Texts one = {"11"};
  const struct {
    Texts on, off;
    SetSelector selector;
    bool swapped;
    Texts keptOn, keptOff;
  } table[] = {
      {two, two, SetSelector::Smaller, false, two, {}},  // a tie keeps ON
      {two, one, SetSelector::Smaller, true, one, {}},   // the smaller OFF set, inverted
      {two, {}, SetSelector::Smaller, false, two, {}},   // a missing set doesn't compete
      {{}, two, SetSelector::Smaller, true, two, {}},
      {two, one, SetSelector::On, false, two, {}},
      {{}, two, SetSelector::On, false, {}, {}},  // the function is gone
      {two, one, SetSelector::Off, true, one, {}},
      {{"--"}, {}, SetSelector::Off, false, {"--"}, {}},  // constants stay as they are
      {{}, {"--"}, SetSelector::On, false, {}, {"--"}},
  };
  for (const auto& row : table) {
    Bench bench(row.on, row.off);
    EXPECT_EQ(bench.equation.keepSets(row.selector), row.swapped);
    EXPECT_EQ(bench.equation.polarity == Polarity::Inverted, row.swapped);
    EXPECT_EQ(bench.on(), row.keptOn);
    EXPECT_EQ(bench.off(), row.keptOff);
  }
}

TEST(Equation, PolarityTogglesToInvertedFromAnythingElse) {
  Bench bench({"1"});
  bench.equation.polarity = Polarity::Positive;
  bench.equation.togglePolarity();
  EXPECT_EQ(bench.equation.polarity, Polarity::Inverted);
  bench.equation.togglePolarity();
  EXPECT_EQ(bench.equation.polarity, Polarity::None);
}

TEST(Equation, ReducesWithinItsLimit) {
  Texts wide(17, std::string(16, '1'));
  for (std::size_t i = 0; i < 16; ++i) wide[i][i] = '0';
  Bench tooWide(wide);
  EXPECT_FALSE(tooWide.equation.reduce(SetSelector::Both));  // 16 * 16 * 17 = 4352
  EXPECT_EQ(tooWide.on(), wide);
  wide.pop_back();
  Bench fits(wide);
  EXPECT_TRUE(fits.equation.reduce(SetSelector::Both));  // 4096
  EXPECT_GT(fits.equation.offCount(), 0);

  Bench onOnly({"10", "11"});
  EXPECT_TRUE(onOnly.equation.reduce(SetSelector::Off));
  EXPECT_EQ(onOnly.on(), Texts({"10", "11"}));  // as it was read
  EXPECT_EQ(onOnly.off(), Texts({"0-"}));
  Bench both({"10", "11"}, {"00", "01"});
  EXPECT_TRUE(both.equation.reduce(SetSelector::On));
  EXPECT_EQ(both.on(), Texts({"1-"}));
  EXPECT_EQ(both.off(), Texts({"00", "01"}));
}

TEST(Equation, WorksOutAnOnSetWithoutASupport) {
  Bench oneTerm({}, {std::string(65, '1')});
  EXPECT_TRUE(oneTerm.equation.reduce(SetSelector::Both));  // 65 * 65 * 1 = 4225, but no support
  EXPECT_EQ(oneTerm.equation.onCount(), 65);

  std::mt19937 random(7);
  Texts minterms;
  for (int i = 0; i < 60; ++i) {
    std::string text(40, '0');
    for (char& c : text) c = random() % 2 == 0 ? '0' : '1';
    minterms.push_back(text);
  }
  Bench endless({}, minterms);
  EXPECT_FALSE(endless.equation.reduce(SetSelector::Both));
  EXPECT_EQ(endless.off(), minterms);
  EXPECT_EQ(endless.equation.onCount(), 0);
}

TEST(Equation, MinimizesInTheColumnsInUse) {
  Bench sparse({"--1----0--", "--1----1--", "--0----1--"});
  EXPECT_TRUE(sparse.equation.reduce(SetSelector::On));
  EXPECT_EQ(sparse.on(), Texts({"-------1--", "--1----0--"}));
  // With all columns in use the cube of dashes only takes everything; in a wider design too.
  Bench tautology({"0-", "1-", "-1"});
  EXPECT_TRUE(tautology.equation.reduce(SetSelector::Both));
  EXPECT_EQ(tautology.equation.offCount(), 0);
}

TEST(Equation, OrdersTermsByCommonColumns) {
  const struct {
    Texts chain, ordered;
  } table[] = {
      {{"1---", "11--", "--11"}, {"11--", "1---", "--11"}},
      {{"----", "1---", "----", "--11"}, {"--11", "1---", "----", "----"}},
      {{"1-----", "--11--", "0-----", "---11-", "-----1"},
       {"--11--", "---11-", "1-----", "0-----", "-----1"}},
  };
  for (const auto& row : table) {
    Bench bench(row.chain);
    bench.equation.orderTerms();
    EXPECT_EQ(bench.on(), row.ordered);
  }
}

/// The order for cutting by counting all overlaps anew for each choice.
Texts orderPlainly(Texts left) {
  Texts result;
  std::string working;  // '1' for each column that takes part
  const auto addColumns = [&](const std::string& term) {
    for (std::size_t c = 0; c < term.size(); ++c) {
      if (term[c] != '-') working[c] = '1';
    }
  };
  const auto overlap = [&](const std::string& term) {
    int count = 0;
    for (std::size_t c = 0; c < term.size(); ++c) count += working[c] == '1' && term[c] != '-';
    return count;
  };
  working.assign(left[0].size(), '1');
  while (!left.empty()) {
    const auto best = std::ranges::max_element(left, {}, overlap);  // the first of the greatest
    if (overlap(*best) == 0) {
      for (const std::string& term : left) addColumns(term);
      if (std::ranges::all_of(left, [&](const std::string& t) { return overlap(t) == 0; })) break;
      continue;
    }
    if (result.empty()) working.assign(working.size(), '0');
    addColumns(*best);
    result.push_back(*best);
    left.erase(best);
  }
  result.insert(result.end(), left.begin(), left.end());
  return result;
}

TEST(Equation, OrdersTermsAsAPlainCountDoes) {
  std::mt19937 random(28);
  for (int round = 0; round < 500; ++round) {
    const std::size_t width = 1 + random() % (round % 3 == 0 ? 80 : 8);
    Texts chain(1 + random() % 12, std::string(width, '-'));
    for (std::string& term : chain) {
      for (char& c : term) c = random() % width < 2 ? "01"[random() % 2] : '-';
    }
    Bench bench(chain);
    bench.equation.orderTerms();
    ASSERT_EQ(bench.on(), orderPlainly(chain)) << "round " << round;
  }
}

TEST(Equation, SubstitutesANode) {
  Bench bench({"1--", "-1-", "--1"}, {"000"});
  const TermChain chain = bench.equation.onSet();
  const TermChain some(chain.begin(), chain.begin() + 2);
  EXPECT_FALSE(bench.equation.substituteNode(some, 3, Polarity::None, true));
  EXPECT_EQ(bench.on().size(), 3U);
  bench.terms.appendColumns(1);
  EXPECT_TRUE(bench.equation.substituteNode(some, 3, Polarity::Inverted, false));
  EXPECT_EQ(bench.on(), Texts({"--1-", "---0"}));
  EXPECT_EQ(bench.off(), Texts());
  EXPECT_FALSE(bench.equation.substituteNode(some, 3, Polarity::None, false));
  Bench twice({"-1-", "-1-", "1--", "0--", "1--"}, {});
  const TermChain all = twice.equation.onSet();
  const TermChain two = {all[2], all[0]};
  twice.terms.appendColumns(1);
  EXPECT_TRUE(twice.equation.substituteNode(two, 3, Polarity::None, false));
  EXPECT_EQ(twice.on(), Texts({"-1--", "0---", "1---", "---1"}));
}

// Four terms without a column in common: 4096 terms would say where they are 0.
TEST(Equation, LeavesAloneWhatWouldBeDropped) {
  Texts terms(4, std::string(32, '-'));
  for (std::size_t i = 0; i < 32; ++i) terms[i / 8][i] = '1';
  Bench bench(terms);
  EXPECT_TRUE(bench.equation.reduceForSmaller(SetSelector::Both));
  EXPECT_EQ(bench.off(), Texts());
  EXPECT_TRUE(bench.equation.reduce(SetSelector::Both));
  EXPECT_EQ(bench.equation.offCount(), 4096);
}

TEST(Equation, DecomposesKnownFunctions) {
  const struct {
    Texts on, left, right;
  } table[] = {
      {{"100", "010", "001", "111"}, {"0--"}, {"-00", "-11"}},
      {{"10", "01"}, {"-0"}, {"0-"}},
      {{"11", "11"}, {"11"}, {}},  // a sum of one cube leaves nothing for the right
  };
  for (const auto& row : table) {
    Bench bench(row.on);
    const auto pair = bench.equation.decomposeXor(INT_MAX);
    ASSERT_TRUE(pair);
    EXPECT_EQ(bench.texts(pair->left.onSet()), row.left);
    EXPECT_EQ(bench.texts(pair->right.onSet()), row.right);
  }
}

/// A random Equation over 1 to 5 columns, and one more that nothing reads.
struct RandomCase {
  explicit RandomCase(std::mt19937& random) : width(1 + random() % 5), bench({}, {}, width + 1) {
    const std::size_t count = 1 + random() % 9;
    for (std::size_t i = 0; i < count; ++i) {
      Cube cube;
      for (std::size_t c = 0; c < width; ++c) cube.set(c, "01-"[random() % 3]);
      bench.equation.addOnTerm(bench.terms.term(cube));
    }
    if (random() % 3 == 0) bench.equation.polarity = Polarity::Inverted;
  }

  std::vector<bool> truth(const Equation& equation) const {
    std::vector<bool> values;
    for (unsigned point = 0; point < (1U << width); ++point) {
      values.push_back(valueAt(equation, bench.terms, point, width));
    }
    return values;
  }

  std::size_t width;
  Bench bench;
};

TEST(Equation, KeepsItsFunctionThroughEveryChangeOfForm) {
  std::mt19937 random(20240611);
  const std::function<void(Equation&)> changes[] = {
      [](Equation& e) { e.reduce(SetSelector::Both); },
      [](Equation& e) { e.reduce(SetSelector::On); },
      [](Equation& e) {
        if (e.reduce(SetSelector::Off) && e.offCount() > 0) e.keepSets(SetSelector::Off);
      },
      [](Equation& e) {
        e.reduce(SetSelector::Both);
        e.keepSets(SetSelector::Smaller);
      },
      [](Equation& e) { e.normalizePolarity(); },
      [](Equation& e) { e.orderTerms(); },
      [](Equation& e) { e.dropRepeatedTerms(); },
      [](Equation& e) {
        if (!e.reduce(SetSelector::Both) || e.offSet().empty()) return;
        e.swapSets();
        e.togglePolarity();
      },
  };
  for (int round = 0; round < 3000; ++round) {
    RandomCase test(random);
    const std::vector<bool> before = test.truth(test.bench.equation);
    Equation changed = test.bench.equation;
    changes[static_cast<std::size_t>(round) % std::size(changes)](changed);
    ASSERT_EQ(test.truth(changed), before) << "round " << round;
  }
}

TEST(Equation, PairsStandForTheFunction) {
  std::mt19937 random(19990317);
  int pairs = 0;
  for (int round = 0; round < 3000; ++round) {
    RandomCase test(random);
    Equation& equation = test.bench.equation;
    const std::vector<bool> before = test.truth(equation);
    const auto pair = equation.decomposeXor(INT_MAX);
    ASSERT_EQ(test.truth(equation), before) << "round " << round;
    if (!pair) continue;
    ++pairs;
    // A limit that the pair keeps changes nothing.
    const int terms = pair->left.onCount() + pair->right.onCount();
    const auto same = equation.decomposeXor(terms + 1);
    ASSERT_TRUE(same);
    EXPECT_EQ(same->left.onSet(), pair->left.onSet());
    EXPECT_EQ(same->right.onSet(), pair->right.onSet());
    const std::vector<bool> a = test.truth(pair->left);
    const std::vector<bool> b = test.truth(pair->right);
    for (std::size_t i = 0; i < before.size(); ++i) {
      ASSERT_EQ(a[i] != b[i], before[i]) << "round " << round;
    }
  }
  EXPECT_GT(pairs, 1000);
}

}  // namespace
}  // namespace ostrel
