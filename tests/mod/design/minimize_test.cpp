// Full minimisation as a pass.
#include <gtest/gtest.h>

#include "support/checked_run.h"
#include "support/read_text.h"

namespace ostrel {
namespace {

TEST(MinimizePass, TellsOfFunctionsBeyondItsEffort) {
  for (const int width : {512, 513}) {
    std::string names;
    for (int c = 0; c < width; ++c) names += " x" + std::to_string(c);
    const std::string columns = std::to_string(width);
    const Reading reading =
        readText("#$ PINS " + std::to_string(width + 1) + names + " Y\n.i " + columns +
                 "\n.o 1\n.ilb" + names + "\n.ob Y\n.p 1\n" +
                 std::string(static_cast<std::size_t>(width), '1') + " 1\n.end\n");
    const RunResult run = runWith(reading.file, {"-input", "-", "--minimize"});
    const bool isTold = run.log.find("1 functions are beyond the effort") != std::string::npos;
    EXPECT_EQ(isTold, width > 512) << run.log;
  }
}

// s0.X1 is 0, inverted, and 0 has no ON term to keep.
TEST(MinimizePass, LeavesAHalfThatIsZero) {
  const Reading reading =
      readText("#$ PINS 3 A B Y\n.i 2\n.o 3\n.ilb A B\n.ob Y.X1- Y.X2 Y.AR\n.p 1\n-- ~1~\n.end\n");
  const RunResult run = runWith(
      reading.file, {"-ff_inv", "yes", "-sr", "no", "-split", "8", "--minimize", "--lossless"});
  EXPECT_NE(run.written.find(".ob Y.X1- Y.X2 Y.AR\n"), std::string::npos) << run.written;
}

}  // namespace
}  // namespace ostrel
