// What a conversion has to say to its user.
#pragma once

#include <string>
#include <vector>

namespace ostrel::convert {

struct Report {
  std::vector<std::string> faults;    ///< the input can't be read: whole lines, with file and place
  std::vector<std::string> problems;  ///< what can't be said, by name: nothing is written then
  std::vector<std::string> notes;     ///< what changes no function

  bool isClean() const { return faults.empty() && problems.empty(); }
};

}  // namespace ostrel::convert
