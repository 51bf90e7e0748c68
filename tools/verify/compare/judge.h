// The judgement on a pair of files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "fil/pla_file.h"
#include "run/options.h"
#include "verify/compare/finding.h"

namespace ostrel::verify {

/// The most conflicts of the solver that a run may cost unless the user says otherwise: minutes.
inline constexpr std::int64_t defaultEffort = 1'000'000;

struct Judging {
  std::int64_t effort = defaultEffort;
  std::filesystem::path questions;  ///< the folder for the solver's questions; empty for none
};

/// Either findings, or faults that make INPUT unusable as a design.
struct Verdict {
  std::vector<Finding> findings;    ///< faults of form first, then functions in INPUT's order
  std::vector<std::string> faults;  ///< of INPUT, or of the question files

  std::size_t count(Outcome outcome) const;
};

/// Both files were read without a fatal fault. `options` are those of the run.
Verdict verify(const PlaFile& input, const PlaFile& output, const Options& options,
               const Judging& judging);

}  // namespace ostrel::verify
