// What a run that loses nothing makes of one Signal; the cases have the rest.
#include "logic/lossless.h"

#include <gtest/gtest.h>

#include "support/signal_maker.h"

namespace ostrel {
namespace {

using Lossless = SignalMaker;

TEST_F(Lossless, DropsEnablesThatSayNothing) {
  Options options;
  options.lossless = true;
  options.oeMode = SetSelector::Off;
  setOptions(options);
  const struct {
    std::vector<std::string> on, off;
    PlaType type;
    bool stays;
  } table[] = {{{"1---"}, {}, PlaType::f, true},
               {{"1---"}, {}, PlaType::fr, false},
               {{"1---"}, {}, PlaType::fdr, false},
               {{"1---"}, {"0---"}, PlaType::fr, true},
               {{"1---", "----"}, {}, PlaType::f, false}};
  for (const auto& row : table) {
    Signal& signal = make();
    add(signal, ".OE", row.on, row.off);
    complete(signal, row.type);
    ASSERT_EQ(signal.slot(SlotOutputEnable) != nullptr, row.stays);
    if (!row.stays) continue;
    EXPECT_EQ(signal.slot(SlotOutputEnable)->offCount(), 1);
  }
}

}  // namespace
}  // namespace ostrel
