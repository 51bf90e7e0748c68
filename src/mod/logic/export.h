// What a Signal contributes to the written file.
#pragma once

#include <vector>

#include "fil/pla_name.h"
#include "logic/signal.h"

namespace ostrel {

/// The Equations with terms, in the order of their output columns. A full pair hides SlotLogic.
std::vector<const Equation*> exportedEquations(const Signal& signal);

/// The Signal's record in the list of pins or nodes.
PlaName declarationName(const Signal& signal);

/// The extension with which the Equation is written.
Extension writtenExtension(const Equation& equation);

/// The record of an output column, for one of the Signal's Equations.
PlaName outputName(const Signal& signal, const Equation& equation);

/// The record of an input column.
PlaName inputName(const InputColumn& column);

}  // namespace ostrel
