// Runs at the limits of the machine: nothing may be lost without a word, and nothing may run wild.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

#include "program.h"

namespace fs = std::filesystem;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;  // reserves far more address space than any limit here
#else
constexpr bool isSanitized = false;
#endif

class Limits : public testing::Test {
 protected:
  ~Limits() override { fs::remove_all(folder_); }

  /// Runs the program on `text` with an address space of so many kilobytes.
  ProgramResult run(const std::string& text, int kilobytes, const std::string& options = "") {
    writeFile(folder_ + "/in.tt2", text);
    const std::string limit = isSanitized ? "" : "ulimit -v " + std::to_string(kilobytes) + "; ";
    return runIn(
        folder_, "/bin/sh",
        {"sh", "-c",
         limit + "exec " OSTREL_PROGRAM " -input in.tt2 -output out.tt3 -log log " + options});
  }

  std::string output() const { return readFile(folder_ + "/out.tt3"); }
  std::string log() const { return readFile(folder_ + "/log"); }

 private:
  std::string folder_ = makeFolder();
};

/// A design of two outputs whose rows count up in binary.
std::string countingDesign(int columns, int rows) {
  std::ostringstream text;
  text << "#$ PINS " << columns + 2;
  for (int c = 0; c < columns; ++c) text << " i" << c;
  text << " y z\n.i " << columns << "\n.o 2\n.ilb";
  for (int c = 0; c < columns; ++c) text << " i" << c;
  text << "\n.ob y z\n.p " << rows << "\n";
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < columns; ++c) text << (r >> c & 1);
    text << (r % 3 == 0 ? " 11\n" : " 10\n");
  }
  return text.str();
}

TEST_F(Limits, SaysSoWhenMemoryRunsOut) {
  if (isSanitized) GTEST_SKIP() << "the sanitizer needs the address space itself";
  const std::string design = countingDesign(80, 100000);
  const ProgramResult result = run(design, 24000);
  EXPECT_EQ(result.exitCode, 2) << result.err;
  const std::string line = "<ERROR> K52700: failed to allocate memory\n";
  EXPECT_EQ(result.err, line + line + line + line);
  EXPECT_TRUE(log().ends_with(result.err));
  EXPECT_EQ(run(design, 400000).exitCode, 0);
}

TEST_F(Limits, AnnouncedSizesCostNothing) {
  const std::string head = "#$ DATE then\n#$ PINS 2 A Y\n.i 1\n.o 1\n.ilb A\n.ob Y\n";
  EXPECT_EQ(run(head + ".p 2000000000\n1 1\n.e\n", 24000).exitCode, 0);
  EXPECT_TRUE(output().ends_with(".p 1\n1 1\n.end\n")) << output();
  EXPECT_EQ(run("#$ PINS 999999 A Y\n" + head + "1 1\n", 24000).exitCode, 2);
  EXPECT_EQ(run(".i 1000000\n.o 1000000\n.p 2\n1 1\n", 24000).exitCode, 1);
}

TEST_F(Limits, WideRowsCrossTheBlocksOfACube) {
  // One literal in each of 300 columns: the pair is x0 XOR the rest, whatever block it stands in.
  std::string text = "#$ DATE then\n#$ PINS 301";
  const auto names = [] {
    std::string list;
    for (int c = 0; c < 300; ++c) list += " i" + std::to_string(c);
    return list;
  }();
  text += names + " y\n.i 300\n.o 1\n.ilb" + names + "\n.ob y\n.p 4\n";
  const std::string dashes(98, '-');
  for (const std::string bits : {"100", "010", "001", "111"}) {
    for (const char bit : bits) text += bit + dashes + '-';
    text += " 1\n";
  }
  EXPECT_EQ(run(text, 400000, "-xor").exitCode, 0);
  const std::string zero = "0" + dashes + "-";
  const std::string dash = "-" + dashes + "-";
  EXPECT_NE(output().find(".ob y.X1 y.X2\n"), std::string::npos) << output();
  EXPECT_NE(output().find(dash + zero + zero), std::string::npos) << output();
}

}  // namespace
