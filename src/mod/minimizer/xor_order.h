// The order in which the cubes of an exclusive-or sum are tried.
#pragma once

#include <vector>

#include "minimizer/cube.h"

namespace ostrel {

/// Sorts the cubes by ascending number of dashes, so that the cubes with the most literals stand
/// first. The sort isn't stable, and the order that it gives equal keys decides which of two
/// equally good cubes is taken: it is part of the result.
template <PackedCube C>
void sortByDashes(std::vector<C>& cubes);

}  // namespace ostrel
