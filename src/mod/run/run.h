// One run of the program, from the words of its command line to its exit code.
#pragma once

#include <string>
#include <vector>

namespace ostrel {

/// 0: the output was written, to its last byte. 1: the design was rejected. 2: a file could not be
/// opened, read or written, or usage was printed.
int runProgram(const std::vector<std::string>& words);

}  // namespace ostrel
