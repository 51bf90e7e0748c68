#include "verify/options.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>

#include "fil/text.h"

namespace ostrel::verify {

namespace {

// Option files name each other at most so often, and a list of words never grows beyond this: a
// file that names itself twice would double it at each level.
constexpr int maxFileLevels = 5;
constexpr std::size_t maxWords = 4096;

enum class Value { File, Ignored, IgnoredChoice, Choice, YesNo, Split, Share, Cluster };

struct Row {
  std::string_view word;
  std::size_t characters;  // how many of them are compared
  Value value;
  SetChoice RunOptions::*choice = nullptr;
  bool RunOptions::*flag = nullptr;
};

constexpr std::size_t whole = 1000;

// In the order of the comparisons: the first match counts.
constexpr std::array<Row, 24> optionTable = {{
    {"-input", 4, Value::File},
    {"-output", 4, Value::File},
    {"-log", whole, Value::File},
    {"-err", whole, Value::File},
    {"-mod", whole, Value::File},
    {"-percent", 4, Value::File},
    {"-type", 4, Value::IgnoredChoice},
    {"-ck", 3, Value::Choice, &RunOptions::clock},
    {"-ce", 3, Value::Choice, &RunOptions::clockEnable},
    {"-ar", 3, Value::Choice, &RunOptions::reset},
    {"-ap", 3, Value::Choice, &RunOptions::set},
    {"-oe", 3, Value::Choice, &RunOptions::outputEnable},
    {"-xor", 4, Value::YesNo, nullptr, &RunOptions::xorSynthesis},
    {"-reduce", 4, Value::YesNo, nullptr, &RunOptions::reduce},
    {"-nxt", 4, Value::Ignored},
    {"-ff_inv", 4, Value::YesNo, nullptr, &RunOptions::ffBeforeInverter},
    {"-sr", 4, Value::YesNo, nullptr, &RunOptions::swapSetReset},
    {"-ifb", 4, Value::IgnoredChoice},
    {"-speed", 4, Value::YesNo, nullptr, &RunOptions::speed},
    {"-GUI", 4, Value::Ignored},
    {"-split", 4, Value::Split},
    {"-share", 4, Value::Share},
    {"-clust", 4, Value::Cluster},
    {"-invert", 4, Value::YesNo, nullptr, &RunOptions::invert},
}};

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> texts) {
  return std::ranges::any_of(texts, [word](std::string_view t) { return equalNoCase(word, t); });
}

bool readYesNo(std::string_view word) {
  return !isOneOf(word, {"OFF", "NO", "FALSE", "NONE"});
}

SetChoice readChoice(std::string_view word) {
  if (isOneOf(word, {"R", "OFF"})) return SetChoice::Off;
  return isOneOf(word, {"FR", "MIN"}) ? SetChoice::Smaller : SetChoice::On;
}

int readInteger(std::string_view word) {
  std::size_t i = 0;
  while (i < word.size() && isSpace(word[i])) ++i;
  if (i < word.size() && word[i] == '+') ++i;
  long value = 0;
  for (; i < word.size() && isDigit(word[i]); ++i) {
    value = std::min<long>(10 * value + (word[i] - '0'), std::numeric_limits<int>::max());
  }
  return static_cast<int>(value);
}

void apply(const Row& row, std::optional<std::string_view> value, RunOptions& options) {
  switch (row.value) {
    case Value::Choice:
      options.*row.choice = value ? readChoice(*value) : SetChoice::On;
      break;
    case Value::YesNo:
      options.*row.flag = !value || readYesNo(*value);
      break;
    case Value::Split:
      options.splitMax = value ? readInteger(*value) : 16;
      break;
    case Value::Cluster:
      options.clusterSize = value && readInteger(*value) > 0 ? readInteger(*value) : 5;
      break;
    case Value::File:
    case Value::Ignored:
    case Value::IgnoredChoice:
    case Value::Share:
      break;
  }
}

}  // namespace

RunOptions readRunOptions(const std::vector<std::string>& words) {
  RunOptions options;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const auto row = std::ranges::find_if(optionTable, [&](const Row& r) {
      return compareNoCaseN(words[i], r.word, r.characters) == 0;
    });
    if (row == optionTable.end()) continue;
    const bool takesWord = row->value != Value::File && row->value != Value::Ignored;
    const bool hasWord = i + 1 < words.size() && !words[i + 1].starts_with('-');
    if (takesWord && hasWord) {
      apply(*row, words[++i], options);
    } else {
      apply(*row, std::nullopt, options);
    }
  }
  return options;
}

std::vector<std::string> expandOptionFiles(std::vector<std::string> words) {
  for (int level = 0; level < maxFileLevels; ++level) {
    std::vector<std::string> expanded;
    bool found = false;
    for (const std::string& word : words) {
      if (!word.starts_with('@')) {
        expanded.push_back(word);
        continue;
      }
      found = true;
      std::ifstream file(word.substr(1));
      std::string read;
      while (expanded.size() < maxWords && file >> read) expanded.push_back(read);
    }
    words = std::move(expanded);
    if (!found) break;
  }
  return words;
}

}  // namespace ostrel::verify
