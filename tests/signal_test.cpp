// One Signal: where an output column goes, and the decisions that depend on options.
#include <gtest/gtest.h>

#include "logic/collapse.h"
#include "logic/columns.h"
#include "logic/polarity.h"
#include "logic/xor_operands.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// A Signal over columns of its own, whose Equations are given as texts.
class SignalTest : public testing::Test {
 protected:
  ~SignalTest() override { setOptions({}); }

  Signal& make(RegisterType type = RegisterType::None, Polarity polarity = Polarity::None) {
    PlaName record;
    record.base = "S";
    record.registerType = type;
    record.polarity = polarity;
    signals_.push_back(std::make_unique<Signal>(terms_, record, false));
    return *signals_.back();
  }

  Status add(Signal& signal, const std::string& word, const std::vector<std::string>& on = {"1---"},
             const std::vector<std::string>& off = {}) {
    const PlaName name = PlaName::parse("S" + word, standardConsole());
    PlaFile file;
    file.type = PlaType::fr;
    file.table(NameKind::Output).records = {name};
    ColumnSets sets;
    for (const std::string& text : on) sets.on.push_back(terms_.term(Cube(text)));
    for (const std::string& text : off) sets.off.push_back(terms_.term(Cube(text)));
    return readColumn(signal, file, 0, sets);
  }

  TermTable terms_{4};
  std::vector<std::unique_ptr<Signal>> signals_;
};

TEST_F(SignalTest, PutsColumnsIntoSlots) {
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

TEST_F(SignalTest, KnowsWhatCountsAsLogic) {
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

TEST_F(SignalTest, MovesASetToTheResetWithItsTwinExtension) {
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

TEST_F(SignalTest, TakesAPairOnlyIfItIsShorter) {
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

TEST_F(SignalTest, FollowsTheOptionsInItsChoiceOfSets) {
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

TEST_F(SignalTest, RepeatsAColumnInTheSameSense) {
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

TEST_F(SignalTest, TakesOverAPairWithItsInversions) {
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

}  // namespace
}  // namespace ostrel
