// Which nodes come out as their complement under -ff_inv.
//
// There the flip-flop stands in front of the inverter, and the mark of a node moves into all its
// readers. The file does not say which nodes that happened to.
#pragma once

#include "verify/comparer.h"
#include "verify/excuses.h"

namespace ostrel::verify {

/// The senses under which the functions of the two files agree best.
Senses findTurnedNodes(Comparer& comparer, const Pairing& pairing, const RunOptions& options,
                       const Excuses& excuses);

}  // namespace ostrel::verify
