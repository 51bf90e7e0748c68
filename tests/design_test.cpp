// Decisions inside the design that the written file shows only in part.
#include <gtest/gtest.h>
#include <sstream>

#include "design/passes.h"
#include "design/term_sharing.h"
#include "fil/pla_reader.h"
#include "logic/xor_operands.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// A design built from a text, with options of its own.
struct Built {
  explicit Built(const std::string& text, const Options& values = {}) : design(read(text)) {
    setOptions(values);
    status = build(design);
  }
  ~Built() { setOptions({}); }

  const PlaFile& read(const std::string& text) {
    std::istringstream stream(text);
    std::ostringstream ignored;
    EXPECT_EQ(readPla(stream, {ignored, ignored}, file), Status::Ok) << ignored.str();
    return file;
  }

  Signal& signal(const std::string& name) { return *design.find(name); }

  std::vector<std::string> terms(const std::string& name, Slot slot) {
    std::vector<std::string> texts;
    for (const Term term : signal(name).slot(slot)->onSet()) {
      texts.push_back(design.terms().cube(term).text(design.terms().width()));
    }
    return texts;
  }

  PlaFile file;
  Design design;
  Status status = Status::Ok;
};

using Terms = std::vector<std::string>;

const char* const shareable =
    "#$ PINS 6 a b c d X Y\n.i 4\n.o 2\n.ilb a b c d\n.ob X Y\n.p 4\n"
    "1--- 11\n-1-- 11\n--1- 10\n---1 01\n";

TEST(TermSharing, SharesWhatIsWorthANode) {
  Options options;
  options.shareMin = 2;
  options.splitMax = 16;
  options.clusterSize = 3;
  Built worth(shareable, options);
  TermSharing search(worth.design, 2);
  EXPECT_EQ(search.candidateCount(), 2);
  EXPECT_TRUE(search.shareOneGroup());
  EXPECT_EQ(worth.terms("com_0", SlotLogic), Terms({"1----", "-1---"}));
  EXPECT_EQ(worth.terms("X", SlotLogic), Terms({"--1--", "----1"}));
  EXPECT_EQ(worth.terms("Y", SlotLogic), Terms({"---1-", "----1"}));
  EXPECT_FALSE(worth.signal("X").reduced);
  EXPECT_FALSE(search.shareOneGroup());

  options.clusterSize = 4;  // 2 terms in 2 Equations are no more than a cluster
  Built tooSmall(shareable, options);
  EXPECT_FALSE(TermSharing(tooSmall.design, 2).shareOneGroup());
  EXPECT_EQ(tooSmall.design.find("com_0"), nullptr);
}

TEST(Signal, LaysOutAPairByTheCostOfItsSets) {
  // Rows are given as ON and OFF counts of both operands; the terms themselves don't matter.
  const struct {
    int onLeft, offLeft, onRight, offRight;
    std::size_t left, right;  // terms afterwards
  } table[] = {
      {1, 0, 4, 0, 1, 4},                      // a single term stands on the left already
      {4, 0, 1, 0, 1, 4},                      // it moves there
      {4, 0, 2, 0, 4, 2},                      // otherwise the longer operand stands there
      {2, 0, 4, 0, 4, 2}, {3, 1, 3, 2, 1, 2},  // a cluster is worth the OFF sets
      {2, 2, 2, 2, 2, 2}, {3, 0, 3, 2, 3, 3},  // a missing set wins nothing
  };
  for (const auto& row : table) {
    std::string rows;
    int count = 0;
    const auto add = [&](int n, const char* marks) {
      for (int i = 0; i < n; ++i, ++count) {
        std::string term = "------";
        for (std::size_t bit = 0; bit < 6; ++bit) term[bit] = ((count >> bit) & 1) != 0 ? '1' : '0';
        rows += term + " " + marks + "\n";
      }
    };
    add(row.onLeft, "1~");
    add(row.offLeft, "0~");
    add(row.onRight, "~1");
    add(row.offRight, "~0");
    Built built("#$ PINS 7 a b c d e f Y\n.type fr\n.i 6\n.o 2\n.ilb a b c d e f\n.ob Y.X1 Y.X2\n" +
                rows);
    orderXorPair(built.signal("Y"));
    EXPECT_EQ(built.terms("Y", SlotXorLeft).size(), row.left) << rows;
    EXPECT_EQ(built.terms("Y", SlotXorRight).size(), row.right) << rows;
    EXPECT_EQ(built.signal("Y").slot(SlotXorLeft)->xorRole, XorHalf::Left);
  }
}

TEST(Signal, ChecksItsLimits) {
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

TEST(Design, NamesNodesAsShortAsTheyFit) {
  Built built("#$ PINS 3 A abc_0 " + std::string(40, 'n') + "\n.i 1\n.o 2\n.ilb A\n.ob abc_0 " +
              std::string(40, 'n') + "\n1 11\n");
  const std::vector<Term> term = {built.design.terms().term(Cube("1"))};
  EXPECT_EQ(built.design.createNodeFrom(term, "ABC").name, "ABC_1");
  EXPECT_EQ(built.design.createNodeFrom(term, std::string(40, 'n')).name,
            std::string(31, 'n') + "_0");
  std::string last;
  for (int i = 1; i <= 1000; ++i) {
    last = built.design.createNodeFrom(term, std::string(40, 'n')).name;
  }
  EXPECT_EQ(last, std::string(30, 'n') + "_1000");
}

TEST(Design, CountsReadersAndShrinksItsColumns) {
  Built built(
      "#$ PINS 3 A B Y\n#$ NODES 2 dead n\n.i 5\n.o 3\n.ilb A dead B n n.FB\n.ob dead Y n\n.p 3\n"
      "1---- 110\n1-1-- 001\n---11 010\n");
  const Readers readers = countReaders(built.design);
  EXPECT_EQ(fanoutOf(built.signal("A"), readers), 3);
  EXPECT_EQ(fanoutOf(built.signal("n"), readers), 2);  // one reader, two columns
  EXPECT_EQ(fanoutOf(built.signal("dead"), readers), 0);
  removeDeadNodes(built.design, readers);
  EXPECT_EQ(built.design.find("dead"), nullptr);
  EXPECT_EQ(built.terms("Y", SlotLogic), Terms({"1---", "--11"}));
  EXPECT_EQ(built.signal("B").pinColumn, 1);
  EXPECT_EQ(built.signal("n").feedbackColumn, 3);
  EXPECT_EQ(built.signal("n").pinColumn, 2);
}

TEST(TermTable, GivesEqualTermsEqualHandles) {
  TermTable terms(70);
  const Term far = terms.term(Cube(std::string(69, '-') + "1"));
  const Term near = terms.term(Cube("1" + std::string(69, '-')));
  const Term both = terms.term(Cube("1" + std::string(68, '-') + "1"));
  terms.appendColumns(100);
  EXPECT_EQ(terms.term(Cube("1" + std::string(169, '-'))), near);
  ColumnSet gone;
  gone.insert(69);
  const std::vector<Term> renumbered = terms.deleteColumns(gone);
  EXPECT_EQ(renumbered[near.index], renumbered[both.index]);
  EXPECT_EQ(terms.cube(renumbered[far.index]).literalCount(), 0U);
  EXPECT_EQ(terms.width(), 169U);
  terms.invertColumns([] {
    ColumnSet first;
    first.insert(0);
    return first;
  }());
  EXPECT_EQ(terms.term(Cube("0")), renumbered[near.index]);
}

}  // namespace
}  // namespace ostrel
