// Which Signals of the two files are the same, and what kind of value each has.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "verify/model/network.h"

namespace ostrel::verify {

struct Correspondence {
  const Network& in;
  const Network& out;
  std::vector<std::optional<std::size_t>> toOut;  ///< by Signal of INPUT
  std::vector<std::optional<std::size_t>> toIn;   ///< by Signal of OUTPUT
  std::vector<bool> registered;                   ///< by Signal of INPUT: its value is state
  std::vector<bool> twoValued;                    ///< by Signal of INPUT: a pin that can be off

  const Signal* partner(std::size_t inSignal) const {
    return toOut[inSignal] ? &out.signals[*toOut[inSignal]] : nullptr;
  }
};

/// Says of an output enable that it is never off.
using AlwaysOn = std::function<bool(const Network&, const Function&)>;

/// Pairs Signals by name. A combinational node that nothing reads is gone from a design; where
/// OUTPUT reads a node of its name, that one is new.
Correspondence correspond(const Network& in, const Network& out, const AlwaysOn& alwaysOn);

/// By Signal: some function has a literal of it.
std::vector<bool> readSignals(const Network& network);

}  // namespace ostrel::verify
