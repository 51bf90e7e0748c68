// The plain list of Equations that are candidates for splitting.
#pragma once

#include <vector>

namespace ostrel {

class Equation;

/// Candidates in the order in which they were found; the Equations belong to their Signals.
using EquationList = std::vector<Equation*>;

}  // namespace ostrel
