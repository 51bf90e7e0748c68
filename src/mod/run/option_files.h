// Option files: `@name` on the command line stands for the words of the file `name`.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace ostrel {

/// Passes over the words, each of which can bring new `@` words, that are made at most.
inline constexpr int maxOptionFileLevel = 4;

/// The names that stood behind an '@'.
struct OptionFiles {
  std::set<std::string> opened;
  std::set<std::string> missing;
};

/// Replaces the `@` words of a command line by the words of the files they name, pass by pass,
/// until none is left or the level is passed. Words are split at white space, with no comments and
/// no quoting; a file that can't be read adds nothing. The first word is carried along.
/// Gives the number of passes made, and adds the names of the files that it met to `files`.
int expandOptionFiles(std::vector<std::string>& words, int maxLevel, OptionFiles& files);

}  // namespace ostrel
