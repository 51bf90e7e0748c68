// Which slot an output column fills.
#include "logic/columns.h"

#include <gtest/gtest.h>

#include "support/signal_maker.h"

namespace ostrel {
namespace {

using Columns = SignalMaker;

TEST_F(Columns, PutsColumnsIntoSlots) {
  using R = RegisterType;
  const struct {
    R declared;
    std::vector<std::string> columns;
    Status last;
    R type;
    std::vector<Slot> filled;
  } table[] = {
      {R::REG_D, {""}, Status::Ok, R::COM, {SlotLogic}},
      {R::REG_D, {"", ".D"}, Status::Fatal, R::REG_D, {SlotLogic}},
      {R::None, {".AR", ".D"}, Status::Ok, R::REG_D, {SlotReset, SlotLogic}},
      {R::None, {".T", ".D"}, Status::Failed, R::REG_T, {SlotLogic}},
      {R::None, {".D", ".S"}, Status::Failed, R::REG_D, {SlotLogic}},
      {R::None, {".S", ".R"}, Status::Ok, R::REG_SR, {SlotSet, SlotReset}},
      {R::None, {".S", ".AP"}, Status::Fatal, R::REG_SR, {SlotSet}},
      {R::REG_D, {".LE", ".L"}, Status::Ok, R::REG_L, {SlotClock, SlotLogic}},
      {R::REG_L, {".D", ".AR"}, Status::Ok, R::REG_L, {SlotLogic, SlotReset}},
      {R::REG_G, {".AR"}, Status::Ok, R::REG_SR, {SlotReset}},
      {R::None, {".J"}, Status::Fatal, R::REG_JK, {}},
      {R::REG_T, {".LD"}, Status::Fatal, R::REG_T, {}},
      {R::None, {".D.X1", ".D.X2"}, Status::Ok, R::REG_D, {SlotXorLeft, SlotXorRight}},
      {R::None, {".X2", ".X2"}, Status::Fatal, R::None, {SlotXorRight}},
      {R::None,
       {".SYNC", ".SET", ".CE", ".OE", ".CP"},
       Status::Ok,
       R::REG_SR,
       {SlotReset, SlotSet, SlotClockEnable, SlotOutputEnable, SlotClock}},
  };
  for (const auto& row : table) {
    Signal& signal = make(row.declared);
    Status status = Status::Ok;
    for (const std::string& column : row.columns) status = add(signal, column);
    EXPECT_EQ(status, row.last) << row.columns.back();
    EXPECT_EQ(signal.registerType, row.type) << row.columns.back();
    for (const Slot slot : allSlots) {
      const bool filled = std::find(row.filled.begin(), row.filled.end(), slot) != row.filled.end();
      EXPECT_EQ(signal.slot(slot) != nullptr, filled) << row.columns.back() << ' ' << slot;
    }
  }
}

TEST_F(Columns, KnowsWhatCountsAsLogic) {
  Signal& off = make();
  add(off, ".OE", {}, {"----"});
  EXPECT_TRUE(off.hasNoLogic());
  EXPECT_EQ(checkLogic(off), Status::Ok);
  EXPECT_EQ(off.slot(SlotOutputEnable), nullptr);
  Signal& on = make();
  add(on, ".OE", {"----"});
  EXPECT_FALSE(on.hasNoLogic());
  EXPECT_EQ(checkLogic(on), Status::Fatal);
}

}  // namespace
}  // namespace ostrel
