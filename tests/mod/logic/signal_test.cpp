// The slots of a Signal.
#include "logic/signal.h"

#include <gtest/gtest.h>

#include "support/signal_maker.h"

namespace ostrel {
namespace {

using Signals = SignalMaker;

TEST_F(Signals, MovesASetToTheResetWithItsTwinExtension) {
  Signal& signal = make();
  add(signal, ".AR", {"1---"});
  signal.swapSlots(SlotReset, SlotSet);
  EXPECT_EQ(signal.slot(SlotReset), nullptr);
  EXPECT_EQ(signal.slot(SlotSet)->extension, Extension::AP);
  add(signal, ".RE", {"-1--"});
  signal.swapSlots(SlotReset, SlotSet);  // with both filled the extensions stay where they are
  EXPECT_EQ(signal.slot(SlotReset)->extension, Extension::RE);
  EXPECT_EQ(signal.slot(SlotSet)->extension, Extension::AP);
  EXPECT_EQ(terms_.cube(signal.slot(SlotSet)->onSet().front()).text(4), "-1--");
}

}  // namespace
}  // namespace ostrel
