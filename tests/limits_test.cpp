// Runs at the limits of the machine: nothing may be lost without a word, and nothing may run wild.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

#include "support/program.h"
#include "support/sanitized.h"

namespace fs = std::filesystem;

namespace {

class Limits : public testing::Test {
 protected:
  ~Limits() override { fs::remove_all(folder_); }

  /// Runs the program on `text` with an address space of so many kilobytes.
  ProgramResult run(const std::string& text, int kilobytes, const std::string& options = "") {
    return runUnder("ulimit -v " + std::to_string(kilobytes), text, options);
  }

  /// Runs the program on `text` for so many seconds of the processor at most.
  ProgramResult runFor(int seconds, const std::string& text, const std::string& options = "") {
    return runUnder("ulimit -t " + std::to_string(seconds), text, options);
  }

  std::string output() const { return readFile(folder_ + "/out.tt3"); }
  std::string log() const { return readFile(folder_ + "/log"); }

 private:
  ProgramResult runUnder(const std::string& bound, const std::string& text,
                         const std::string& options) {
    writeFile(folder_ + "/in.tt2", text);
    const std::string limit = isSanitized ? "" : bound + "; ";
    return runIn(
        folder_, "/bin/sh",
        {"sh", "-c",
         limit + "exec " OSTREL_PROGRAM " -input in.tt2 -output out.tt3 -log log " + options});
  }

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

// One function whose support is that of its ON set, four columns, while the OFF set that is to be
// complemented reads 208 others; and halves that have OFF terms only.
TEST_F(Limits, ComplementsEnd) {
  const auto names = [](const char* base, int count) {
    std::string list;
    for (int i = 0; i < count; ++i) list += std::string(" ") + base + std::to_string(i);
    return list;
  };
  const int terms = 26;
  const int wide = 8 * terms;
  const std::string columns = names("a", 4) + names("x", wide);
  std::string stale = "#$ PINS " + std::to_string(wide + 5) + columns + " Y\n.type fr\n.i " +
                      std::to_string(wide + 4) + "\n.o 1\n.ilb" + columns + "\n.ob Y\n";
  for (int t = 0; t <= terms; ++t) {  // the numbers of three digits to the base of three
    const std::string digits = {"01-"[t / 9], "01-"[t / 3 % 3], "01-"[t % 3]};
    stale += "1" + digits + std::string(wide, '-') + " 1\n";
    const std::string rest = std::string(8 * (terms - 1), '-');
    if (t < terms)
      stale +=
          "0---" + std::string(rest).insert(static_cast<std::size_t>(8 * t), "11111111") + " 0\n";
  }
  EXPECT_EQ(runFor(2, stale, "-split").exitCode, 0);
  EXPECT_TRUE(output().ends_with(".end\n"));

  const int halves = 200;
  std::string lone = "#$ PINS 270" + names("x", 70) + names("s", halves) +
                     "\n.type fr\n.i 70\n.o " + std::to_string(2 * halves) + "\n.ilb" +
                     names("x", 70) + "\n.ob";
  std::string offHalves;
  std::string onHalves;
  for (int i = 0; i < halves; ++i) {
    lone += " s" + std::to_string(i) + ".X1 s" + std::to_string(i) + ".X2";
    offHalves += "0~";
    onHalves += "~1";
  }
  lone += '\n';
  for (int t = 0; t < 100; ++t) {
    std::string row(70, '-');
    for (const int k : {7 * t + 3, 11 * t + 5, 13 * t}) {
      row[static_cast<std::size_t>(k % 70)] = t * k % 3 == 0 ? '0' : '1';
    }
    lone += row + " " + offHalves + "\n";
  }
  EXPECT_EQ(runFor(8, lone + "1" + std::string(69, '-') + " " + onHalves + "\n").exitCode, 0);
}

// The time of a group follows its terms, not their square.
TEST_F(Limits, SharesManyTermsInStep) {
  EXPECT_EQ(runFor(2, countingDesign(17, 100000), "-split 200000").exitCode, 0);
}

// 4000 nodes for as many terms: 56 MB of text, which is made row by row.
TEST_F(Limits, CutsWithoutTheTextInMemory) {
  const ProgramResult result = run(countingDesign(12, 4000), 40000, "-split 2 -clust 1");
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_TRUE(output().ends_with(".end\n"));
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
