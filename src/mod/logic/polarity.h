// Which sets the Equations of a Signal keep.
#pragma once

#include "logic/signal.h"

namespace ostrel {

/// Minimises the logic and works its missing sets out, as far as the choice needs them. Logic that
/// splitting has changed also chooses its set anew.
void reduce(Signal& signal);

/// Makes every Equation keep one set, as the options say.
void choosePolarity(Signal& signal);

/// Lets set and reset change places, and notes it.
void exchangeSetAndReset(Signal& signal);

/// Brings inverted constants into plain form.
void normalizePolarity(Signal& signal);

}  // namespace ostrel
