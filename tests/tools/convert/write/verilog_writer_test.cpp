// The shape of what is written.
#include "convert/write/verilog_writer.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, RegistersBecomeAlwaysBlocks) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"$_DFF_N_ C=2 D=3 Q=9", "  always @(negedge c)\n    q <= d;\n"},
      {"$_DFFE_PN_ C=2 D=3 E=4 Q=9", "  always @(posedge c)\n    if (~e) q <= d;\n"},
      {"$_DFF_PP1_ C=2 D=3 R=5 Q=9",
       "  always @(posedge c or posedge r)\n    if (r) q <= 1'b1;\n    else q <= d;\n"},
      {"$_DFFSRE_PNPP_ C=2 D=3 E=4 R=5 S=6 Q=9",
       "  always @(posedge c or posedge r or negedge s)\n    if (r) q <= 1'b0;\n"
       "    else if (~s) q <= 1'b1;\n    else if (e) q <= d;\n"},
      {"$_DLATCH_PN0_ D=3 E=4 R=5 Q=9",
       "  always @(*)\n    if (~r) q <= 1'b0;\n    else if (e) q <= d;\n"},
      {"$_SR_PN_ S=6 R=5 Q=9",
       "  always @(*)\n    if (~r) q <= 1'b0;\n    else if (s) q <= 1'b1;\n"}};
  const std::string ports = "input c=2;input d=3;input e=4;input r=5;input s=6;output q=9";
  for (const auto& [cell, block] : cases) {
    const std::string text = converted(jsonText(ports, cell), Format::Json, Format::Verilog);
    EXPECT_NE(text.find("  initial q = 0;\n" + block), std::string::npos) << cell << "\n" << text;
    EXPECT_EQ(converted(jsonText(ports, cell), Format::Json, Format::Blif).find(".model m\n"), 0U)
        << cell;
  }
}

// yosys takes a register that nothing reads away unless it is told, and one whose power-up value it
// doesn't know for whatever it likes.
TEST(Convert, RegisteredNodesStayAndComeUpAsZero) {
  const std::string text =
      jsonText("input c=2;input d=3;output y=4", "$_NOT_ A=3 Y=4;$_DFF_P_ C=2 D=3 Q=5");
  EXPECT_NE(converted(text, Format::Json, Format::Verilog).find("  (* keep *) reg n5 = 0;\n"),
            std::string::npos);
  EXPECT_NE(converted(text, Format::Json, Format::Blif).find(".latch d n5 re c 0\n.attr keep 1\n"),
            std::string::npos);
}

// yosys cuts loops where it likes. A port, or a wire that says keep, carries the state all the
// same.
TEST(Convert, LoopsKeepTheNamesOfTheirStates) {
  const std::string loop = "$_NOT_ A=9 Y=4;$lut:11101000 A=2,9,8 Y=9;$_OR_ A=3 B=9 Y=8";
  EXPECT_NE(converted(jsonText("input a=2;input b=3;output y=4", loop), Format::Json, Format::Tt2)
                .find(".ilb a b y\n.ob y\n.phase 1\n.p 2\n0-1 1\n-01 1\n"),
            std::string::npos)
      << converted(jsonText("input a=2;input b=3;output y=4", loop), Format::Json, Format::Tt2);
  const std::string inner =
      converted(jsonText("input a=2;input b=3;output y=7", loop + ";$_AND_ A=2 B=4 Y=7",
                         R"("mine":{"bits":[4],"attributes":{}})"),
                Format::Json, Format::Verilog);
  EXPECT_NE(inner.find("  (* keep *) wire mine;\n"), std::string::npos) << inner;
}

}  // namespace
}  // namespace ostrel::convert
