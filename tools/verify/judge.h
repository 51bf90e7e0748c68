// The judgement: every function of INPUT against its counterpart in OUTPUT.
#pragma once

#include <string>
#include <vector>

#include "fil/pla_file.h"
#include "verify/options.h"

namespace ostrel::verify {

enum class Outcome { Equivalent, Different, NotComparable };

struct Finding {
  Outcome outcome;
  std::string subject;  ///< Signal and function, or the Signal or file that is at fault
  std::string detail;   ///< the assignment or the reason; empty for what was proven
};

/// Either findings, or faults that make INPUT unusable as a design.
struct Verdict {
  std::vector<Finding> findings;    ///< faults of form first, then functions in INPUT's order
  std::vector<std::string> faults;  ///< of INPUT; then there are no findings

  std::size_t count(Outcome outcome) const;
};

/// The most conflicts a question may cost unless the user says otherwise: minutes at the worst.
inline constexpr int defaultEffort = 1'000'000;

/// Both files were read without a fatal fault.
Verdict verify(const PlaFile& input, const PlaFile& output, const RunOptions& options, int effort);

}  // namespace ostrel::verify
