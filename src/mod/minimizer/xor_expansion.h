// The way back from an exclusive-or sum to a sum of products.
#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "minimizer/cube_list.h"

namespace ostrel {

/// The sum of products of the exclusive OR of the cubes, which have `width` columns.
///
/// Two equal cubes cancel. A universal cube inverts the rest; if nothing is left of the rest, the
/// result is empty all the same, as `complementList` of nothing is. A list of universal cubes
/// alone gives the universal cube if there is an odd number of them, else the empty list. The
/// result can be exponentially long in bad cases; callers bound what they hand in.
CubeList xorExpand(std::span<const Cube> cubes, std::size_t width);

/// Calls visit(i, sum) for i from 0 to count - 1, where `sum` is what xorExpand gives for the cubes
/// without the i-th. Cheaper than that many calls: the sums share most of their work.
void forEachLeftOut(std::span<const Cube> cubes, std::size_t count, std::size_t width,
                    const std::function<void(std::size_t, CubeList)>& visit);

}  // namespace ostrel
