// What goes into a two-level minimisation, and what comes out of it for each set.
#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "minimizer/cube_list.h"

namespace ostrel {

/// A function that is 1 on `on`, and elsewhere 0 or, where that is free, either.
struct PartialFunction {
  CubeList on;
  CubeList dontCare;            // free where `on` isn't
  std::optional<CubeList> off;  // if there, all that lies in neither `on` nor `off` is free too
};

/// What is known of a cover.
enum class CoverState {
  Unknown,      // no cover was found within the effort
  Given,        // cubes of the function as given, raised and thinned out as far as that went
  Irredundant,  // primes, none of which can be left out, and no more work was done
  Improved,     // the search came to its end or its effort, and the minimum may be smaller
  Minimum       // no cover has fewer cubes
};

struct MinimizedCover {
  CubeList cubes;
  CoverState state = CoverState::Unknown;
  std::size_t bound = 0;  // no cover has fewer cubes; equal to their number for a Minimum
  std::size_t steps = 0;  // of raising and covering that it took
};

/// Cubes with a bound: a Minimum where the two meet, else as the caller says.
inline MinimizedCover boundedCover(CubeList cubes, std::size_t bound, CoverState otherwise) {
  const bool isMinimum = cubes.size() == bound;
  return {std::move(cubes), isMinimum ? CoverState::Minimum : otherwise, bound, 0};
}

}  // namespace ostrel
