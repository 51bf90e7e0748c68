// The nodes of control functions.
#include <gtest/gtest.h>

#include "design/passes.h"
#include "support/built_design.h"

namespace ostrel {
namespace {

TEST(ControlNodes, ServeExactlyTheirTerms) {
  Built built(
      "#$ PINS 7 a b c P Q R S\n.i 3\n.o 8\n.ilb a b c\n"
      ".ob P.D P.AR Q.D Q.AR R.D R.AR S.D S.AR\n.p 5\n"
      "--1 1~1~1~1~\n1-- ~1~~~1~~\n-1- ~1~1~1~~\n1-- ~~~1~~~1\n--1 ~~~~~1~~\n1-- ~~~~~~~1\n");
  splitControlEquations(built.design);
  EXPECT_EQ(built.terms("P_0", SlotLogic), Terms({"1----", "-1---"}));
  EXPECT_EQ(built.terms("P", SlotReset), Terms({"---1-"}));
  EXPECT_EQ(built.terms("Q", SlotReset), Terms({"---1-"}));  // the same terms in another order
  EXPECT_EQ(built.terms("R", SlotReset), Terms({"----1"}));  // those and one more
  EXPECT_EQ(built.terms("R_0", SlotLogic), Terms({"1----", "-1---", "--1--"}));
  EXPECT_EQ(built.terms("S", SlotReset), Terms({"1----"}));  // one term that was given twice
  EXPECT_EQ(built.design.columns().size(), 5U);
}

TEST(ControlNodes, TakeASignalThatComputesTheFunction) {
  const struct {
    const char* column;
    const char* literal;
  } table[] = {{"Y", "---1"}, {"Y-", "---0"}};
  for (const auto& row : table) {
    Built built("#$ PINS 5 a b c P Y\n.i 3\n.o 3\n.ilb a b c\n.ob P.D P.AR " +
                std::string(row.column) + "\n.p 3\n--1 1~~\n1-- ~11\n-1- ~11\n");
    splitControlEquations(built.design);
    EXPECT_EQ(built.terms("P", SlotReset), Terms({row.literal}));
    EXPECT_EQ(built.design.find("P_0"), nullptr);
  }
}

}  // namespace
}  // namespace ostrel
