// Which Signals of the two files are the same, and what kind of value each has.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "verify/network.h"

namespace ostrel::verify {

struct Pairing {
  const Network& in;
  const Network& out;
  std::vector<std::optional<std::size_t>> toOut;  ///< by Signal of INPUT
  std::vector<std::optional<std::size_t>> toIn;   ///< by Signal of OUTPUT
  std::vector<bool> registered;                   ///< by Signal of INPUT: its value is state
  std::vector<bool> twoValued;                    ///< by Signal of INPUT: a pin that can be off

  const Signal* partner(std::size_t inSignal) const {
    return toOut[inSignal] ? &out.signals[*toOut[inSignal]] : nullptr;
  }
  bool isTwoValuedOut(std::size_t outSignal) const {
    return toIn[outSignal] && twoValued[*toIn[outSignal]];
  }
};

/// Whether an output enable is always on is asked of the solver, within the effort.
Pairing pairUp(const Network& in, const Network& out, int effort);

/// A Signal with a value in both files is a register of another kind, or one in one file only.
bool hasChangedType(const Pairing& pairing, std::size_t inSignal);

/// By Signal: some row of 1 has a literal of it.
std::vector<bool> readSignals(const Network& network);

/// The columns of INPUT that read nodes which OUTPUT lacks and which no row of 1 reads.
std::vector<bool> unreadColumns(const Pairing& pairing);

/// What is wrong with OUTPUT as a list of Signals, before any function is looked at: lost pins and
/// registers, new pins, nodes that came with state.
/// Each text names its Signal in front of a colon.
std::vector<std::string> structuralDifferences(const Pairing& pairing);

}  // namespace ostrel::verify
