// A PLA file as a netlist.
#pragma once

#include <string_view>

#include "convert/model/netlist.h"
#include "convert/model/report.h"
#include "fil/pla_file.h"

namespace ostrel::convert {

/// Reads the text of a .tt2 or .tt3 file, strictly: whatever the optimizer's reader would take in
/// silence is a fault, `file:line: ...`. Signals that no netlist can hold are problems.
Netlist readTt2(std::string_view text, const std::string& file, Report& report);

/// The netlist of a file that was read. `file` names it in faults.
Netlist netlistOf(const PlaFile& pla, const std::string& file, Report& report);

}  // namespace ostrel::convert
