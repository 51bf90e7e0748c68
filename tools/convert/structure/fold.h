// Which nets of a netlist stay nodes.
#pragma once

#include <cstddef>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

struct Folding {
  std::size_t terms = 16;  ///< the most that a reader may have after it took a net in
  bool flat = false;       ///< every net goes, within an effort
};

/// Replaces nets by their functions in all that read them. Those of ports stay, and those that the
/// user keeps; a flat design that the effort does not suffice for is a problem.
void fold(Netlist& netlist, const Folding& folding, Report& report);

}  // namespace ostrel::convert
