// Which nodes of OUTPUT hold the complement of what they held in INPUT.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "verify/scene.h"

namespace ostrel::verify {

/// For given free values and senses, where each compared function breaks its meaning. The list
/// has the same functions each time.
using ConflictsOf =
    std::function<std::vector<Literal>(const Values& leaves, const std::vector<Literal>& senses)>;

struct Senses {
  std::vector<Literal> values;  ///< constants, by Signal of INPUT
  bool settled = true;          ///< false if the search ran into its limit
  std::size_t failing = 0;      ///< functions that the search had to leave out
};

/// Searches senses for the candidate Signals under which all functions hold, or else as many of
/// them as the search could keep.
Senses findSenses(Scene& scene, const std::vector<std::size_t>& candidates,
                  const ConflictsOf& conflictsOf);

}  // namespace ostrel::verify
