// Multi-level logic from two-level covers: what functions have in common gets a node, where that
// pays.
//
// The room knows covers and numbers of columns, and nothing of what they stand for.
#pragma once

#include "factor/network.h"

namespace ostrel {

/// A network for the outputs of one without nodes, whose ON covers are given: each output has its
/// function, nodes are in the order in which they may be built, and no function is the constant
/// that an output wasn't. Functions can be wider than they may be where a cut costs less. False,
/// with the network as it was, where the effort does not go that far.
bool factor(Network& network, const FactorLimits& limits);

}  // namespace ostrel
