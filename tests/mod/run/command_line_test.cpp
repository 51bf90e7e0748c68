// The parser of the command line: one table of lines and what they leave in the options.
#include "run/command_line.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

#include "run/option_files.h"
#include "support/program.h"

namespace ostrel {
namespace {

std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream stream("ostrel " + line);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

/// The fields that differ from the defaults, in one line.
std::string describe(const Options& seen) {
  const Options plain;
  std::ostringstream out;
  const auto text = [&](const char* name, const std::string& value) {
    if (!value.empty()) out << name << '=' << value << ' ';
  };
  const auto number = [&](const char* name, auto value, auto standard) {
    if (value != standard) out << name << '=' << static_cast<int>(value) << ' ';
  };
  text("in", seen.input);
  text("out", seen.output);
  text("log", seen.log);
  text("err", seen.err);
  text("mod", seen.module);
  text("pf", seen.percentFile);
  text("report", seen.report);
  number("type", seen.type, plain.type);
  number("ck", seen.ckMode, plain.ckMode);
  number("ce", seen.ceMode, plain.ceMode);
  number("ar", seen.arMode, plain.arMode);
  number("ap", seen.apMode, plain.apMode);
  number("oe", seen.oeMode, plain.oeMode);
  number("split", seen.splitMax, plain.splitMax);
  number("share", seen.shareMin, plain.shareMin);
  number("clust", seen.clusterSize, plain.clusterSize);
  number("xor", seen.xorSynthesis, plain.xorSynthesis);
  number("nxt", seen.noXorOnT, plain.noXorOnT);
  number("ff_inv", seen.ffBeforeInverter, plain.ffBeforeInverter);
  number("sr", seen.swapSetReset, plain.swapSetReset);
  number("speed", seen.speed, plain.speed);
  number("reduce", seen.reduce, plain.reduce);
  number("invert", seen.invert, plain.invert);
  number("ifb", seen.internalFeedback, plain.internalFeedback);
  number("percent", seen.percent, plain.percent);
  number("gui", seen.gui, plain.gui);
  number("lossless", seen.lossless, plain.lossless);
  number("verify", seen.verify, plain.verify);
  number("minimize", static_cast<int>(seen.minimize), 0);
  number("factor", seen.factorPrice, plain.factorPrice);
  return out.str();
}

TEST(CommandLine, LeavesInTheOptions) {
  const struct {
    const char* line;
    const char* options;
  } table[] = {
      // names: pending targets, derived output
      {"-input x.tt2", "in=x.tt2 out=x.tt3 "},
      {"x.tt2 -input", ""},
      {"-input a -input b", "in=b out=c "},
      {"-input -foo x.tt2", "in=x.tt2 out=x.tt3 "},
      {"-INPUT x -Log l -ERR e -mod m", "in=x out=y log=l err=e mod=m "},
      {"-inpX x -outp y", "in=x out=y "},
      {"-logx l -errr e", ""},
      {"-log -xor on x.log", "log=x.log xor=1 "},
      {"-input x -percent", "in=x out=y percent=1 "},
      {"-input x -per c", "in=x out=y pf=c percent=1 "},
      // set choices
      {"-ck min -ce FR", "ck=2 ce=2 "},
      {"-ck off -ar R -ap off -oe r -type off", "type=0 ck=0 ar=0 ap=0 oe=0 "},
      {"-ck off -ck maybe", ""},
      {"-ck off -ck -xor", "xor=1 "},
      {"-apple min -cke off", "ck=0 ap=2 "},
      // yes or no, and how much of a word counts
      {"-xor -ff_inv", "xor=1 ff_inv=1 "},
      {"-xor maybe no", "xor=1 "},
      {"-xorx yes -srx no", "xor=1 "},
      {"-SR no -ifb False -invert OFF -reduce none", "sr=0 reduce=0 invert=0 ifb=0 "},
      {"-red NO -red", ""},
      {"-speed -nxt off -gui", "nxt=1 speed=1 gui=1 "},
      // numbers
      {"-split -xor", "split=16 share=2 xor=1 "},
      {"-share 5 -split 8", "split=8 share=2 "},
      {"-split 8 -share 5", "split=8 share=5 "},
      {"-split 0 -clust 7", "share=2 clust=7 "},
      {"-split +9 -share +-4", "split=9 share=2 "},
      {"-split +-9 -share +4", "share=4 "},
      {"-split abc -share abc", "share=2 "},
      {"-clust 9 -clust -split 12x", "split=12 share=2 "},
      {"-cluster 3 -share 0", "share=2 clust=3 "},
      {"-split 99999999999 -share 00004", "split=16 share=4 "},
      // two dashes: whole words, an own value behind '='
      {"--LOSSLESS -xor no", "lossless=1 "},
      {"--lossless=yes --loss --lossless2 --xor --= -lossless", ""},
      {"-input --lossless x", "in=x out=y lossless=1 "},
      {"--minimize fast --minimiz=deep --minimize2", "minimize=2 "},
      {"--Minimize=FAST --lossless", "lossless=1 minimize=1 "},
      {"--minimize=deep -xor", "xor=1 minimize=3 "},
      // the very next word, and a dash alone is one
      {"--report - -input x", "in=x out=y report=- "},
      {"--report -xor r --report", "xor=1 "},
      {"--reports r --Report r", "report=r "},
      {"--report=a -input x", "in=x out=y report=a "},
      // what we would do, and what is said beside it
      {"--best -xor", "xor=1 lossless=1 verify=1 minimize=2 "},
      {"-split 8 --minimize=deep --best",
       "split=8 share=2 lossless=1 verify=1 minimize=3 factor=-1 "},
      {"--best --factor=9 -split 8", "split=8 share=2 lossless=1 verify=1 minimize=2 factor=9 "},
      {"--minimize=deep --minimize=deeper", "minimize=2 "},
      {"--minimize= -xor", "xor=1 minimize=2 "},
  };
  for (const auto& row : table) {
    const CommandLine line = parseCommandLine(wordsOf(row.line));
    EXPECT_EQ(line.result, ParseResult::Run) << row.line;
    EXPECT_EQ(describe(line.options), row.options) << row.line;
  }
}

TEST(CommandLine, TellsUsageFromARun) {
  EXPECT_EQ(parseCommandLine(wordsOf("")).result, ParseResult::TooFewWords);
  EXPECT_EQ(parseCommandLine(wordsOf("x.tt2")).result, ParseResult::TooFewWords);
  EXPECT_EQ(parseCommandLine(wordsOf("-H")).result, ParseResult::TooFewWords);
  EXPECT_EQ(parseCommandLine(wordsOf("-h")).result, ParseResult::Help);
  EXPECT_EQ(parseCommandLine(wordsOf("-halt")).result, ParseResult::Help);
  EXPECT_EQ(parseCommandLine(wordsOf("-help -xor")).result, ParseResult::Run);
  EXPECT_EQ(parseCommandLine(wordsOf("--help")).result, ParseResult::Question);
  EXPECT_EQ(parseCommandLine(wordsOf("-input x --version")).result, ParseResult::Question);
  EXPECT_EQ(parseCommandLine(wordsOf("--completion")).result, ParseResult::TooFewWords);
}

TEST(CommandLine, SplicesOptionFilesIn) {
  const std::string folder = makeFolder() + "/";
  writeFile(folder + "one", "-xor");
  writeFile(folder + "two", "-input x.tt2\r\n\t-xor\n\n");
  writeFile(folder + "dashes", "--lossless");
  writeFile(folder + "self", "-clust 9 @" + folder + "self");
  writeFile(folder + "bomb", [&] {
    std::string words;
    for (int i = 0; i < 2000; ++i) words += "@" + folder + "bomb ";
    return words;
  }());
  const auto parse = [&](const std::string& line) { return parseCommandLine(wordsOf(line)); };

  EXPECT_EQ(parse("@" + folder + "one").result, ParseResult::TooFewWords);
  EXPECT_EQ(describe(parse("@" + folder + "two").options), "in=x.tt2 out=x.tt3 xor=1 ");
  EXPECT_EQ(describe(parse("-input a @" + folder + "two -xor no @ @nothing").options),
            "in=x.tt2 out=x.tt3 ");
  EXPECT_EQ(describe(parse("@" + folder + "dashes -xor").options), "xor=1 lossless=1 ");
  const CommandLine nested = parse("-log @" + folder + "self -err e");
  EXPECT_EQ(nested.optionFileLevel, maxOptionFileLevel + 1);
  // The word that is left over counts as a plain word.
  EXPECT_EQ(describe(nested.options), "log=@" + folder + "self err=e clust=9 ");
  EXPECT_EQ(parse("@" + folder + "bomb -xor").result, ParseResult::Run);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace ostrel
