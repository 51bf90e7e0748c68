// What each cube of a cover is really needed for.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "minimizer/cube_list.h"
#include "twolevel/diagram.h"

namespace ostrel {

/// The smallest cube that holds all points of f, which is not constant 0.
Cube supercube(const Diagram& diagram, Diagram::Edge f);

/// For each cube of a cover of `lower` the smallest cube that holds the points of `lower` which no
/// other cube holds; none for a cube without such points. Anything where the effort ends.
CubeList reducedCubes(Diagram& diagram, Diagram::Edge lower, std::span<const Cube> cover);

}  // namespace ostrel
