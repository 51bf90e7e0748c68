// The program: ostrel-verify INPUT OUTPUT [the options of that run].
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel::verify {

/// Runs the program on its arguments, without its own name. The result is the exit code:
/// 0 proven, 1 different, 2 INPUT unreadable or wrong usage, 3 not decided within the effort.
int verifyMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace ostrel::verify
