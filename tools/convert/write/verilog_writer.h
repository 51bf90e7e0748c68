// A netlist as a Verilog module.
#pragma once

#include <ostream>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

/// Writes one module with the ports of the netlist: a wire for each node, an always block for each
/// register, a conditional assignment for each pin that can be off. Don't-cares take the value that
/// needs fewer terms; that there were some is a note.
void writeVerilog(const Netlist& netlist, std::ostream& out, Report& report);

}  // namespace ostrel::convert
