// Reads a PLA file line by line and says what the optimizer's reader takes in silence.
//
// That reader goes on where it can: a row that is too short takes the head of the next line, a
// misspelt directive is skipped, an unknown extension counts as none. This one builds nothing and
// only complains, with the line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::verify {

struct Complaint {
  std::size_t line;  ///< from 1 on
  std::string text;
  bool isHarmless = false;  ///< the file says what it seems to say all the same
};

/// The complaints in the order of their lines; none for a file that says what it seems to say.
std::vector<Complaint> readStrictly(std::string_view text);

}  // namespace ostrel::verify
