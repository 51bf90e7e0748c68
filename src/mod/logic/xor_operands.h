// Whether a Signal's function becomes an exclusive-or pair, and how the pair is laid out.
//
// Idea. A pair is taken if it has fewer terms than the smaller set of the function. Of a pair the
// cheaper halves are kept: both ON or both OFF sets, since the exclusive OR of two complements is
// that of the functions, and a half of one term counts as a cluster less.
//
// Example. ON and OFF counts of 3 and 1 on the left, 3 and 2 on the right: both OFF sets are taken,
// and the one of one term stands on the left.
//
// Cost. One exclusive-or synthesis, which has its own budget.
//
// Order. Which half is left is seen in the output; at equal cost the halves stay where they are.
//
// Until the very end the left operand is the place of a single term: devices feed one product term
// into the exclusive-or gate.
#pragma once

#include "logic/signal.h"
#include "logic/thoroughness.h"

namespace ostrel {

/// Replaces SlotLogic by an XOR pair if the pair has fewer terms. A function of fewer than three
/// terms is left alone, and so is a Signal declared inverted. True if there is a pair afterwards,
/// one that was there before included.
bool synthesizeXor(Signal& signal);

/// Likewise, and then a wider search for a pair of fewer terms still, as far as the diligence goes;
/// for --minimize.
bool synthesizeXorWidely(Signal& signal, Diligence& diligence);

/// Chooses the sets of an XOR pair and which operand stands on the left.
void orderXorPair(Signal& signal);

}  // namespace ostrel
