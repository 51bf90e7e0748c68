// The JSON netlist of yosys.
#pragma once

#include <string>
#include <string_view>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

/// Reads the one module of the text, or its top, after `write_json`: flat, of simple cells, `$lut`
/// and `$sop`. A fault names the line, or the path in the JSON. Each bit of a port gets a net of
/// its own name.
Netlist readJson(std::string_view text, const std::string& file, Report& report);

}  // namespace ostrel::convert
