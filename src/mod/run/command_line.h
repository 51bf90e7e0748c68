// From the words of the command line to the options of the run.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/option_files.h"
#include "run/option_table.h"
#include "run/options.h"

namespace ostrel {

enum class ParseResult {
  Run = 0,
  Help = 1,          ///< -h, or a longer word beginning so, as the only argument
  TooFewWords = -1,  ///< an option and one more word must stand on the line
  Question = 2       ///< --help, --version or --completion, which need no input
};

/// What a word of the line was taken for.
struct WordUse {
  std::size_t word = 0;            ///< its place
  const OptionRow* row = nullptr;  ///< the option that it is; null for a word that nothing takes
  std::size_t value = 0;           ///< the place of the word that became its value; 0 for none
};

/// What a command line asks for.
struct CommandLine {
  ParseResult result = ParseResult::Run;
  Options options;
  std::vector<std::string> words;  ///< with those of option files in their place
  std::vector<WordUse> uses;       ///< of all words but values, in order
  OptionFiles optionFiles;         ///< the files that were read for words, or could not be
  int optionFileLevel = 0;  ///< passes made over @ words; at maxOptionFileLevel words can be left
};

/// Reads the words, the program's name first, with the option files that they name. The parser is
/// lenient: an unknown option, a stray word or a bad value earns no message, and the option then
/// keeps its default. Of an option with one dash a few characters can be enough. One with two
/// dashes is matched whole.
CommandLine parseCommandLine(std::vector<std::string> words);

/// The name of the output for an input: its last character replaced by the next one, so that
/// `design.tt2` gives `design.tt3`. Empty for an empty name.
std::string deriveOutputName(std::string_view input);

/// What a word says as a value, upper and lower case alike; nothing if it is no such value.
std::optional<bool> yesNo(std::string_view word);
std::optional<SetSelector> setChoice(std::string_view word);
std::optional<MinimizeEffort> effort(std::string_view word);

/// Value readers: `index` is the place of an option word. If the next word is a value (it exists
/// and doesn't begin with '-'), index moves on to it, whatever it says; otherwise the fallback is
/// the answer.
int intOption(std::size_t& index, std::span<const std::string> words, int fallback);
bool boolOption(std::size_t& index, std::span<const std::string> words, bool fallback);
SetSelector setChoiceOption(std::size_t& index, std::span<const std::string> words,
                            SetSelector fallback);

}  // namespace ostrel
