// The form that a netlist has as a PLA file: which nets are Signals, and the columns and rows.
#pragma once

#include "convert/model/netlist.h"
#include "convert/model/report.h"
#include "fil/pla_file.h"

namespace ostrel::convert {

/// The whole file. Its type is f for a netlist without don't-cares, fd where they are listed, and
/// fdr where zeros are: then the zeros of all functions are worked out within an effort. What a PLA
/// file can't say goes to the problems, a changed name to the notes.
PlaFile plaForm(const Netlist& netlist, Report& report);

}  // namespace ostrel::convert
