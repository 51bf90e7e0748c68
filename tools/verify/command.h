// The program: ostrel-verify INPUT OUTPUT [the options of that run].
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel::verify {

/// Runs the program on its arguments, without its own name. The result is the exit code:
/// 0 equivalent, 1 different, 2 unreadable or usage, 3 nothing differs but something could not be
/// compared.
int verifyMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace ostrel::verify
