// What --lossless asks about one Signal.
//
// The passes do what they are told, also where that gives a function, a kind of register or a sense
// up. Each question here stands at one place of one pass and changes its choice only where the told
// one would lose something, which is then noted in the log; without --lossless the answer is always
// the told choice.
#pragma once

#include "fil/status.h"
#include "logic/signal.h"

namespace ostrel {

/// The set that a filled slot keeps: the told one, or the other one where there is none of its
/// terms.
SetSelector heldSet(const Signal& signal, Slot slot);

/// Brings what was read into a form that no later choice can lose: a half alone or beside a
/// constant becomes the plain function, and a set that has to be kept and isn't there is worked
/// out.
void complete(Signal& signal, PlaType type);

/// Lets set and reset follow what has become of the polarity since complete(), and gives the
/// columns extensions that are read back as the Signal's type. Failed, with a message, if there are
/// none.
Status settle(Signal& signal);

}  // namespace ostrel
