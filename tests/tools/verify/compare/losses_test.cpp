// What a run gives up by itself is a difference that is named.
#include "verify/compare/losses.h"

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/verdicts.h"

namespace ostrel::verify {
namespace {

TEST(Verify, NamesWhatARunProbablyLost) {
  const std::string reg = "A B Q||fr|A B|Q.D Q.C|0- 0~,-1 ~0";
  expectAll({
      {reg, "A B Q||f|A B|Q.D-|0- 1", "", "!Q, clock: OUTPUT has no such function (Keeping the ON"},
      {reg, "A B Q||f|A B|Q.D- Q.C-|0- 1~,-1 ~1", "-ck min", "="},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "-ck off",
       "such function (Keeping the OFF set of a control function)"},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "",
       "!Q, clock: OUTPUT has no such function\n"},
      {"A B Y||fd|A B|Y|-- ~", "A B Y||f|A B|A|-- ~", "", "(An empty column of an `fd` file)"},
      // A clock of two terms became a literal of N, whose name mark gives the wrong sense.
      {"A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,11- ~11,00- ~11",
       "A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,--0 ~1~,11- ~~1,00- ~~1", "",
       "!Q, clock: with A=1 B=0, so OUTPUT reads N=0: INPUT says 0, OUTPUT says 1 (A control"},
      {"A B Y|N|f|A B N|Y- N.X1 N.X2|--1 1~~,1-- ~1~,-1- ~~1",
       "A B Y||f|A B|Y.X1- Y.X2-|1- 1~,-1 ~1", "", "(Folding by a reader with a mark)"},
      {"A Y Z||f|A|Y.X1 Y.X2 Y.OE Z|1 1~~1", "A Y Z||f|A|Z|1 1", "",
       "(A pair with a half that has no ON terms)"},
      // What reads a Signal with a loss shares it.
      {"A B Y Z|M|fr|A B M Y|Y M Z|1--- 1~~,-1-- 1~~,-01- 0~~,0--- ~1~,1--- ~0~,---1 ~~1,---0 ~~0",
       "A B Y Z||f|A B|Y- Z-|-0 11", "",
       "!Y, logic: with A=1 B=0: INPUT says 1, OUTPUT says 0 (Reading a node in its OFF set)\n"
       "!Z, logic: with A=1 B=0: INPUT says 1, OUTPUT says 0 (Reading a node in its OFF set)\n"},
      // Terms that P had are read at its pin, where it can be off.
      {"A B E P Q||f|A B E|P P.OE Q.D Q.C|11- 1~~1,00- 1~~1,--1 ~1~~,1-- ~~1~",
       "A B E P Q||f|A B E P.PIN|P P.OE Q.D Q.C|11-- 1~~~,00-- 1~~~,--1- ~1~~,1--- ~~1~,---1 ~~~1",
       "", "(A reused pin with an output enable)"},
      {"A C Q:REG_L||f|A C|Q.D Q.C|1- 1~,-1 ~1", "A C Q||f|A C|Q.D Q.C|1- 1~,-1 ~1", "",
       "!Q: the register type was REG_L and is REG_D (A register type that the columns don't"},
  });
}

TEST(Verify, KnowsTheLossesOfTheDecisions) {
  std::istringstream decisions(readFile(OSTREL_DECISIONS));
  std::vector<std::string> headings;
  bool isThere = false;
  std::string text;
  for (std::string line; std::getline(decisions, line);) {
    if (line.starts_with("## ")) isThere = line == "## Where a run can change a function";
    if (isThere) text += line + " ";
  }
  for (std::size_t at = 0; (at = text.find("- **", at)) != std::string::npos; ++at) {
    headings.push_back(text.substr(at + 4, text.find("**", at + 4) - at - 4));
    if (headings.back().ends_with('.')) headings.back().pop_back();
  }
  std::vector<std::string> ids;
  for (const Loss& loss : losses()) ids.emplace_back(loss.id);
  std::ranges::sort(headings);
  std::ranges::sort(ids);
  EXPECT_EQ(ids, headings);
}

}  // namespace
}  // namespace ostrel::verify
