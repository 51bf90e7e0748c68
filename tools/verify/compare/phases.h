// Which nodes of OUTPUT hold the complement of what they held in INPUT.
//
// Under -ff_inv the flip-flop stands in front of the inverter, and the mark of a node moves into
// all its readers. The file does not say which nodes that happened to.
#pragma once

#include <vector>

#include "verify/compare/miter.h"

namespace ostrel::verify {

struct Phases {
  std::vector<Literal> values;  ///< constants, by Signal of INPUT
  bool settled = true;          ///< false if the effort did not suffice
};

/// The functions of a Signal that can be compared; set and reset cross where `exchanged`.
std::vector<Task> tasksOf(const Correspondence& correspondence, std::size_t signal, bool exchanged);

/// Whether set and reset change places with the polarity: under -ff_inv a change of the mark or of
/// the phase, but not of both, turns what resets the pin into what sets it.
bool exchangesSetReset(const Correspondence& correspondence, std::size_t signal, bool isTurned);

/// Searches phases under which all functions agree. Where there are none any phases do: some
/// function differs under them.
Phases findPhases(Miter& miter);

}  // namespace ostrel::verify
