// The command line of the verifier, and the questions that it leaves for another solver.
#include "verify/command.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

#include "support/program.h"
#include "support/verdicts.h"

namespace ostrel::verify {
namespace {

class OnTheCommandLine : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() /
              ("ostrel_verify_test_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string write(const char* name, const std::string& text) {
    std::ofstream(folder_ / name) << text;
    return (folder_ / name).string();
  }

  std::filesystem::path folder_;
};

TEST_F(OnTheCommandLine, Answers) {
  const std::string a = write("a", "#$ TITLE  one\n" + plaText(base));
  const std::string retitled = write("retitled", "#$ TITLE two\n" + plaText(base));
  const std::string named = write("named", "#$ MODULE  m\n#$ TITLE   one\n" + plaText(base));
  const std::string b = write("b", plaText(replaced(base, "11-- 1", "10-- 1")));
  const std::string split = write("opts", "-split\n2 -clust 5\n");
  const std::string log =
      write("log", "ostrel\n\nostrel -input b -split 1 @" + split + " \nmore\n");
  const std::string reg = write("reg", plaText("A Q||f|A|Q.D Q.C|1 1~,0 ~1"));
  const std::string noClock = write("noclock", plaText("A Q||f|A|Q.D|1 1"));
  const std::string announced = write("announced", replaced(plaText(base), ".p 5", ".p 9"));
  const std::string small = write("small", replaced(plaText(base), ".p 5", ".p 4"));
  const std::string cut = write("cut", replaced(plaText(base), ".end", ""));
  const std::string percent = write("percent", replaced(plaText(base), "Z-", "Z%"));
  const auto [in, out] = parity();
  const std::string hard = write("in", plaText(in)) + " " + write("out", plaText(out));
  const struct {
    std::string arguments;
    int code;
    const char *out, *err;
  } runs[] = {
      {a + " " + a, 0, "proven: 3 functions\n", ""},
      {b + " " + b + " -split 2 -OUTPUT x -Foo 1 --new=x", 0, "proven: 3", ""},
      {"--list " + a + " " + a, 0, "proven: Y, logic\nproven: Z, logic\n", ""},
      {a + " " + b, 1, "2 functions proven, 2 different, 0 undecided\n", ""},
      {b + " " + b + " @" + split, 0, "proven", ""},
      {b + " " + b + " --log " + log, 0, "proven", ""},
      {b + " " + b + " --log=" + log + " -split 1 -reduce none -clust 1 -split 2", 0, "", ""},
      {b + " " + b + " --log " + write("empty", ""), 2, "", "there is no command line in it"},
      {a + " " + retitled, 1, "different: OUTPUT: the property TITLE has changed\n", ""},
      {a + " " + named, 1, "different: OUTPUT: the property MODULE has changed\n", ""},
      {a + " " + named + " -mod m", 0, "", ""},
      {b + " " + announced, 1, "different: OUTPUT: it announces 9 rows and has 5\n", ""},
      {b + " " + small, 1, "Number of terms greater than .p field", ""},
      {b + " " + cut, 1, "different: OUTPUT: it is cut off: .end is missing\n", ""},
      {b + " " + b + "x", 1, "different: OUTPUT: it can't be read\n", ""},
      {b + " " + percent + " -percent " + retitled, 1, "is not OUTPUT with dashes", ""},
      {announced + " " + percent + " -percent " + write("pc", plaText(base)), 0, "", ""},
      {reg + " " + noClock + " -CKx off", 1,
       "  probably: the options keep the OFF set of this function, and it has none"
       " (Keeping the OFF set of a control function)\nhint: a run with --lossless keeps",
       ""},
      {hard + " --effort 0", 3, "0 functions proven, 0 different, 1 undecided\n", ""},
      {hard + " --effort=100000", 0, "", ""},
      {small + " " + a, 2, "", "is not a usable PLA file\n"},
      {noClock + "x " + a, 2, "", "it can't be read"},
      {a, 2, "", "usage: "},
      {"-xor " + a + " " + a, 2, "", "unknown option -xor"},
      {a + " " + a + " --effort=x", 2, "", "--effort needs a number"},
      {"--foo " + a + " " + a, 2, "", "unknown option --foo"},
      {"--check " + b, 0, "", ""},
      {"--check " + cut, 1, ":14: the file is cut off: .end is missing\n", ""},
      {"--help", 0, "Exit code: 0 proven", ""},
      {"--version", 0, "ostrel-verify ", ""}};
  for (const auto& run : runs) {
    std::ostringstream seen;
    std::ostringstream err;
    EXPECT_EQ(verifyMain(wordsOf(run.arguments), seen, err), run.code) << run.arguments << "\n"
                                                                       << seen.str() << err.str();
    EXPECT_NE(seen.str().find(run.out), std::string::npos) << run.arguments << "\n" << seen.str();
    EXPECT_NE(err.str().find(run.err), std::string::npos) << run.arguments << "\n" << err.str();
  }
}

TEST_F(OnTheCommandLine, ASecondSolverAgreesOnTheQuestions) {
  const std::string solver = OSTREL_SECOND_SOLVER;
  if (solver.empty()) GTEST_SKIP() << "neither minisat nor picosat is installed";
  for (const std::string circuit : {"clip", "alu2", "5xp1"}) {
    const std::string in = std::string(OSTREL_CIRCUITS) + "/" + circuit + ".tt2";
    const std::string out = (folder_ / "out.tt3").string();
    const auto questions = folder_ / circuit;
    ASSERT_EQ(runIn(folder_.string(), OSTREL_PROGRAM,
                    {"ostrel", "-input", in, "-output", out, "-xor", "-split", "5"})
                  .exitCode,
              0);
    std::ostringstream seen;
    std::ostringstream err;
    ASSERT_EQ(
        verifyMain({in, out, "-xor", "-split", "5", "--export", questions.string()}, seen, err), 0)
        << seen.str() << err.str();
    int asked = 0;
    for (const auto& entry : std::filesystem::directory_iterator(questions)) {
      if (entry.path().extension() != ".cnf") continue;
      auto proof = entry.path();
      const bool isProven = std::filesystem::exists(proof.replace_extension(".drat"));
      const int code = runIn(folder_.string(), solver, {solver, entry.path().string()}).exitCode;
      EXPECT_EQ(code, isProven ? 20 : 10) << entry.path();
      ++asked;
    }
    EXPECT_GT(asked, 3) << circuit;
  }
}

}  // namespace
}  // namespace ostrel::verify
