// The command line of ostrel-report.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel::report {

/// Runs the program with the words behind its name, and gives its exit code: 0 written, 2 a bad
/// input or command line, or a page that can't be written.
int reportMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace ostrel::report
