// The order in which the cubes of an exclusive-or sum are tried.
#pragma once

#include <cstddef>

#include "minimizer/cube_list.h"

namespace ostrel {

/// Sorts the cubes by ascending number of dashes, so that the cubes with the most literals stand
/// first. The sort isn't stable, and the order that it gives equal keys decides which of two
/// equally good cubes is taken: it is part of the result.
void sortByDashes(CubeList& cubes);

}  // namespace ostrel
