// Real circuits through the whole program: every run succeeds, its output is read again, and the
// verifier proves each function.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "support/program.h"
#include "support/sanitized.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> circuits() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(OSTREL_CIRCUITS)) {
    // Under sanitizers that is minutes of checking what the smaller ones do too.
    if (isSanitized && entry.file_size() > 10000) continue;
    names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string rowsOf(const std::string& file) {
  std::istringstream stream(file);
  std::string rows;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && std::string("01-").find(line[0]) != std::string::npos) rows += line + "\n";
  }
  return rows;
}

class Circuit : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override { fs::copy_file(source(), folder_ + "/in.tt2"); }
  void TearDown() override { fs::remove_all(folder_); }

  std::string source() const { return std::string(OSTREL_CIRCUITS) + "/" + GetParam() + ".tt2"; }

  int run(const std::string& from, const std::string& to, const std::vector<std::string>& options) {
    std::vector<std::string> words = {"ostrel", "-input", from, "-output", to};
    words.insert(words.end(), options.begin(), options.end());
    return runIn(folder_, OSTREL_PROGRAM, words).exitCode;
  }

  std::string folder_ = makeFolder();
};

TEST_P(Circuit, KeepsItsFunctions) {
  const std::vector<std::vector<std::string>> optionSets = {
      {},
      {"-xor"},
      {"-split", "16"},
      {"-xor", "-split", "16"},
      {"-split", "8", "-share", "3", "-clust", "4"},
      {"-speed", "-split", "4"},
      {"-split", "2"},
      {"--minimize"},
      {"--minimize=fast", "-xor", "-split", "16"},
      {"--factor", "--depth", "3", "-split", "8"}};
  for (const auto& options : optionSets) {
    ASSERT_EQ(run("in.tt2", "out.tt2", options), 0);
#ifdef OSTREL_VERIFY
    std::vector<std::string> words = {"ostrel-verify", "in.tt2", "out.tt2"};
    words.insert(words.end(), options.begin(), options.end());
    const ProgramResult verdict = runIn(folder_, OSTREL_VERIFY, words);
    EXPECT_EQ(verdict.exitCode, 0) << verdict.out << verdict.err;
#endif
  }
}

// The fewest terms that are known, with either set of each output; all but that of apex4 are
// proven.
TEST_P(Circuit, HasFewTerms) {
  const std::map<std::string, int> fewest = {
      {"5xp1", 74},      {"9sym", 72},    {"alu2", 72},    {"apex4", 965},   {"bw", 111},
      {"clip", 148},     {"con1", 8},     {"duke2", 200},  {"fdr_apla", 38}, {"fr_5xp1", 74},
      {"fr_misex1", 32}, {"fr_rd53", 31}, {"misex1", 32},  {"misex2", 29},   {"rd53", 31},
      {"seq", 1378},     {"spla", 443},   {"table3", 530}, {"xor5", 16}};
  ASSERT_EQ(run("in.tt2", "out.tt2", {"--minimize"}), 0);
  std::istringstream rows(rowsOf(readFile(folder_ + "/out.tt2")));
  int terms = 0;
  for (std::string inputs, outputs; rows >> inputs >> outputs;) {
    terms += static_cast<int>(std::count(outputs.begin(), outputs.end(), '1'));
  }
  EXPECT_EQ(terms, fewest.at(GetParam()));
}

TEST_P(Circuit, ComesOutOfItsOwnOutputUnchanged) {
  ASSERT_EQ(run("in.tt2", "once.tt2", {}), 0);
  ASSERT_EQ(run("once.tt2", "twice.tt2", {}), 0);
  EXPECT_EQ(rowsOf(readFile(folder_ + "/once.tt2")), rowsOf(readFile(folder_ + "/twice.tt2")));
}

INSTANTIATE_TEST_SUITE_P(Circuits, Circuit, testing::ValuesIn(circuits()),
                         [](const auto& test) { return test.param; });

}  // namespace
