// Whole runs of the program, compared byte for byte with the case files. Times are masked. With
// OSTREL_UPDATE_CASES set, the cases take over what the runs gave, to be read before a commit.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include "support/case_file.h"
#include "support/program.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> caseNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(OSTREL_CASES)) {
    if (entry.path().extension() == ".case") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string maskTimes(std::string text) {
  static const std::regex date("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} 2[0-9]{3}");
  static const std::regex seconds("completed in [0-9]+ seconds");
  text = std::regex_replace(text, date, "<time>");
  return std::regex_replace(text, seconds, "completed in <n> seconds");
}

std::vector<std::string> splitWords(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::vector<std::string> programWords(const CaseFile& expected) {
  std::vector<std::string> words = splitWords(expected.text("args", ""));
  words.insert(words.begin(), "ostrel");
  return words;
}

/// The case as the run makes it: the same sections with what was seen.
CaseFile runCase(const CaseFile& expected, const std::string& folder) {
  CaseFile seen{expected.preface, {}};
  const auto keep = [&](const std::string& name, const std::string& text) {
    if (!text.empty()) seen.sections.emplace_back(name, text);
  };
  for (const auto& section : expected.sections) {
    if (section.first == "args" || section.first.starts_with("input ")) {
      seen.sections.push_back(section);
      if (section.first != "args")
        writeFile(folder + "/" + section.first.substr(6), section.second);
    }
  }
  const ProgramResult run = runIn(folder, OSTREL_PROGRAM, programWords(expected));
  keep("exit", run.exitCode == 0 ? "" : std::to_string(run.exitCode) + "\n");
  keep("stdout", maskTimes(run.out));
  keep("stderr", maskTimes(run.err));
  for (const auto& [name, text] : expected.sections) {
    if (!name.starts_with("output ")) continue;
    const std::string path = folder + "/" + name.substr(7);
    const std::string missing = "(no such file)\n";
    seen.sections.emplace_back(name, fs::exists(path) ? maskTimes(readFile(path)) : missing);
  }
  for (const auto& section : expected.sections) {
    if (section.first.starts_with("verify")) seen.sections.push_back(section);
  }
  return seen;
}

std::string asText(const CaseFile& file) {
  std::string text;
  for (const auto& [name, content] : file.sections) text += "== " + name + "\n" + content;
  return text;
}

/// The verdict on in.tt2 and the first output of a case, with the options of its run.
void expectVerdict([[maybe_unused]] const CaseFile& expected,
                   [[maybe_unused]] const std::string& folder) {
#ifdef OSTREL_VERIFY
  int verdict = 0;
  std::vector<std::string> words = {"ostrel-verify", "in.tt2", ""};
  for (const auto& [name, text] : expected.sections) {
    if (name.starts_with("output ") && words[2].empty()) words[2] = name.substr(7);
    if (name.starts_with("verify ")) verdict = std::stoi(name.substr(7));
  }
  for (const std::string& word : splitWords(expected.text("args", ""))) words.push_back(word);
  const ProgramResult result = runIn(folder, OSTREL_VERIFY, words);
  EXPECT_EQ(result.exitCode, verdict) << result.out << result.err;
#endif
}

class EndToEnd : public testing::TestWithParam<std::string> {};

TEST_P(EndToEnd, GivesTheSameBytes) {
  const std::string path = std::string(OSTREL_CASES) + "/" + GetParam() + ".case";
  const CaseFile expected = CaseFile::load(path);
  const std::string folder = makeFolder();
  const CaseFile seen = runCase(expected, folder);
  if (std::getenv("OSTREL_UPDATE_CASES") != nullptr)
    seen.save(path);
  else
    EXPECT_EQ(asText(seen), asText(expected));
  const bool hasResult = std::any_of(expected.sections.begin(), expected.sections.end(),
                                     [](const auto& s) { return s.first.starts_with("output "); });
  if (seen.text("exit", "0\n") == "0\n" && hasResult) expectVerdict(expected, folder);
  fs::remove_all(folder);
}

INSTANTIATE_TEST_SUITE_P(Cases, EndToEnd, testing::ValuesIn(caseNames()),
                         [](const auto& test) { return test.param; });

}  // namespace
