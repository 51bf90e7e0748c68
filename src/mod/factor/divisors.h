// Divisors that functions have in common, each given a node.
#pragma once

#include "factor/network.h"
#include "minimizer/effort.h"

namespace ostrel {

/// Gives nodes to divisors of the functions' ON covers, the most valuable first, until none saves
/// literals; no function gets more than `limits.depth` nodes one behind another. False, with the
/// network as it was, where the pairs of cubes are more than the effort. OFF covers go.
/// (Rajski and Vasudevamurthi, fast extract, 1992.)
bool extractDivisors(Network& network, const FactorLimits& limits, Effort& effort);

}  // namespace ostrel
