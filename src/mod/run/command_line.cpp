#include "run/command_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "fil/text.h"
#include "run/option_files.h"
#include "run/option_table.h"

namespace ostrel {
namespace {

bool isOptionWord(std::string_view word) {
  return word.starts_with('-');
}

/// The word behind an option, if it is a value; then the place moves on to it.
const std::string* valueWord(std::size_t& index, std::span<const std::string> words) {
  if (index + 1 >= words.size() || isOptionWord(words[index + 1])) return nullptr;
  return &words[++index];
}

bool matches(const OptionRow& row, std::string_view word) {
  if (row.characters == wholeName) return equalNoCase(word.substr(0, word.find('=')), row.word);
  return compareNoCaseN(word, row.word, row.characters) == 0;
}

/// What stands behind the first '=' of a word, if there is one.
std::optional<std::string> ownValue(std::string_view word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  return std::string(word.substr(equals + 1));
}

/// The walk over the words from the first option on.
class Walk {
 public:
  explicit Walk(CommandLine& line) : words_(line.words), options_(line.options), uses_(line.uses) {}

  void run() {
    for (index_ = 1; index_ < words_.size(); ++index_) {
      if (isOptionWord(words_[index_])) {
        applyOption(words_[index_]);
      } else if (pending_ != nullptr) {
        options_.*std::exchange(pending_, nullptr) = words_[index_];
        uses_[pendingUse_].value = index_;
      } else {
        uses_.push_back({index_, nullptr, 0});
      }
    }
    if (options_.best) choose();
    const bool isPlain = options_.minimize == MinimizeEffort::None;
    if (options_.factorPrice != 0 && isPlain) options_.minimize = MinimizeEffort::Normal;
  }

 private:
  void applyOption(std::string_view word) {
    const auto row = std::find_if(optionTable.begin(), optionTable.end(),
                                  [&](const OptionRow& r) { return matches(r, word); });
    if (row == optionTable.end()) {
      uses_.push_back({index_, nullptr, 0});
      return;
    }
    const std::size_t use = uses_.size();
    uses_.push_back({index_, &*row, 0});
    std::visit([this](const auto& value) { take(value); }, row->value);
    if (index_ != uses_[use].word) uses_[use].value = index_;
  }

  /// --best is what we would do: each word beside it keeps what it says.
  void choose() {
    options_.lossless = options_.verify = true;
    if (options_.minimize == MinimizeEffort::None) options_.minimize = MinimizeEffort::Normal;
    if (options_.factorPrice == 0 && options_.splitMax >= 2) options_.factorPrice = -1;
  }

  void take(NextPlainWord option) {
    pending_ = option.field;
    pendingUse_ = uses_.size() - 1;
    if (option.field == &Options::percentFile) options_.percent = true;
  }
  void take(OwnWord option) {
    if (const auto own = ownValue(words_[index_])) {
      options_.*option.field = *own;
    } else if (index_ + 1 < words_.size()) {
      const std::string& word = words_[index_ + 1];
      if (isOptionWord(word) && word != "-") return;
      options_.*option.field = word;
      ++index_;
    }
  }
  void take(SetChoice option) {
    options_.*option.field = setChoiceOption(index_, words_, SetSelector::On);
  }
  void take(YesNo option) { options_.*option.field = boolOption(index_, words_, true); }
  void take(Flag option) { options_.*option.field = true; }
  void take(Number option) {
    const int n = intOption(index_, words_, -1);
    options_.*option.field = n >= option.least ? n : option.first;
    if (option.field == &Options::splitMax) options_.shareMin = 2;
  }
  void take(OwnEffort option) {
    const std::string own = ownValue(words_[index_]).value_or("");
    options_.*option.field = effort(own).value_or(MinimizeEffort::Normal);
  }
  void take(OwnNumber option) {
    int n = 0;
    if (const auto value = ownValue(words_[index_])) {
      const std::string own[] = {std::string(), *value};
      std::size_t front = 0;
      n = intOption(front, own, 0);
    } else if (option.readsNextWord) {
      n = intOption(index_, words_, 0);
    }
    options_.*option.field = n >= 1 ? n : option.first;
  }

  std::span<const std::string> words_;
  Options& options_;
  std::vector<WordUse>& uses_;
  std::size_t index_ = 0;
  std::string Options::*pending_ = nullptr;
  std::size_t pendingUse_ = 0;
};

}  // namespace

int intOption(std::size_t& index, std::span<const std::string> words, int fallback) {
  const std::string* word = valueWord(index, words);
  if (word == nullptr) return fallback;
  const char* first = word->data();
  const char* last = first + word->size();
  first = std::find_if_not(first, last, isSpace);
  if (first != last && *first == '+' && ++first != last && *first == '-') return 0;
  int number = 0;  // what a word without digits gives
  const bool tooLarge = std::from_chars(first, last, number).ec == std::errc::result_out_of_range;
  return tooLarge ? fallback : number;
}

bool boolOption(std::size_t& index, std::span<const std::string> words, bool fallback) {
  const std::string* word = valueWord(index, words);
  return word == nullptr ? fallback : yesNo(*word).value_or(fallback);
}

std::optional<bool> yesNo(std::string_view word) {
  for (const std::string_view yes : {"ON", "YES", "TRUE"}) {
    if (equalNoCase(word, yes)) return true;
  }
  for (const std::string_view no : {"OFF", "NO", "FALSE", "NONE"}) {
    if (equalNoCase(word, no)) return false;
  }
  return std::nullopt;
}

std::optional<MinimizeEffort> effort(std::string_view word) {
  if (equalNoCase(word, "fast")) return MinimizeEffort::Fast;
  if (equalNoCase(word, "normal")) return MinimizeEffort::Normal;
  if (equalNoCase(word, "deep")) return MinimizeEffort::Deep;
  return std::nullopt;
}

std::optional<SetSelector> setChoice(std::string_view word) {
  static constexpr std::array<std::pair<std::string_view, SetSelector>, 6> choices = {
      {{"F", SetSelector::On},
       {"R", SetSelector::Off},
       {"FR", SetSelector::Smaller},
       {"ON", SetSelector::On},
       {"OFF", SetSelector::Off},
       {"MIN", SetSelector::Smaller}}};
  for (const auto& [text, choice] : choices) {
    if (equalNoCase(word, text)) return choice;
  }
  return std::nullopt;
}

SetSelector setChoiceOption(std::size_t& index, std::span<const std::string> words,
                            SetSelector fallback) {
  const std::string* word = valueWord(index, words);
  return word == nullptr ? fallback : setChoice(*word).value_or(fallback);
}

std::string deriveOutputName(std::string_view input) {
  std::string output(input);
  if (!output.empty()) {
    output.back() = static_cast<char>(static_cast<unsigned char>(output.back()) + 1);
  }
  return output;
}

CommandLine parseCommandLine(std::vector<std::string> words) {
  CommandLine line;
  if (words.size() < 2) {
    line.result = ParseResult::TooFewWords;
    return line;
  }
  if (words.size() < 3 && words[1].starts_with("-h")) {
    line.result = ParseResult::Help;
    return line;
  }
  line.optionFileLevel = expandOptionFiles(words, maxOptionFileLevel, line.optionFiles);
  line.words = std::move(words);
  Walk(line).run();
  if (line.options.help || line.options.version || !line.options.completion.empty()) {
    line.result = ParseResult::Question;
    return line;
  }
  if (line.words.size() < 3) {
    line.options = {};
    line.result = ParseResult::TooFewWords;
    return line;
  }
  if (line.options.output.empty()) line.options.output = deriveOutputName(line.options.input);
  return line;
}

}  // namespace ostrel
