// Two-level minimisation: the fewest cubes for a function and for its complement.
//
// The room knows cubes and diagrams and nothing of what the function is for. What it promises:
// the cubes of an answer cover every point that they must, hold no point that they must not, and
// but for answers that were given up, each is a prime implicant and none can be left out.
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

/// How much work may be done for one function.
enum class Thoroughness { Fast, Normal, Deep };

/// Which of the two sets is to have few cubes; the other is left as the first step made it.
enum class WantedSets { Both, On, Off, Smaller };

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
};

/// Cubes with a bound: a Minimum where the two meet, else as the caller says.
inline MinimizedCover boundedCover(CubeList cubes, std::size_t bound, CoverState otherwise) {
  const bool isMinimum = cubes.size() == bound;
  return {std::move(cubes), isMinimum ? CoverState::Minimum : otherwise, bound};
}

struct MinimizedFunction {
  MinimizedCover on;
  MinimizedCover off;
};

/// Covers of the function and of its complement, either of which may use the free points. Columns
/// stay as they are. The ON cover is never Unknown. The answer depends on the cubes and their order
/// alone. (Espresso's steps, Brayton et al., 1984, on diagrams, with all primes where they are
/// few.)
MinimizedFunction minimize(const PartialFunction& function, WantedSets wanted,
                           Thoroughness thoroughness);

}  // namespace ostrel
