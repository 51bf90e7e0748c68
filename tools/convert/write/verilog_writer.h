// A netlist as a Verilog module.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "convert/model/netlist.h"

namespace ostrel::convert {

/// Writes one module with the ports of the netlist: a wire for each node, an always block for each
/// register, a conditional assignment for each pin that can be off. There are no don't-cares
/// left. Gives the name of each net as it stands in the text, with the backslash and
/// the blank of an escaped one.
std::vector<std::string> writeVerilog(const Netlist& netlist, std::ostream& out);

}  // namespace ostrel::convert
