// Names that another format can't say.
#include "convert/model/names.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, NamesComeBack) {
  const std::string text = jsonText("input A=2;input a=3;input always=4,5;output x.y=6",
                                    "$lut:1000000000000000 A=2,3,4,5 Y=6");
  const std::string tt2 = converted(text, Format::Json, Format::Tt2);
  EXPECT_NE(tt2.find("#$ PINS 5 A a_2 always[0] always[1] x_y\n"), std::string::npos) << tt2;
  const std::string verilog = converted(tt2, Format::Tt2, Format::Verilog);
  EXPECT_EQ(verilog.find(
                "module m(\n  input A,\n  input a,\n  input [1:0] \\always ,\n  output \\x.y \n);\n"
                "  assign \\x.y  = A & a & \\always [0] & \\always [1];\n"),
            0U)
      << verilog;
  // Lines that are none of ours are passed on; a width that no file needs is not believed.
  KeptNames kept;
  readKeptNames(
      "#$ PROPERTY convert name a_2 a%20%zz\n#$ PROPERTY convert port input d 999999999 0\n"
      "#$ PROPERTY speed 7",
      kept);
  EXPECT_EQ(kept.original("a_2"), "a %zz");
  EXPECT_EQ(kept.ports.size(), 0U);
  EXPECT_EQ(kept.otherLines.size(), 2U);
}

}  // namespace
}  // namespace ostrel::convert
