// --strict names every word that has not the effect it seems to have, and a strict run without
// such words is a run like others; what is printed in place of a run.
#include "run/strict.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

#include "support/program.h"

namespace ostrel {
namespace {

std::string complaintsOf(const std::string& words) {
  std::istringstream stream("ostrel " + words);
  const CommandLine line = parseCommandLine(
      {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()});
  std::string all;
  for (const std::string& complaint : complaints(line)) all += complaint + "|";
  return all;
}

TEST(Strict, NamesWordsWithoutEffect) {
  const std::pair<const char*, const char*> table[] = {
      {"-input x -split 8 -xor -ck min --minimize=deep --depth 2 --report - -sr NO", ""},
      {"-inp x -splitting 0 -reduce none --factor=3 -share -clust 2", ""},
      {"-slpit x", "-slpit is no option; the nearest is -split|x belongs to no option|"},
      {"-x --lossles=1 -",
       "-x is no option; the nearest is -xor|"
       "--lossles=1 is no option; the nearest is --lossless|"
       "- is no option; the nearest is -input|"},
      {"-xor design.tt2 -ce maybe",
       "-xor takes yes or no, and design.tt2 is none|"
       "-ce takes on, off or min, and maybe is none|"},
      {"-split many -share 0",
       "-split takes a number from 0 on, and many is none|"
       "-share takes a number from 1 on, and 0 is none|"},
      {"-split 99999999999999 -clust 4x",
       "-split takes a number from 0 on, and 99999999999999 is none|"
       "-clust takes a number from 1 on, and 4x is none|"},
      {"--minimize=hard --factor= --depth=0 --depth",
       "--minimize=hard takes fast, normal or deep, and hard is none|"
       "--factor= takes a number from 1 on, and  is none|"
       "--depth=0 takes a number from 1 on, and 0 is none|--depth needs a number behind it|"},
      {"-log -nxt run.log --report",
       "-log takes run.log, with other options in between|"
       "--report needs a word behind it|"},
      {"-output -input x", "-output needs a name behind it|"},
      {"-input x @none -log /none/log",
       "@none: there is no such file|/none/log can't be opened for messages|"},
      {"-input x -err y", "y can't take messages: the run has another use for it|"}};
  for (const auto& [words, expected] : table) EXPECT_EQ(complaintsOf(words), expected) << words;
}

class OnTheConsole : public testing::Test {
 protected:
  ~OnTheConsole() override { std::filesystem::remove_all(folder_); }

  ProgramResult run(const std::string& words) {
    std::istringstream stream("ostrel " + words);
    return runIn(
        folder_, OSTREL_PROGRAM,
        {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()});
  }

  std::string folder_ = makeFolder();
};

TEST_F(OnTheConsole, StrictRunsWriteNothingOrEverything) {
  const std::string input = OSTREL_ROOT "/examples/rd53.tt2";
  const ProgramResult refused =
      run("-input " + input + " -output o.tt3 -log new.log --strict -xro -log new.log");
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.err, "ostrel: -xro is no option; the nearest is -xor\n");
  EXPECT_EQ(refused.out, "");
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/o.tt3"));
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/new.log"));
  EXPECT_EQ(run("-input " + input + " -output o.tt3 -log new.log --strict -xor").exitCode, 0);
  EXPECT_TRUE(std::filesystem::exists(folder_ + "/new.log"));
}

TEST_F(OnTheConsole, QuestionsAreAnsweredInPlaceOfARun) {
  EXPECT_EQ(run("--version").out.rfind("ostrel 1.", 0), 0U);
  EXPECT_EQ(run("-input x --help").exitCode, 0);
  EXPECT_EQ(run("--completion fish").exitCode, 2);
  writeFile(folder_ + "/complete", run("--completion bash").out);
  writeFile(folder_ + "/try", R"(. ./complete
try() { COMP_WORDS=(ostrel "$@"); COMP_CWORD=$#; COMPREPLY=(); _ostrel; echo "${COMPREPLY[*]}"; }
try -sp
try -ce o
try @tr
try -log compl
)");
  const ProgramResult tried = runIn(folder_, "/bin/bash", {"bash", "./try"});
  EXPECT_EQ(tried.out, "-speed -split\non off\n@try\ncomplete\n");
  EXPECT_EQ(tried.err, "");
}

}  // namespace
}  // namespace ostrel
