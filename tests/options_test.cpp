// One list of options: what the table holds stands in the help, the manual and the README, and no
// field is set that nothing reads.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "fil/text.h"
#include "run/help.h"
#include "run/option_table.h"
#include "support/program.h"

namespace ostrel {
namespace {

/// The words of a text that the parser takes for options, as it would match them.
bool names(const std::string& text, const OptionRow& row) {
  for (std::size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at + 1)) {
    const auto isInside = [](char c) { return isLetter(c) || isDigit(c) || c == '_' || c == '-'; };
    if (at > 0 && isInside(text[at - 1])) continue;
    const auto end =
        std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at) + 1, text.end(), isInside);
    const std::string word(text.begin() + static_cast<std::ptrdiff_t>(at), end);
    if (matches(row, word)) return true;
  }
  return false;
}

// Understood by the parser, and not yet promised anywhere: a word leaves this list with the change
// that makes its option work.
const std::set<std::string_view> inTheMaking = {"--lossless", "--verify", "--minimize", "--factor",
                                                "--depth"};

TEST(Options, StandInHelpManualAndReadme) {
  std::ostringstream help;
  printHelp(help, "ostrel");
  const std::set<std::string_view> notInHelp = {"-type", "-GUI"};
  const std::string manual = readFile(OSTREL_ROOT "/man/ostrel.1");
  const std::string readme = readFile(OSTREL_ROOT "/README.md");
  for (const OptionRow& row : optionTable) {
    if (inTheMaking.contains(row.word)) continue;
    EXPECT_EQ(names(help.str(), row), !notInHelp.contains(row.word)) << row.word;
    EXPECT_TRUE(names(manual, row)) << row.word;
    EXPECT_TRUE(names(readme, row)) << row.word;
  }
}

TEST(Options, AreReadSomewhere) {
  std::string sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(OSTREL_ROOT "/src/mod")) {
    const std::string name = entry.path().stem();
    const bool sets = name == "options" || name == "option_table" || name == "command_line";
    if (entry.is_regular_file() && !sets) sources += readFile(entry.path());
  }
  std::istringstream table(readFile(OSTREL_ROOT "/src/mod/run/option_table.h"));
  const std::string member = "&Options::";
  int rows = 0;
  for (std::string line; std::getline(table, line);) {
    const std::size_t at = line.find(member);
    if (at == std::string::npos) continue;
    ++rows;
    const std::string word = line.substr(line.find('"') + 1, line.find("\",") - line.find('"') - 1);
    const std::size_t begin = at + member.size();
    const std::string field = line.substr(begin, line.find_first_of(",}", begin) - begin);
    const bool isRead = sources.find("opts." + field) != std::string::npos ||
                        sources.find("options()." + field) != std::string::npos;
    EXPECT_EQ(isRead || inTheMaking.contains(word), word != "-type") << word << ' ' << field;
  }
  EXPECT_EQ(rows, static_cast<int>(optionTable.size()));
}

}  // namespace
}  // namespace ostrel
