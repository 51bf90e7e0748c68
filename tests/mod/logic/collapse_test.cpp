// Signals that repeat another one.
#include "logic/collapse.h"

#include <gtest/gtest.h>

#include "support/built_design.h"
#include "support/signal_maker.h"

namespace ostrel {
namespace {

using Collapse = SignalMaker;

TEST_F(Collapse, RepeatsAColumnInTheSameSense) {
  Signal& plain = make();
  Signal& inverted = make(RegisterType::REG_D, Polarity::Inverted);
  const std::vector<InputColumn> columns = {{&plain, Extension::None},
                                            {&inverted, Extension::Q},
                                            {&inverted, Extension::FB},
                                            {&plain, Extension::Q}};
  const struct {
    std::vector<std::string> on, off;
    int column;
  } table[] = {
      {{"1---"}, {}, 0},  {{"0---"}, {}, -1},         {{}, {"0---"}, 0}, {{}, {"1---"}, -1},
      {{"-1--"}, {}, -1}, {{"-0--"}, {}, 1},          {{"--1-"}, {}, 2}, {{"11--"}, {}, -1},
      {{"----"}, {}, -1}, {{"1---", "-1--"}, {}, -1},
  };
  for (const auto& row : table) {
    Signal& signal = make();
    add(signal, "", row.on, row.off);
    const auto column = singleLiteral(signal, columns, terms_);
    EXPECT_EQ(column ? static_cast<int>(*column) : -1, row.column);
  }
}

TEST_F(Collapse, TakesOverAPairWithItsInversions) {
  Signal& source = make(RegisterType::None, Polarity::Inverted);
  add(source, ".X1", {"1---"});
  add(source, ".X2", {"-1--", "--1-"});
  const struct {
    Polarity before, after;
  } table[] = {{Polarity::None, Polarity::Inverted},
               {Polarity::Inverted, Polarity::Positive},
               {Polarity::Positive, Polarity::Inverted}};
  for (const auto& row : table) {
    Signal& reader = make(RegisterType::None, row.before);
    add(reader, ".D-", {"---1"});
    copyLogic(source, reader);
    EXPECT_EQ(reader.polarity, row.after);
    EXPECT_EQ(reader.slot(SlotLogic), nullptr);
    EXPECT_EQ(bestTermCount(reader), 3);
    EXPECT_EQ(reader.slot(SlotXorRight)->extension, Extension::D);
    EXPECT_EQ(reader.slot(SlotXorRight)->polarity, Polarity::Inverted);
  }
}

TEST_F(Collapse, CopiesALongNodeToOneReaderOnly) {
  const struct {
    int rightTerms, cluster;
    bool second, copied;
  } table[] = {
      {4, 5, true, true},  {5, 5, true, false}, {5, 5, false, true},
      {4, 1, true, true},  // a cluster of one term stands for one of five
      {5, 1, true, false}, {2, 2, true, false}, {1, 2, true, true},
  };
  for (const auto& row : table) {
    std::string text = "#$ PINS 9 a b c d e f Y Z W\n#$ NODES 1 n\n.i 7\n.o 5\n";
    text += ".ilb a b c d e f n\n.ob Y Z W n.X1 n.X2\n.p 9\n------1 1~~~~\n1------ ~~~1~\n";
    text += row.second ? "------1 ~1~~~\n" : "-1----- ~1~~~\n";
    for (int i = 0; i < row.rightTerms; ++i) {
      std::string term = "-------";
      term[static_cast<std::size_t>(1 + i)] = '1';
      text += term + " ~~~~1\n";
    }
    Options options;
    options.clusterSize = row.cluster;
    Built built(text, options);
    EXPECT_EQ(collapseFeedback(built.design, countReaders(built.design)), row.copied);
    EXPECT_EQ(built.signal("Y").hasXorPair(), row.copied) << text;
    EXPECT_EQ(built.signal("Z").hasXorPair(), row.copied && row.second) << text;
  }
}

}  // namespace
}  // namespace ostrel
