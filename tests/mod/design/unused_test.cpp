// What goes because nothing reads it.
#include <gtest/gtest.h>

#include "support/checked_run.h"
#include "support/read_text.h"

namespace ostrel {
namespace {

TEST(Unused, NodesThatAKeptSetReadsStay) {
  const Reading reading = readText(
      "#$ PINS 3 A B Y\n#$ NODES 2 N M\n.type fr\n.i 4\n.o 3\n.ilb A B N M\n.ob Y N M\n.p 4\n"
      "1-1- 0~~\n---1 ~1~\n11-- 1~1\n01-1 1~~\n.end\n");
  const std::string log = runWith(reading.file, {"-input", "-", "--lossless"}).log;
  EXPECT_NE(log.find("N is read by a set"), std::string::npos) << log;
  EXPECT_EQ(log.find("M is read by a set"), std::string::npos) << log;
}

}  // namespace
}  // namespace ostrel
