// The options of the command line: each word, how much of it counts, and the field that it sets.
//
// The one list of them: the parser walks it, and a test looks each word up in the help text, the
// manual and the README.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "run/options.h"

namespace ostrel {

// What an option does with the words behind it.
struct NextPlainWord {  // the next word without '-', however far behind
  std::string Options::*field;
};
struct OwnWord {  // behind '=', or the very next word unless it is an option; "-" alone is none
  std::string Options::*field;
};
struct SetChoice {
  SetSelector Options::*field;
};
struct YesNo {
  bool Options::*field;
};
struct Flag {  // takes no value
  bool Options::*field;
};
struct Number {  // a first value, replaced by a number that is not below `least`
  int Options::*field;
  int first;
  int least;
};

struct OwnEffort {  // the value stands behind '=' in the option's word; a bad one counts as none
  MinimizeEffort Options::*field;
};

struct OwnNumber {  // the value, 1 or more, stands behind '=', or in the next word if that is read
  int Options::*field;
  int first;
  bool readsNextWord;
};

struct OptionRow {
  std::string_view word;
  std::size_t characters;  // places that are compared, or one of the two below
  std::variant<NextPlainWord, OwnWord, SetChoice, YesNo, Flag, Number, OwnEffort, OwnNumber> value;
};

inline constexpr std::size_t wholeWord = std::string_view::npos;
inline constexpr std::size_t wholeName = wholeWord - 1;  // all that stands before '='

/// The first row that matches acts, so the order counts.
inline constexpr std::array<OptionRow, 36> optionTable = {{
    {"-input", 4, NextPlainWord{&Options::input}},
    {"-output", 4, NextPlainWord{&Options::output}},
    {"-log", wholeWord, NextPlainWord{&Options::log}},
    {"-err", wholeWord, NextPlainWord{&Options::err}},
    {"-mod", wholeWord, NextPlainWord{&Options::module}},
    {"-percent", 4, NextPlainWord{&Options::percentFile}},
    {"-type", 4, SetChoice{&Options::type}},
    {"-ck", 3, SetChoice{&Options::ckMode}},
    {"-ce", 3, SetChoice{&Options::ceMode}},
    {"-ar", 3, SetChoice{&Options::arMode}},
    {"-ap", 3, SetChoice{&Options::apMode}},
    {"-oe", 3, SetChoice{&Options::oeMode}},
    {"-xor", 4, YesNo{&Options::xorSynthesis}},
    {"-reduce", 4, YesNo{&Options::reduce}},
    {"-nxt", 4, Flag{&Options::noXorOnT}},
    {"-ff_inv", 4, YesNo{&Options::ffBeforeInverter}},
    {"-sr", 4, YesNo{&Options::swapSetReset}},
    {"-ifb", 4, YesNo{&Options::internalFeedback}},
    {"-speed", 4, YesNo{&Options::speed}},
    {"-GUI", 4, Flag{&Options::gui}},
    {"-split", 4, Number{&Options::splitMax, 16, 0}},
    {"-share", 4, Number{&Options::shareMin, 2, 1}},
    {"-clust", 4, Number{&Options::clusterSize, 5, 1}},
    {"-invert", 4, YesNo{&Options::invert}},
    // Words with two dashes are matched whole.
    {"--lossless", wholeWord, Flag{&Options::lossless}},
    {"--verify", wholeWord, Flag{&Options::verify}},
    {"--minimize", wholeName, OwnEffort{&Options::minimize}},
    {"--factor", wholeName, OwnNumber{&Options::factorPrice, -1, false}},
    {"--depth", wholeName, OwnNumber{&Options::factorDepth, 0, true}},
    {"--report", wholeName, OwnWord{&Options::report}},
    {"--best", wholeWord, Flag{&Options::best}},
    {"--strict", wholeWord, Flag{&Options::strict}},
    {"--quiet", wholeWord, Flag{&Options::quiet}},
    {"--help", wholeWord, Flag{&Options::help}},
    {"--version", wholeWord, Flag{&Options::version}},
    {"--completion", wholeName, OwnWord{&Options::completion}},
}};

}  // namespace ostrel
