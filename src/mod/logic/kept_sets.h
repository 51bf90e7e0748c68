// Which set of a slot is kept, by the options, and by --lossless where the options would keep one
// that isn't there.
#pragma once

#include <string_view>

#include "logic/signal.h"

namespace ostrel {

/// The option that rules inversion at the output out, empty if none does.
std::string_view whyOnOnly(const Signal& signal);

/// The sets that SlotLogic may choose from: only ON where inversion at the output is ruled out.
SetSelector logicSelector(const Signal& signal);

/// The set that the options keep of a slot.
SetSelector toldSet(const Signal& signal, Slot slot);

/// True if `set` names a set without terms and the other one has some.
bool isMissing(const Equation& equation, SetSelector set);

/// The set that a filled slot keeps: the told one, but with --lossless never one that is missing.
SetSelector keptSet(const Signal& signal, Slot slot);

/// With --lossless, and up to the first choice of sets, works out the told set of a filled slot
/// where it is missing and the function would be lost.
void completeSet(Signal& signal, Slot slot);

/// True if it has a set or a reset, which say what a register holds at first.
bool isInitialized(const Signal& signal);

/// True if, with --lossless, set and reset, which the Signal has, can't follow an inversion of its
/// data in front of the inverter.
bool hasFixedInit(const Signal& signal);

/// False of such a Signal once it is known that the steps would leave it inverted.
bool mayInvert(const Signal& signal);

}  // namespace ostrel
