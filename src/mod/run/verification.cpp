#include "run/verification.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

#include "run/log.h"
#include "run/option_table.h"
#include "run/options.h"
#include "run/system.h"

namespace ostrel {
namespace {

constexpr std::string_view program = "ostrel-verify";

/// A word that the run doesn't know can be one that the verifier would obey, such as --effort.
bool isForTheRun(std::string_view word) {
  const auto isWord = [word](const OptionRow& row) { return row.word == word; };
  return !word.starts_with("--") || std::ranges::any_of(optionTable, isWord);
}

/// A name without a folder is looked for on the path, as that of this program was.
std::string besideThis(const std::string& thisProgram) {
  const std::filesystem::path folder = std::filesystem::path(thisProgram).parent_path();
  const std::string beside = (folder / program).string();
  return !folder.empty() && isExecutable(beside) ? beside : std::string(program);
}

}  // namespace

bool isVerified(const std::vector<std::string>& words,
                const std::function<void(std::ostream&)>& content) {
  std::vector<std::string> command = {besideThis(words.front()), options().input, "-"};
  std::copy_if(words.begin() + 1, words.end(), std::back_inserter(command), isForTheRun);
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(options().input, ignored)) {
    error({options().input, " can't be read a second time, so the output stays empty"});
    return false;
  }
  flushLog();
  const std::optional<int> exitCode = runWithInput(command, content);
  if (exitCode == 0) return true;
  error({exitCode ? "the result is not proven" : "ostrel-verify can't be run",
         ", so the output stays empty"});
  return false;
}

}  // namespace ostrel
