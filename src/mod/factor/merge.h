// Nodes that go back into their readers.
#pragma once

#include "factor/network.h"
#include "minimizer/effort.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// Brings every function into few terms, in both sets.
void minimizeNetwork(Network& network, Thoroughness thoroughness, Effort& effort);

/// Puts each node into all its readers and drops it, as long as that makes the network cost less:
/// terms, nodes at their price, and cuts of what is too wide.
void mergeNodes(Network& network, const FactorLimits& limits, Effort& effort);

}  // namespace ostrel
