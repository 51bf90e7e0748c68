// --lossless: where the told steps lose nothing it writes their bytes, and where they do it keeps
// what they would lose.
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

#include "support/built_design.h"
#include "support/checked_run.h"

namespace ostrel {
namespace {

std::vector<std::string> wordsIn(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// A file: pins, nodes, inputs, outputs, and rows with a comma between two.
struct Text {
  const char *pins, *nodes, *type, *inputs, *outputs, *rows;

  std::string text() const {
    const auto counted = [](const char* names) {
      return std::to_string(wordsIn(names).size()) + " " + names + "\n";
    };
    std::string lines = rows;
    std::ranges::replace(lines, ',', '\n');
    return std::string("#$ PINS ") + counted(pins) + "#$ NODES " + counted(nodes) + ".type " +
           type + "\n.i " + std::to_string(wordsIn(inputs).size()) + "\n.o " +
           std::to_string(wordsIn(outputs).size()) + "\n.ilb " + inputs + "\n.ob " + outputs +
           "\n.p 99\n" + lines + "\n.end\n";
  }
};

TEST(Lossless, ChoosesAnotherWayOnlyWhereTheToldOneLosesSomething) {
  const struct {
    const char* question;
    Text file;
    const char* words;
    const char* kept;  // the note, where something would be lost
  } table[] = {
      {"an enable of two terms that is always on",
       {"A Y", "", "f", "A", "Y Y.OE", "1 11,0 01"},
       "-oe off",
       ""},
      {"rows of 0 that rows of 1 deny",
       {"A B Y", "", "fr", "A B", "Y Y.OE", "1- 11,11 10,0- 01"},
       "-oe off",
       ""},
      {"an enable that can be off",
       {"A B Y", "", "f", "A B", "Y Y.OE", "1- 10,-1 11"},
       "-oe off",
       "Y.OE has its missing set worked out"},
      {"a constant that --minimize finds, and a node that is dead then",
       {"A B Q", "N", "f", "A B N", "Q.D Q.C N", "1-- 100,--1 010,--0 010,11- 001"},
       "-ck off --minimize",
       ""},
      {"a constant that nobody else finds",
       {"A B Q", "", "f", "A B", "Q.D Q.C", "1- 11,0- 01"},
       "-ck off",
       "Q.C has its missing set worked out"},
      {"a dead node that only its own OFF set reads",
       {"A B Y", "N", "fr", "A B N", "Y N", "1-- 1~,11- ~1,10- ~1,0-1 00"},
       "-split 0",
       ""},
      {"an inner column reads a pin that can be off",
       {"A B C Y Q", "", "f", "A B C Y.FB", "Y Y.OE Q.D Q.AR", "1--- 1001,-1-- 1001,--1- 0110"},
       "-split 0",
       ""},
      {"its pin reads it",
       {"A B C Y Q", "", "f", "A B C Y", "Y Y.OE Q.D Q.AR", "1--- 1001,-1-- 1001,--1- 0110"},
       "-split 0",
       "Y can be off and serves no other function"},
      {"a register that is inverted twice",
       {"A B C D Q", "", "fr", "A B C D", "Q.D Q.AR",
        "1--- 01,-1-- 00,--1- 00,---1 00,0000 10,0000 10,0000 10,0000 10,0000 10"},
       "-ff_inv yes -sr no -split 3",
       ""},
      {"a register that stays inverted",
       {"A B C D Q", "", "fr", "A B C D", "Q.D Q.AR",
        "1--- 01,-1-- 00,--1- 00,---1 00,0000 10,0000 10,0000 10,0000 10,0000 10"},
       "-ff_inv yes -sr no",
       "Q keeps its sense, which set and reset depend on"},
      {"a node that may be any function, in either sense",
       {"A B Y", "N", "fr", "A B", "Y N.T- N.C N.AR",
        "1- 1~~1,0- 0~~0,-- ~1~~,-- ~0~~,-1 ~~1~,-0 ~~0~"},
       "-ff_inv yes",
       ""},
      {"a clock that may be any function",
       {"A B Y Q", "", "fr", "A B", "Y Q.D Q.C", "1- 010,0- 000,-- 1~1,-1 1~1,-0 1~1"},
       "-ck min",
       ""},
      {"an enable that would read the pin that it turns off",
       {"A B Y", "", "fdr", "A B", "Y- Y.OE", "-1 11,-- 11,01 ~0,10 ~0"},
       "-oe on",
       "Y can be off"},
      {"a clock that may not",
       {"A B Y Q", "", "fr", "A B", "Y Q.D Q.C", "1- 010,-1 000,00 1~1,00 1~1,00 1~1"},
       "-ck min",
       "Y is read in the sense of its function"},
  };
  for (const auto& row : table) {
    const Reading input = readText(row.file.text());
    std::vector<std::string> words = wordsIn(row.words);
    const RunResult told = runWith(input.file, words);
    words.emplace_back("--lossless");
    const RunResult lossless = runWith(input.file, words);
    EXPECT_TRUE(judge(input.file, lossless).isProven) << row.question;
    const bool isSame = told.written == lossless.written;
    EXPECT_EQ(isSame, *row.kept == '\0') << row.question << '\n'
                                         << lossless.log << lossless.written;
    EXPECT_NE(lossless.log.find(row.kept), std::string::npos) << row.question << lossless.log;
  }
}

// The complement of the three terms has eight.
TEST(Lossless, ACutRegisterIsTriedAsAPairWhereItsOnSetIsNarrow) {
  for (const int limit : {7, 8}) {
    Options options;
    options.lossless = options.xorSynthesis = options.ffBeforeInverter = true;
    options.splitMax = limit;
    const Text file = {"A B C D E F Q", "",     "f",
                       "A B C D E F",   "Q.T-", "11---- 1,--11-- 1,----11 1"};
    Built built(file.text(), options);
    synthesizeXor(built.design, XorTurn::NewLogic);
    const Equation& logic = *built.signal("Q").slot(SlotLogic);
    EXPECT_EQ(logic.polarity == Polarity::Inverted, limit == 7) << logic.onCount();
  }
}

}  // namespace
}  // namespace ostrel
