// One list of options: what the table holds stands in the help, the manual and the README, and no
// field is set that nothing reads.
#include "run/option_table.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

#include "fil/text.h"
#include "run/answers.h"
#include "run/help.h"
#include "support/program.h"

namespace ostrel {
namespace {

/// The words of a text that the parser takes for options, as it would match them.
bool names(const std::string& text, const OptionRow& row) {
  for (std::size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at + 1)) {
    const auto isInside = [](char c) { return isLetter(c) || isDigit(c) || c == '_'; };
    if (at > 0 && isInside(text[at - 1])) continue;
    const std::size_t letters = text.find_first_not_of('-', at);
    const auto end =
        std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(std::min(letters, text.size())),
                         text.end(), isInside);
    const std::string word(text.begin() + static_cast<std::ptrdiff_t>(at), end);
    // Roff writes a flag without its first dash.
    for (const std::string& spelling : {word, "-" + word}) {
      if (compareNoCaseN(spelling, row.word, row.characters) == 0) return true;
    }
  }
  return false;
}

TEST(Options, StandInHelpManualAndReadme) {
  std::ostringstream help;
  printHelp(help, "ostrel");
  std::ostringstream page;
  Options opts;
  opts.help = true;
  EXPECT_EQ(answer(opts, page, page), 0);
  const std::string manual = readFile(OSTREL_ROOT "/man/ostrel.1");
  const std::string readme = readFile(OSTREL_ROOT "/README.md");
  for (const OptionRow& row : optionTable) {
    const bool isTold = !row.word.starts_with("--") && row.word != "-type" && row.word != "-GUI";
    EXPECT_EQ(names(help.str(), row), isTold) << row.word;
    EXPECT_TRUE(names(page.str(), row)) << row.word;
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
  const std::string table = readFile(OSTREL_ROOT "/src/mod/run/option_table.h");
  const std::string member = "&Options::";
  int fields = 0;
  for (std::size_t at = table.find(member); at != std::string::npos; at = table.find(member, at)) {
    at += member.size();
    const std::string field = table.substr(at, table.find_first_of(",}", at) - at);
    const bool isRead = sources.find("opts." + field) != std::string::npos ||
                        sources.find("options()." + field) != std::string::npos;
    EXPECT_EQ(isRead, field != "type" && field != "best") << field;
    ++fields;
  }
  EXPECT_EQ(fields, static_cast<int>(optionTable.size()));
}

}  // namespace
}  // namespace ostrel
