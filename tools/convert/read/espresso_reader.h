// Two-level truth tables as espresso and its kin know them.
#pragma once

#include <string>
#include <string_view>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

/// Reads a .pla text of type f, fd (the default), fr or fdr; `.phase` 0 says that the rows give the
/// complement. Columns without names are i0, i1, ... and o0, o1, ... A text that declares pins is a
/// .tt2 file, as the writer of .pla makes it. A fault is `file:line: ...`.
Netlist readEspresso(std::string_view text, const std::string& file, Report& report);

}  // namespace ostrel::convert
