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

MinimizeEffort readEffort(std::string_view word) {
  if (equalNoCase(word, "fast")) return MinimizeEffort::Fast;
  return equalNoCase(word, "deep") ? MinimizeEffort::Deep : MinimizeEffort::Normal;
}

/// The walk over the words from the first option on.
class Walk {
 public:
  Walk(std::span<const std::string> words, Options& options) : words_(words), options_(options) {}

  void run() {
    for (index_ = 1; index_ < words_.size(); ++index_) {
      if (isOptionWord(words_[index_])) {
        applyOption(words_[index_]);
      } else if (pending_ != nullptr) {
        options_.*std::exchange(pending_, nullptr) = words_[index_];
      }
    }
    const bool isPlain = options_.minimize == MinimizeEffort::None;
    if (options_.factorPrice != 0 && isPlain) options_.minimize = MinimizeEffort::Normal;
  }

 private:
  void applyOption(std::string_view word) {
    const auto row = std::find_if(optionTable.begin(), optionTable.end(),
                                  [&](const OptionRow& r) { return matches(r, word); });
    if (row != optionTable.end()) {
      std::visit([this](const auto& value) { take(value); }, row->value);
    }
  }

  void take(NextPlainWord option) {
    pending_ = option.field;
    if (option.field == &Options::percentFile) options_.percent = true;
  }
  void take(NextWord option) {
    if (index_ + 1 >= words_.size()) return;
    const std::string& word = words_[index_ + 1];
    if (isOptionWord(word) && word != "-") return;
    options_.*option.field = word;
    ++index_;
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
    const std::string_view word = words_[index_];
    const std::size_t equals = std::min(word.find('='), word.size() - 1);
    options_.*option.field = readEffort(word.substr(equals + 1));
  }
  void take(OwnNumber option) {
    const std::string_view word = words_[index_];
    const std::size_t equals = word.find('=');
    int n = 0;
    if (equals != std::string_view::npos) {
      const std::string own[] = {std::string(), std::string(word.substr(equals + 1))};
      std::size_t front = 0;
      n = intOption(front, own, 0);
    } else if (option.readsNextWord) {
      n = intOption(index_, words_, 0);
    }
    options_.*option.field = n >= 1 ? n : option.first;
  }

  std::span<const std::string> words_;
  Options& options_;
  std::size_t index_ = 0;
  std::string Options::*pending_ = nullptr;
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
  if (word == nullptr) return fallback;
  for (const std::string_view yes : {"ON", "YES", "TRUE"}) {
    if (equalNoCase(*word, yes)) return true;
  }
  for (const std::string_view no : {"OFF", "NO", "FALSE", "NONE"}) {
    if (equalNoCase(*word, no)) return false;
  }
  return fallback;
}

SetSelector setChoiceOption(std::size_t& index, std::span<const std::string> words,
                            SetSelector fallback) {
  static constexpr std::array<std::pair<std::string_view, SetSelector>, 6> choices = {
      {{"F", SetSelector::On},
       {"R", SetSelector::Off},
       {"FR", SetSelector::Smaller},
       {"ON", SetSelector::On},
       {"OFF", SetSelector::Off},
       {"MIN", SetSelector::Smaller}}};
  const std::string* word = valueWord(index, words);
  if (word == nullptr) return fallback;
  for (const auto& [text, choice] : choices) {
    if (equalNoCase(*word, text)) return choice;
  }
  return fallback;
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
  if (words.size() < 3) {
    line.result = ParseResult::TooFewWords;
    return line;
  }
  Walk(words, line.options).run();
  if (line.options.output.empty()) line.options.output = deriveOutputName(line.options.input);
  return line;
}

}  // namespace ostrel
