// The steps in a row.
#include "run/pipeline.h"

#include <gtest/gtest.h>
#include <sstream>

#include "fil/pla_writer.h"
#include "support/read_text.h"

namespace ostrel {
namespace {

TEST(Pipeline, StopsBehindAStepAndGoesOn) {
  const Reading reading = readText(
      "#$ PINS 4 a b c Y\n#$ NODES 1 N\n.type fr\n.i 4\n.o 2\n.ilb a b c N\n.ob Y N\n.p 3\n"
      "1--1 1~\n--1- 1~\n-1-- ~1\n");
  const auto textOf = [](const ostrel::Run& run) {
    std::ostringstream text;
    writePla(run.target, text, "today");
    return text.str();
  };
  ostrel::Run whole(reading.file);
  EXPECT_EQ(runPipeline(whole), Status::Ok);
  ostrel::Run halted(reading.file);
  EXPECT_EQ(runPipeline(halted, "normalize polarity"), Status::Ok);
  EXPECT_NE(halted.design.find("N"), nullptr);
  EXPECT_EQ(runPipeline(halted, "remove dead nodes"), Status::Ok);
  EXPECT_LT(halted.stepsDone, whole.stepsDone);
  EXPECT_EQ(runPipeline(halted), Status::Ok);
  EXPECT_EQ(textOf(halted), textOf(whole));
}

}  // namespace
}  // namespace ostrel
