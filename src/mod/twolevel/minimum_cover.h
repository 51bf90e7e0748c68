// The cover by all primes and the covering problem, for functions that have few primes.
#pragma once

#include <cstddef>
#include <optional>

#include "twolevel/covering.h"
#include "twolevel/diagram.h"
#include "twolevel/partial_function.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// A function between two others, and an irredundant cover of it by primes of `upper`.
struct CoverTask {
  Diagram& diagram;
  Diagram::Edge lower;
  Diagram::Edge upper;
  CubeList cover;
};

/// What the limits allow for one covering problem after the other.
inline CoveringWork coveringWork(const WorkLimits& limits) {
  return {Effort(limits.firstLookSteps), Effort(limits.searchSteps)};
}

/// How much of that is gone.
inline std::size_t stepsOf(const CoveringWork& work, const WorkLimits& limits) {
  return limits.firstLookSteps - work.firstLook.left() + limits.searchSteps - work.search.left();
}

/// Which cubes of a cover are essential, and what they leave of `lower`.
struct Essentials {
  CubeList essential;
  CubeList others;
  Diagram::Edge open;
};
Essentials partEssentials(const CoverTask& task);

/// The essential cubes and the fewest primes for the rest; a Minimum, or the best that the effort
/// allowed. Only covers of fewer than `cutoff` cubes are looked for; the bound holds for these and
/// says, where there is none, that it is at least that many. None where the primes or the points to
/// be covered are too many.
std::optional<MinimizedCover> minimumCover(const CoverTask& task, const Essentials& parted,
                                           std::size_t cutoff, const WorkLimits& limits);

}  // namespace ostrel
