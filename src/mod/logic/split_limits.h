// Which of a Signal's Equations are too wide and must give terms to buried nodes.
#pragma once

#include <vector>

#include "logic/signal.h"

namespace ostrel {

/// An Equation that is to be split, and the Signal that it belongs to.
struct Candidate {
  Signal& signal;
  Equation& equation;
};

/// Whether a Signal that passes the maximum of the options earns a note.
enum class Announce : bool { No, Yes };

/// Adds the logic Equations with more terms than the limit to the candidates. The limit is raised
/// to what is worth sharing, and lowered by the gate's own term for a right XOR operand.
void addWideLogic(Signal& signal, int limit, Announce announce, std::vector<Candidate>& candidates);

/// Adds the left XOR operand and the control Equations that are wider than one may be, with a
/// note for each.
void addWideControls(Signal& signal, std::vector<Candidate>& candidates);

}  // namespace ostrel
