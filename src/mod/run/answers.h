// What --help, --version and --completion print in place of a run.
#pragma once

#include <iosfwd>

#include "run/options.h"

namespace ostrel {

/// Answers the one of the three that stands first in this sentence on `out`. The exit code: 0, or 2
/// with a line on `err` for a shell that is not known.
int answer(const Options& opts, std::ostream& out, std::ostream& err);

}  // namespace ostrel
