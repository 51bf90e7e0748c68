#include "run/strict.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <variant>

#include "fil/text.h"
#include "run/same_file.h"

namespace ostrel {
namespace {

/// The restricted distance of Damerau and Levenshtein: characters that are added, left out,
/// changed, or exchanged with a neighbour; upper and lower case alike.
std::size_t edits(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> rows(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  const auto same = [&](std::size_t i, std::size_t j) {
    return equalNoCase(a.substr(i - 1, 1), b.substr(j - 1, 1));
  };
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      std::size_t least = i == 0 || j == 0 ? i + j : rows[i - 1][j - 1] + (same(i, j) ? 0 : 1);
      if (i > 0 && j > 0) least = std::min({least, rows[i - 1][j] + 1, rows[i][j - 1] + 1});
      const bool isSwapped = i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j);
      rows[i][j] = isSwapped ? std::min(least, rows[i - 2][j - 2] + 1) : least;
    }
  }
  return rows.back().back();
}

std::string_view nearestOption(std::string_view word) {
  constexpr std::size_t longest = 40;  // no option is half as long
  const std::string_view name = word.substr(0, std::min(word.find('='), longest));
  const auto distance = [&](const OptionRow& row) {
    const bool isBeginning = compareNoCaseN(name, row.word, name.size()) == 0;
    return isBeginning ? 0 : edits(name, row.word);
  };
  return std::ranges::min_element(optionTable, {}, distance)->word;
}

bool isNumber(std::string_view word, int least) {
  const std::string text[] = {std::string(), std::string(word)};
  std::size_t front = 0;
  return !word.empty() && std::ranges::all_of(word, isDigit) && intOption(front, text, -1) >= least;
}

struct OptionUse {
  const OptionRow& row;
  std::string_view word;
  const std::string* value;  // null without one
  bool isNext;               // the value stands right behind the option
};

/// What is wrong with the value, as the end of a sentence about it; nothing if it is good.
struct Judge {
  const OptionUse& use;

  std::string operator()(const NextPlainWord&) const {
    if (use.value == nullptr) return "needs a name behind it";
    return use.isNext ? "" : "takes " + *use.value + ", with other options in between";
  }
  std::string operator()(const OwnWord&) const {
    const bool isThere = use.value != nullptr || use.word.find('=') != std::string_view::npos;
    return isThere ? "" : "needs a word behind it";
  }
  std::string operator()(const SetChoice&) const {
    return bad(use.value == nullptr || setChoice(*use.value), "on, off or min");
  }
  std::string operator()(const YesNo&) const {
    return bad(use.value == nullptr || yesNo(*use.value), "yes or no");
  }
  std::string operator()(const Flag&) const { return ""; }
  std::string operator()(const Number& number) const {
    return bad(use.value == nullptr || isNumber(*use.value, number.least),
               "a number from " + std::to_string(number.least) + " on");
  }
  std::string operator()(const OwnEffort&) const {
    return own([](std::string_view value) { return effort(value).has_value(); },
               "fast, normal or deep");
  }
  std::string operator()(const OwnNumber& number) const {
    if (use.value != nullptr) return bad(isNumber(*use.value, 1), "a number from 1 on");
    if (number.readsNextWord && use.word.find('=') == std::string_view::npos) {
      return "needs a number behind it";
    }
    return own([](std::string_view value) { return isNumber(value, 1); }, "a number from 1 on");
  }

 private:
  std::string bad(bool isGood, const std::string& wanted) const {
    return isGood ? "" : "takes " + wanted + ", and " + *use.value + " is none";
  }
  template <class IsGood>
  std::string own(IsGood isGood, const std::string& wanted) const {
    const std::size_t equals = use.word.find('=');
    if (equals == std::string_view::npos || isGood(use.word.substr(equals + 1))) return "";
    return "takes " + wanted + ", and " + std::string(use.word.substr(equals + 1)) + " is none";
  }
};

/// Whether a file could be written, which is tried without a change to one that is there.
bool canBeWritten(const std::string& name) {
  std::error_code ignored;
  const bool wasThere = std::filesystem::exists(name, ignored);
  const bool isOpen = std::ofstream(name, std::ios::app).is_open();
  if (isOpen && !wasThere) std::filesystem::remove(name, ignored);
  return isOpen;
}

}  // namespace

std::vector<std::string> complaints(const CommandLine& line) {
  std::vector<std::string> found;
  for (const WordUse& use : line.uses) {
    const std::string& word = line.words[use.word];
    if (use.row == nullptr) {
      if (word.starts_with('-')) {
        found.push_back(word + " is no option; the nearest is " + std::string(nearestOption(word)));
      } else if (!word.starts_with('@')) {
        found.push_back(word + " belongs to no option");
      }
      continue;
    }
    const std::string* value = use.value == 0 ? nullptr : &line.words[use.value];
    const OptionUse option = {*use.row, word, value, use.value == use.word + 1};
    const std::string fault = std::visit(Judge{option}, use.row->value);
    if (!fault.empty()) found.push_back(std::string(word).append(" ").append(fault));
  }
  for (const std::string& name : line.optionFiles.missing) {
    found.push_back("@" + name + ": there is no such file");
  }
  const Options& opts = line.options;
  std::vector<std::string> kept(line.optionFiles.opened.begin(), line.optionFiles.opened.end());
  kept.insert(kept.end(), {opts.input, opts.output, opts.percentFile, opts.report});
  for (const std::string& name : {opts.log, opts.err}) {
    if (name.empty()) continue;
    const auto isName = [&](const std::string& other) { return isSameFile(name, other); };
    if (std::ranges::any_of(kept, isName)) {
      found.push_back(name + " can't take messages: the run has another use for it");
    } else if (!canBeWritten(name)) {
      found.push_back(name + " can't be opened for messages");
    }
  }
  return found;
}

}  // namespace ostrel
