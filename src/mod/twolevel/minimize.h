// Two-level minimisation: the fewest cubes for a function and for its complement.
//
// The room knows cubes and diagrams and nothing of what the function is for. What it promises:
// the cubes of an answer cover every point that they must, hold no point that they must not, and
// but for answers that were given up, each is a prime implicant and none can be left out.
#pragma once

#include "twolevel/partial_function.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// Which of the two sets is to have few cubes; the other is left as the first step made it.
enum class WantedSets { Both, On, Off, Smaller };

struct MinimizedFunction {
  MinimizedCover on;
  MinimizedCover off;
  std::size_t steps = 0;  // that it took, a measure of its time
};

/// Covers of the function and of its complement, either of which may use the free points. Columns
/// stay as they are. The ON cover is never Unknown. The answer depends on the cubes and their order
/// alone. (Espresso's steps, Brayton et al., 1984, on diagrams, with all primes where they are
/// few.)
MinimizedFunction minimize(const PartialFunction& function, WantedSets wanted,
                           Thoroughness thoroughness);

}  // namespace ostrel
