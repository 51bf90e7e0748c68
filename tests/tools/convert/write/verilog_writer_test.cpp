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
    EXPECT_NE(text.find(block), std::string::npos) << cell << "\n" << text;
    EXPECT_EQ(converted(jsonText(ports, cell), Format::Json, Format::Blif).find(".model m\n"), 0U)
        << cell;
  }
}

}  // namespace
}  // namespace ostrel::convert
