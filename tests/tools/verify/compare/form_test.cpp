// What beside the functions has to stay.
#include "verify/compare/form.h"

#include <gtest/gtest.h>

#include "support/verdicts.h"

namespace ostrel::verify {
namespace {

TEST(Verify, JudgesTheFormOfTheOutput) {
  const std::string wide = "A B C D Y||f|A B C D|Y|1--- 1,-1-- 1,--1- 1,---1 1";
  const std::string pair = "A B C D Y||f|A B C D|Y.X1 Y.X2|1--- 1~,-1-- 1~,--1- 1~,---1 ~1";
  const std::string d = "A B Q|N|f|A B|Q.D Q.C|1- 1~,-1 ~1";
  expectAll({
      {wide, wide, "-split 4", "="},
      {wide, wide, "-split 3", "!Y: 4 terms, and the options allow 3"},
      {wide, wide, "-split 3 -xor -reduce none", "!Y: 4 terms, and the options allow 3"},
      {pair, pair, "-split 4", "="},
      {pair, pair, "-split 3 -cluster 4", "!Y: 3 terms, and the options allow 2"},
      {pair, pair, "-split 3 -cluster 5", "="},
      {d, replaced(d, "Q.D", "Q.T"), "", "!Q: the register type was REG_D and is REG_T"},
      {d, replaced(d, "B Q|", "B Q:REG_L|"), "", "!Q: the register type was REG_D and is REG_L"},
      {replaced(d, "Q.D", "Q.D.X1"), d, "", "="},  // a half alone is the function
      {d, replaced(d, "Q.D", "Q.D.X1"), "", "!Q: only one half of an XOR pair is left"},
      {pair,
       replaced(replaced(replaced(pair, "Y.X2|", "Y.X2 Y.D|"), "1~,", "1~~,"), "---1 ~1",
                "---1 ~1~"),
       "", "!Y: a plain column stands beside the XOR pair"},
      {d, replaced(d, "Q.C", "Q.CE"), "", "!Q, clock: OUTPUT has no such function"},
      {d, replaced(d, "A B Q|", "A Q|"), "", "!OUTPUT: B stands in a column but is not declared"},
      {d, replaced(d, "A B Q|", "A B Q X|"), "", "!X: the pin is not in INPUT"},
      {d, replaced(d, "A B Q|", "A B- Q|"), "", "!B: the mark of its declaration has changed"},
      {d, replaced(d, "A B Q|", "A B Q:3|"), "", "!Q: its pin number was 0 and is 3"},
      {d, replaced(d, "Q.D Q.C", "Q.D Q.D"), "", "!OUTPUT: Q.D is given a second time"},
      {d, replaced(d, "Q.C", "Q.J"), "", "!OUTPUT: Q.J is not supported"},
      {d, replaced(d, "A B Q|N", "A Q|B N"), "", "!B: the pin has become a node"},
      {"A B Y|N|f|A B N|N.D N.C Y|1-- 1~~,-1- ~1~,--1 ~~1", "A B Y||f|A B|Y|1- 1", "",
       "!N: the registered node is missing in OUTPUT"},
      {wide, "A B C D Y|M|f|A B C D M|Y M.D M.C|----1 1~~,1---- ~1~,-1--- ~~1", "",
       "!M: the new node is not combinational"},
      {wide, "A B C D Y|M|f|A B C D M|Y|1---- 1,-1--- 1,--1-- 1,---1- 1", "",
       "!M: the new node has no function"},
      {d, "A Q|N|f|A|Q.D Q.C|1 1~,1 ~1", "", "!B: the pin is missing in OUTPUT"},
      {wide, "A B C D Y|M N|f|A B C D M N|Y M N|----1- 1~~,-----1 ~1~,----1- ~~1", "",
       "new nodes of OUTPUT form a loop"},
      // A node that nothing reads is gone, and may give its name to a new one.
      {"A B Y|Y_0|f|A B|Y|11 1,00 1", "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01", "", "="},
      {"A B Y|Y_0|f|A B Y_0|Y Y_0|11- 10,00- 11", "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01",
       "", "="},
      {"A B Y|N|f|A B N|Y N|11- 10,00- 11", "A B Y|N|f|A B N|Y N|11- 10,00- 10,10- 01", "",
       "!N, logic: with"},
      // The last pin can go, although a file without pins is no input.
      {"P|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1", "", "="},
  });
  EXPECT_EQ(judge("|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1").faults.size(), 1U);
}

}  // namespace
}  // namespace ostrel::verify
