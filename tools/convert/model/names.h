// Names that a PLA file can hold, and the property lines that keep what it can't.
//
// Example: the nets `fsm.state` and `FSM_STATE` and the port `d` with the bits d[0] to d[3] give
//
//   #$ PROPERTY convert port input d 3 0
//   #$ PROPERTY convert name fsm_state fsm.state
//   #$ PROPERTY convert name FSM_STATE_2 FSM_STATE
//
// A character that ends a base name or begins something else becomes `_`; a name that is taken by
// then, whatever its case, gets the first free number behind it, from 2 on. In the lines a
// character that is no printable one of ASCII, or is `%`, stands as `%` and two hexadecimal digits.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "convert/model/netlist.h"
#include "fil/text.h"

namespace ostrel::convert {

/// Gives names that are legal and unlike all others that it gave.
class NameTable {
 public:
  /// The name itself where it is legal and free.
  std::string take(std::string_view wanted);

 private:
  std::unordered_set<std::string, NoCaseHash, NoCaseEqual> taken_;
  std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> next_;
};

std::string portLine(const Port& port);
std::string nameLine(std::string_view given, std::string_view original);

/// What such lines say.
struct KeptNames {
  std::vector<Port> ports;                                 ///< without their bits' nets
  std::vector<std::size_t> widths;                         ///< of the ports
  std::size_t allBits = 0;                                 ///< the widths together
  std::unordered_map<std::string, std::string> originals;  ///< by the name in the file
  std::vector<std::string> otherLines;                     ///< of properties

  /// The original of a name, or the name.
  const std::string& original(const std::string& name) const;
};

/// Takes our lines out of the lines of a property; a line of ours that is none is another line.
void readKeptNames(std::string_view propertyLines, KeptNames& kept);

}  // namespace ostrel::convert
