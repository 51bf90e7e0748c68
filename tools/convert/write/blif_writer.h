// A netlist as BLIF.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "convert/model/netlist.h"

namespace ostrel::convert {

/// Writes one model: `.names` for functions, `.latch` for registers of data and clock alone, and
/// for all others `.subckt` cells of the names that yosys gives to simple cells. A pin that can be
/// off is input and output. Gives the name of each net in the text.
std::vector<std::string> writeBlif(const Netlist& netlist, std::ostream& out);

}  // namespace ostrel::convert
