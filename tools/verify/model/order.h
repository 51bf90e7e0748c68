// In which order Signals can be replaced by their functions, and where loops are cut.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace ostrel::verify {

/// What a walk over the Signals of one file works on, by Signal.
struct Dependencies {
  std::vector<std::vector<std::size_t>> reads;  ///< the Signals that the value reads
  std::vector<bool> replaced;                   ///< its value is to come from its columns
  std::vector<bool> canCut;                     ///< a loop may be cut here
};

struct Order {
  std::vector<std::size_t> signals;  ///< each behind all that it reads; cut ones are not in it
  std::vector<bool> cut;
  std::optional<std::size_t> cycle;  ///< a Signal of a loop that can't be cut
};

/// Starts with the given cuts and adds the first Signal on each loop that may be cut.
/// A loop without one is reported, and cut all the same.
Order orderOf(const Dependencies& graph, std::vector<bool> cut);

}  // namespace ostrel::verify
