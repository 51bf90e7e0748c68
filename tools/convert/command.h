// The command line of ostrel-convert.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel::convert {

/// Runs the program with the words behind its name, and gives its exit code: 0 written, 1 something
/// that the target can't say or that could not be proven, 2 a bad input or command line.
int convertMain(const std::vector<std::string>& arguments, std::istream& in, std::ostream& out,
                std::ostream& err);

}  // namespace ostrel::convert
