// The choice of sets.
#include "logic/polarity.h"

#include <gtest/gtest.h>

#include "support/signal_maker.h"

namespace ostrel {
namespace {

using PolarityChoice = SignalMaker;

TEST_F(PolarityChoice, FollowsTheOptionsInItsChoiceOfSets) {
  const struct {
    const char* column;
    bool reduce, invert, ffInv, inverted;
  } table[] = {
      {".D", true, true, false, true},  // the OFF set is smaller
      {".D", false, true, false, false}, {".D", true, false, false, false},
      {"", true, false, false, true},  // combinatorial outputs may always be inverted
      {".T", true, true, true, false},   {".T", true, true, false, true},
  };
  for (const auto& row : table) {
    Options options;
    options.reduce = row.reduce;
    options.invert = row.invert;
    options.ffBeforeInverter = row.ffInv;
    setOptions(options);
    Signal& signal = make();
    add(signal, row.column, {"1---", "-1--"}, {"00--"});
    choosePolarity(signal);
    EXPECT_EQ(signal.slot(SlotLogic)->polarity == Polarity::Inverted, row.inverted) << row.column;
    EXPECT_EQ(signal.slot(SlotLogic)->onCount(), row.inverted ? 1 : 2);
  }
}

}  // namespace
}  // namespace ostrel
