// The form that a netlist has as a PLA file: which nets are Signals, and the columns and rows.
#pragma once

#include "convert/model/netlist.h"
#include "convert/model/report.h"
#include "fil/pla_file.h"

namespace ostrel::convert {

/// For ostrel, or for espresso and its kin, which know no marks and no pairs.
enum class Dialect : unsigned char { Tt2, Pla };

/// The whole file. For ostrel its type is f, or fdr where a function has don't-cares, since ostrel
/// uses them only there: the zeros of all functions are worked out, within an effort. In the other
/// dialect don't-cares stay as they are listed, inverted functions are worked out, and pairs and
/// nodes earn a note. What a PLA file can't say goes to the problems, a changed name to the notes.
PlaFile plaForm(const Netlist& netlist, Dialect dialect, Report& report);

}  // namespace ostrel::convert
