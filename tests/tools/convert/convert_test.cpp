// From format to format, and what is said where nothing can be written.
#include "convert/convert.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, DesignsSurviveEveryFormat) {
  for (const std::string& design : designs) {
    for (const Format to : {Format::Tt2, Format::Pla, Format::Verilog, Format::Blif}) {
      Report report;
      const std::string text = convert(design, "in", {Format::Tt2, to, {}, true}, report);
      EXPECT_EQ(complaints(report), "") << static_cast<int>(to) << "\n" << text;
      if (to != Format::Pla) continue;
      EXPECT_EQ(text.find("X1-"), std::string::npos) << "a mark in\n" << text;
      EXPECT_EQ(text.find("\n "), std::string::npos) << "a line that goes on in\n" << text;
      EXPECT_TRUE(converted(text, Format::Pla, Format::Tt2).starts_with("#$ "));
    }
  }
}

TEST(Convert, WhatHasNoFormIsSaid) {
  const auto tt2 = [](const std::string& names, const std::string& outputs,
                      const std::string& rows) {
    const auto count = [](const std::string& list) {
      return std::to_string(splitWords(list).size());
    };
    return "#$ PINS " + count(names) + " " + names + "\n#$ NODES 1 N\n.type f\n.i 1\n.o " +
           count(outputs) + "\n.ilb a\n.ob " + outputs + "\n.p 1\n" + rows + "\n.end\n";
  };
  const std::vector<std::pair<std::string, std::string>> cases = {
      {tt2("a Q:REG_G", "Q.C Q", "1 11"), "Q: it has a clock, reset or set and is no register\n"},
      {tt2("a Q", "Q.D", "1 1"), "Q: this flip-flop has no clock\n"},
      {tt2("a Q", "Q.C", "1 1"), "Q: it has control functions and no logic\n"},
      {tt2("a Q", "Q.S Q.C", "1 11"),
       "Q: a set and reset register with data or a clock has no form in a netlist\n"},
      {tt2("a Q", "Q.L Q.LE Q.CE", "1 111"), "Q: a latch has no clock enable\n"},
      {tt2("a Q", "Q N N.OE", "1 111"), "N: a node has no pin that could be off\n"},
      {tt2("a Q", "Q.OE", "1 1"), "Q: an output enable has nothing to put out\n"},
      {tt2("a Q", "Q.J", "1 1"), "in: Q.J is not supported\n"},
      {"#$ PINS 1 a\n#$ NODES 1 N\n.type f\n.i 1\n.o 1\n.ilb a\n.ob N\n.p 1\n1 1\n.end\n",
       "no output and no register is left, and a module needs one\n"},
      {"#$ PINS 1 a\n.i 1\n.o 1\n.ilb a\n.ob a\n.p 1\n1 1 1\n.end\n",
       "in:7: a row of 3 characters, and .i and .o make 2\n"}};
  for (const auto& [text, words] : cases) {
    EXPECT_EQ(converted(text, Format::Tt2, Format::Verilog), words) << text;
  }
}

// x as an input of a gate, as a bit of a table and as a port; what agrees under both values is
// known.
TEST(Convert, UnknownBitsStayOpen) {
  const std::string text = jsonText("input a=2;output y=3;output z=4;output k=x",
                                    "$_MUX_ A=2 B=x S=2 Y=3;$lut:x011 A=2,2 Y=4");
  const std::string tt2 = converted(text, Format::Json, Format::Tt2);
  EXPECT_NE(tt2.find(".type fdr\n"), std::string::npos) << tt2;
  EXPECT_NE(tt2.find("\n0 01~\n"), std::string::npos) << tt2;
  EXPECT_NE(converted(tt2, Format::Tt2, Format::Verilog).find("assign y = 1'b0;"),
            std::string::npos);
}

}  // namespace
}  // namespace ostrel::convert
