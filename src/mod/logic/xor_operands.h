// Whether a Signal's function becomes an exclusive-or pair, and how the pair is laid out.
//
// Until the very end the left operand is the place of a single term: devices feed one product term
// into the exclusive-or gate.
#pragma once

#include "logic/signal.h"

namespace ostrel {

/// Replaces SlotLogic by an XOR pair if the pair has fewer terms. A function of fewer than three
/// terms is left alone, and so is a Signal declared inverted. True if there is a pair afterwards,
/// one that was there before included.
bool synthesizeXor(Signal& signal);

/// Chooses the sets of an XOR pair and which operand stands on the left.
void orderXorPair(Signal& signal);

}  // namespace ostrel
