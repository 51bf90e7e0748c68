// Every function of INPUT against its counterpart in OUTPUT.
#pragma once

#include <vector>

#include "verify/compare/finding.h"
#include "verify/compare/miter.h"

namespace ostrel::verify {

/// The verdict on each function, Signal by Signal in the order of INPUT.
/// `ffBeforeInverter`: OUTPUT was written under -ff_inv.
std::vector<Finding> compareFunctions(Miter& miter, bool ffBeforeInverter);

}  // namespace ostrel::verify
