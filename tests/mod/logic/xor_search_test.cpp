// How far the wider search for a pair goes.
#include <gtest/gtest.h>

#include "logic/xor_operands.h"
#include "support/signal_maker.h"

namespace ostrel {
namespace {

using XorSearch = SignalMaker;

TEST_F(XorSearch, StopsWhereASignalKeepsItsSense) {
  Diligence diligence;
  EXPECT_FALSE(synthesizeXorWidely(make(), diligence)) << "no function";
  const std::vector<std::string> wide = {"-0--", "1100", "01-1", "00--"};  // no pair at first sight
  const struct {
    std::vector<std::string> on, off;
    Polarity declared;
    bool ffInv, isTaken;
  } table[] = {{wide, {}, Polarity::None, false, true},
               {wide, {}, Polarity::None, true, true},
               {wide, {}, Polarity::Inverted, false, false},
               {{}, wide, Polarity::None, false, true},  // its column has a mark
               {{}, wide, Polarity::None, true, false}};
  for (const auto& row : table) {
    Options options;
    options.ffBeforeInverter = row.ffInv;
    setOptions(options);
    Signal& signal = make(RegisterType::None, row.declared);
    add(signal, row.on.empty() ? "-" : "", row.on, row.off);
    EXPECT_EQ(synthesizeXorWidely(signal, diligence), row.isTaken) << row.ffInv;
    EXPECT_EQ(signal.slot(SlotLogic) == nullptr, row.isTaken);
  }
}

}  // namespace
}  // namespace ostrel
