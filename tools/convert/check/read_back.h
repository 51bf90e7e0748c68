// Reads what the writers wrote, and nothing else, so that it can be compared with its source.
//
// These are no readers of Verilog and BLIF: they know the lines that the writers make, and every
// other line is a fault of a writer.
#pragma once

#include <string_view>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

/// The nets have the names that stand in the text; what stands behind no name has one that begins
/// with `$$`. A fault is a problem.
Netlist readBackVerilog(std::string_view text, Report& report);
Netlist readBackBlif(std::string_view text, Report& report);

}  // namespace ostrel::convert
