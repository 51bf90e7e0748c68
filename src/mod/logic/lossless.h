// What --lossless asks about one Signal.
//
// The passes do what they are told, also where that gives a function, a kind of register or a sense
// up. Before the first choice every function is brought into a form that the told choices keep, and
// behind the last one set, reset and the words of the columns follow what was chosen. In between a
// choice asks whether it would lose something: which set is kept (kept_sets.h), who reads a node,
// what a fold does to marks, which Signal is reused and in which sense.
#pragma once

#include "fil/status.h"
#include "logic/signal.h"

namespace ostrel {

/// Brings what was read into a form that no later choice can lose: a half alone becomes the plain
/// function. Sees which columns may go, as long as the rows are at hand.
void complete(Signal& signal, PlaType type);

/// Lets set and reset follow what has become of the polarity since complete(), and gives the
/// columns extensions that are read back as the Signal's type. Failed, with a message, if there are
/// none, or if set and reset may not follow, which then shows in keepsSense. `isRead` says whether
/// somebody reads the Signal to whom its sense matters.
Status settle(Signal& signal, bool isRead);

}  // namespace ostrel
