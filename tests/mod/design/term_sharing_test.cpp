// Groups of terms that several Equations share.
#include "design/term_sharing.h"

#include <gtest/gtest.h>

#include "support/built_design.h"

namespace ostrel {
namespace {

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

}  // namespace
}  // namespace ostrel
