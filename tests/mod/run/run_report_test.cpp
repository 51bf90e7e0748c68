// --report: what it says of a run, and that the run doesn't feel it.
#include <gtest/gtest.h>

#include "fil/sha256.h"
#include "support/program.h"

namespace ostrel {
namespace {

std::string hashOf(const std::string& text) {
  Sha256 hash;
  hash.update(text);
  return hash.hexDigest();
}

constexpr const char* watched =
    "#$ DATE  today\n#$ PINS 6 a b c M P R\n#$ NODES 1 N\n.i 3\n.o 5\n.type fr\n.ilb a b c\n"
    ".ob M P R.D R.C N\n.p 8\n100 111~1\n010 111~~\n001 ~1~1~\n111 11~~~\n011 00~~~\n"
    "101 00~~~\n000 ~0~~~\n110 ~0~~~\n.end\n";

/// The line of a Signal, which has all that is said of it.
std::string lineOf(const std::string& json, const std::string& signal) {
  const std::size_t at = json.find("{\"name\": \"" + signal + "\", \"kind\"");
  return at == std::string::npos ? "" : json.substr(at, json.find('\n', at) - at);
}

void expectSaid(const std::string& line, const std::vector<std::string>& parts) {
  for (const std::string& part : parts) EXPECT_NE(line.find(part), std::string::npos) << part;
}

TEST(Report, SaysWhatWasDoneAndChangesNothing) {
  const std::string folder = makeFolder();
  writeFile(folder + "/a.tt2", watched);
  std::vector<std::string> words = {"ostrel", "-input", "a.tt2", "-xor", "-ck", "off"};
  const ProgramResult plain = runIn(folder, OSTREL_PROGRAM, words);
  const std::string output = readFile(folder + "/a.tt3");
  words.insert(words.end(), {"--report", "a.json"});
  EXPECT_EQ(runIn(folder, OSTREL_PROGRAM, words).exitCode, plain.exitCode);
  EXPECT_EQ(readFile(folder + "/a.tt3"), output);
  const std::string json = readFile(folder + "/a.json");
  expectSaid(json, {hashOf(watched), hashOf(output),
                    "\"before\": {\n  \"pins\": 6,\n  \"nodes\": 1,\n  \"functions\": 5,\n"
                    "  \"xor_pairs\": 0,\n  \"terms\": 11,\n  \"rows\": 8,\n  \"literals\": 33,\n"
                    "  \"widest\": 4,\n  \"depth\": 1\n",
                    "\"after\": {\n  \"pins\": 6,\n  \"nodes\": 0,\n  \"functions\": 3,\n"
                    "  \"xor_pairs\": 1,\n  \"terms\": 7,\n  \"rows\": 7,\n  \"literals\": 17,\n"
                    "  \"widest\": 3,\n  \"depth\": 1\n"});
  // Two OFF terms for three ON terms; a parity; a clock whose told set is empty; an idle node.
  expectSaid(lineOf(json, "M"),
             {R"("set": "off", "why": "smaller", "told_by": null, "on": 3, "off": 2)",
              R"([{"name": "M-", "terms": 2, "rows": [1, 2]}])"});
  expectSaid(lineOf(json, "P"),
             {R"("why": "xor")", R"({"name": "P.X2", "terms": 1, "rows": [5]}])"});
  expectSaid(lineOf(json, "R"), {R"("given_up": {"by": "choose polarity")"});
  expectSaid(lineOf(json, "N"), {R"("removed_by": "remove dead nodes")", R"("messages": [0])"});

  words.back() = "-";
  const ProgramResult table = runIn(folder, OSTREL_PROGRAM, words);
  expectSaid(table.err, {"M              3    2         9    6      1  OFF smaller\n",
                         "total         11    7        33   17      1  7 rows\n"});
  words.back() = "b.json";
  words.emplace_back("--minimize");
  EXPECT_EQ(runIn(folder, OSTREL_PROGRAM, words).exitCode, 0);
  expectSaid(lineOf(readFile(folder + "/b.json"), "R"), {R"("from": 2, "to": 2)"});
}

TEST(Report, NeverTakesThePlaceOfAnotherFile) {
  for (const std::string name : {"a.tt2", "a.tt3", "log", "folder/missing"}) {
    const std::string folder = makeFolder();
    writeFile(folder + "/a.tt2", watched);
    const ProgramResult run = runIn(folder, OSTREL_PROGRAM,
                                    {"ostrel", "-input", "a.tt2", "-log", "log", "--report", name});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(readFile(folder + "/a.tt2"), watched);
    EXPECT_EQ(readFile(folder + "/a.tt3").substr(0, 7), "#$ DATE");
    // A report in the log's place has won, since the log is opened with it in mind.
    EXPECT_EQ(run.err.find("failed to write " + name) == std::string::npos, name == "log");
  }
}

}  // namespace
}  // namespace ostrel
