// --report: what it says of a run, and that the run doesn't feel it.
#include <gtest/gtest.h>

#include "fil/sha256.h"
#include "report/json_writer.h"
#include "support/program.h"

namespace ostrel {
namespace {

std::string sha256(const std::string& text, std::size_t piece) {
  Sha256 hash;
  for (std::size_t i = 0; i < text.size(); i += piece) hash.update(text.substr(i, piece));
  return hash.hexDigest();
}

// The vectors of the standard, and lengths on both sides of where the padding takes another block.
TEST(Report, HashesLikeTheStandard) {
  EXPECT_EQ(sha256("", 1), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256("abc", 2), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 56),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256(std::string(1000000, 'a'), 999),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
  EXPECT_EQ(sha256(std::string(55, 'a'), 64),
            "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318");
}

TEST(Report, QuotesWhatNamesCanHold) {
  EXPECT_EQ(quotedJson("a\"\\\n\x7f"), R"("a\"\\\u000a\u007f")");
  EXPECT_EQ(quotedJson("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
            "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\"");
  EXPECT_EQ(quotedJson("\xE9\xC3"), R"("\u00e9\u00c3")");  // no UTF-8, cut off
  EXPECT_EQ(quotedJson("\xED\xA0\x80\xC0\xAF"), R"("\u00ed\u00a0\u0080\u00c0\u00af")");
}

constexpr const char* designText =
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
  writeFile(folder + "/a.tt2", designText);
  std::vector<std::string> words = {"ostrel", "-input", "a.tt2", "-xor", "-ck", "off"};
  const ProgramResult plain = runIn(folder, OSTREL_PROGRAM, words);
  const std::string output = readFile(folder + "/a.tt3");
  words.insert(words.end(), {"--report", "a.json"});
  EXPECT_EQ(runIn(folder, OSTREL_PROGRAM, words).exitCode, plain.exitCode);
  EXPECT_EQ(readFile(folder + "/a.tt3"), output);
  const std::string json = readFile(folder + "/a.json");
  expectSaid(json, {sha256(designText, 64), sha256(output, 64)});
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
}

TEST(Report, NeverTakesThePlaceOfAnotherFile) {
  for (const std::string name : {"a.tt2", "a.tt3", "log", "folder/missing"}) {
    const std::string folder = makeFolder();
    writeFile(folder + "/a.tt2", designText);
    const ProgramResult run = runIn(folder, OSTREL_PROGRAM,
                                    {"ostrel", "-input", "a.tt2", "-log", "log", "--report", name});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(readFile(folder + "/a.tt2"), designText);
    EXPECT_EQ(readFile(folder + "/a.tt3").substr(0, 7), "#$ DATE");
    // A report in the log's place has won, since the log is opened with it in mind.
    EXPECT_EQ(run.err.find("failed to write " + name) == std::string::npos, name == "log");
  }
}

}  // namespace
}  // namespace ostrel
