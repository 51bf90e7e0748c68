// Types, phases and faults of a file.
#include "convert/read/espresso_reader.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, EspressoTypesAndPhases) {
  // The rows say 1 for a, 0 for not a b, and open for not a not b.
  const std::vector<std::pair<std::string, std::string>> cases = {{".type f", "f|1- 1"},
                                                                  {"", "fdr|1- 1|00 0|01 -"},
                                                                  {".type fr", "fdr|1- 1|00 0"},
                                                                  {".type fdr", "fdr|1- 1|00 0"}};
  for (const auto& [type, expected] : cases) {
    for (const char phase : {'1', '0'}) {
      Report report;
      const std::string text =
          ".i 2\n.o 1\n" + type + "\n.phase " + phase + "\n1- 1\n00\n0\n01 -\n.e\n";
      const Netlist netlist = readEspresso(text, "in", report);
      ASSERT_EQ(complaints(report), "");
      const Sum& sum = std::get<Function>(netlist.nets[2].driver).operands[0];
      EXPECT_EQ(sum.inverted, phase == '0');
      EXPECT_EQ(sum.on.size(), 1U);
      EXPECT_EQ(sum.second.size(), expected.starts_with("fdr") ? 1U : 0U) << type;
      EXPECT_EQ(sum.secondIs, type.find('r') == std::string::npos ? Second::Open : Second::Zero);
    }
  }
  const std::vector<std::pair<std::string, std::string>> faults = {
      {".i 2\n.o 1\n1x 1\n", "in:3: the character x in a row\n"},
      {".i 2\n.o 1\n1\n.e\n", "in:4: a row of 1 characters\n"},
      {"11 1\n", "in:1: a row in front of .i and .o\n"},
      {".i 2\n.o 1\n.phase 2\n", "in:3: .phase needs a 0 or 1 for each output\n"},
      {".i 2\n.o 1\n.mv 3\n", "in:3: the directive .mv is not known\n"},
      {".i 99999\n.o 99999\n", "in:2: too many columns\n"},
      {".i 1\n.o 1\n.ilb a\n.ob a\n1 1\n.e\n", "in:6: the name a is there twice\n"}};
  for (const auto& [text, words] : faults) {
    EXPECT_EQ(converted(text, Format::Pla, Format::Tt2), words) << text;
  }
}

}  // namespace
}  // namespace ostrel::convert
