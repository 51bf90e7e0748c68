// --strict: what the lenient reading of a command line passes over in silence.
#pragma once

#include <string>
#include <vector>

#include "run/command_line.h"

namespace ostrel {

/// A line for each word that does nothing or not what it seems to say, in the order of the words:
/// an option that there isn't, with the nearest one that there is (one that begins so, else fewest
/// edits; the first of the table among equals); a value that is none; a word that nothing takes, or
/// that an option takes from behind another one; an option file that can't be read. Then the log
/// and the file for messages, where these can't be opened. Empty if every word has its effect.
std::vector<std::string> complaints(const CommandLine& line);

}  // namespace ostrel
