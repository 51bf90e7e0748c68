// From a sum of products to an exclusive-or sum of products of the same function.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "minimizer/cube.h"

namespace ostrel {

/// A list of cubes whose exclusive OR is the OR of `cubes`, in ascending number of dashes.
///
/// `cubes` has width `width`. The result depends on the order of `cubes`, and can be longer than
/// they are. There is none for fewer than two cubes or fewer than two columns, or if more than 128
/// cubes stand in the disjoint cover, or in one group of equal dash count, when these are counted.
template <PackedCube C>
std::optional<std::vector<C>> xorCover(std::span<const C> cubes, std::size_t width);

}  // namespace ostrel
