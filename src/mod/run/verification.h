// What --verify asks for: a result that another program has proven.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace ostrel {

/// Lets ostrel-verify, the one beside the program that runs or else the first on the path, compare
/// the input of the run with what `content` writes. `words` are those of the command line, the
/// program's name first. The verdict goes to standard output, where the log may go too. False, with
/// a message, if it is not that everything is proven.
bool isVerified(const std::vector<std::string>& words,
                const std::function<void(std::ostream&)>& content);

}  // namespace ostrel
