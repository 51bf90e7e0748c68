// The cover by all primes and the covering problem, for functions that have few primes.
#pragma once

#include <optional>

#include "twolevel/diagram.h"
#include "twolevel/minimize.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// A function between two others, and an irredundant cover of it by primes of `upper`.
struct CoverTask {
  Diagram& diagram;
  Diagram::Edge lower;
  Diagram::Edge upper;
  CubeList cover;
};

/// Which cubes of a cover are essential, and what they leave of `lower`.
struct Essentials {
  CubeList essential;
  CubeList others;
  Diagram::Edge open;
};
Essentials partEssentials(const CoverTask& task);

/// The essential cubes and the fewest primes for the rest; a Minimum, or the best that the effort
/// allowed. None where the primes or the points to be covered are too many.
std::optional<MinimizedCover> minimumCover(const CoverTask& task, const Essentials& parted,
                                           const WorkLimits& limits);

}  // namespace ostrel
