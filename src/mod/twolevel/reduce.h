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

/// The cubes of a cover of `lower`, taken in the order of `places` and each made as small as the
/// others, as they are then, allow; they still cover `lower`. A cube that nothing is left of isn't
/// in the answer. Anything where the effort of the diagram ends.
CubeList reduceCover(Diagram& diagram, Diagram::Edge lower, std::span<const Cube> cover,
                     std::span<const std::size_t> places);

}  // namespace ostrel
