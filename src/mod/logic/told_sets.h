// Which sets the options leave to a Signal.
#pragma once

#include "logic/signal.h"

namespace ostrel {

/// True if there is a reset or a set function.
bool isInitialized(const Signal& signal);

/// False under --lossless if the flip-flop stands before the inverter, and set and reset, which the
/// Signal has, could not follow an inversion of its data.
bool mayInvert(const Signal& signal);

/// The sets that a slot may choose from: one, or both, of which the smaller one is kept. SlotLogic
/// has only ON where inversion at the output is ruled out.
SetSelector toldSet(const Signal& signal, Slot slot);

}  // namespace ostrel
