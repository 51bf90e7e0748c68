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

}  // namespace
}  // namespace ostrel
