// Primes that no cover can do without.
#pragma once

#include "minimizer/cube.h"
#include "twolevel/diagram.h"

namespace ostrel {

/// True if some point of `lower` lies in this prime implicant of `upper` and in no other. False,
/// whatever the answer would be, once the effort of the diagram is spent.
bool isEssential(Diagram& diagram, Diagram::Edge lower, Diagram::Edge upper, const Cube& prime);

}  // namespace ostrel
