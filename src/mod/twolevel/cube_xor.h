// A function as the exclusive OR of one cube and the rest.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "minimizer/cube_list.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// The function is left XOR right, or its complement is where the pair is turned.
struct CubeXor {
  Cube left;
  CubeList right;  // not empty
  bool isTurned;
};

/// The pair with the fewest cubes that is found for the OR of `on`, if right has fewer than `limit`
/// of them; turned ones only where they are of use. `off` has more cubes to try on the left: a
/// cover of the complement, or nothing. Adds the steps that it took to `steps`.
std::optional<CubeXor> findCubeXor(std::span<const Cube> on, std::span<const Cube> off,
                                   std::size_t limit, bool mayTurn, Thoroughness thoroughness,
                                   std::size_t& steps);

}  // namespace ostrel
