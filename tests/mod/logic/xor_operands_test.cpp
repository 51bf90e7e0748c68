// Which functions become exclusive-or pairs, and how a pair is laid out.
#include "logic/xor_operands.h"

#include <gtest/gtest.h>

#include "support/built_design.h"
#include "support/signal_maker.h"

namespace ostrel {
namespace {

using XorOperands = SignalMaker;

TEST_F(XorOperands, LaysOutAPairByTheCostOfItsSets) {
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

TEST_F(XorOperands, TakesAPairOnlyIfItIsShorter) {
  const struct {
    std::vector<std::string> on, off;
    Polarity polarity;
    bool taken, tried;
  } table[] = {
      {{"100-", "010-", "001-", "111-"}, {}, Polarity::None, true, true},
      {{"100-", "010-", "001-", "111-"}, {}, Polarity::Inverted, false, false},
      {{"11--", "--11"}, {}, Polarity::None, false, true},  // two terms
      {{"1---", "-1--", "--1-"}, {"000-", "0000"}, Polarity::None, false, true},
  };
  for (const auto& row : table) {
    Signal& signal = make(RegisterType::None, row.polarity);
    add(signal, ".D", row.on, row.off);
    EXPECT_EQ(synthesizeXor(signal), row.taken);
    EXPECT_EQ(signal.xorTried, row.tried);
    EXPECT_EQ(signal.slot(SlotLogic) == nullptr, row.taken);
    if (!row.taken) continue;
    EXPECT_EQ(signal.slot(SlotXorLeft)->extension, Extension::D);
  }
}

}  // namespace
}  // namespace ostrel
