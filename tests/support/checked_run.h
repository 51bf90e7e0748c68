// A whole run in this process, as told and with --lossless, with what must hold of every run: the
// output can be read again; where the verifier calls it different, it knows the told step that
// loses this, and never with --lossless; and the two outputs are the same, unless the log notes
// what was chosen in another way. A breach ends the process with the output on stderr.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "fil/pla_file.h"
#include "fil/status.h"

/// How many bytes choose the options of a run.
inline constexpr std::size_t optionBytes = 4;

/// The options of a run, as words of its command line.
std::vector<std::string> wordsFrom(std::span<const std::uint8_t, optionBytes> bytes);

struct RunResult {
  ostrel::Status status = ostrel::Status::Ok;
  std::string written;  ///< empty if the run failed, or if its file has no columns
  std::string log;
};

/// One run with these words.
RunResult runWith(const ostrel::PlaFile& input, const std::vector<std::string>& words);

/// What the verifier says of the result under the options of the last run, within so many conflicts
/// of its solver.
struct Judgement {
  bool isProven = true;   ///< neither different nor undecided
  std::string different;  ///< the first difference; one that no told step explains if there is one
  bool isExplained = true;
};
Judgement judge(const ostrel::PlaFile& input, const RunResult& result, std::int64_t effort = 2000);

/// Runs `text` as the input file. Without effect if it can't be read or is no design.
void runChecked(std::span<const std::uint8_t, optionBytes> options, const std::string& text);
