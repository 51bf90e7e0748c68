// The way back from an exclusive-or sum to a sum of products.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
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

/// What xorExpand gives for all cubes but the one at `place`.
struct LeftOut {
  std::size_t place;
  CubeList sum;
};

/// The shortest of the sums without one of the cubes at `places`, which ascend; of equally short
/// ones the first, and none if there is no place. Cheaper than that many calls of xorExpand,
/// because the sums share most of their work, and because a sum isn't worked out if it is known to
/// be no shorter than the shortest so far: canBeat(place, length) tells whether it may have fewer
/// cubes than `length`.
std::optional<LeftOut> shortestLeftOut(
    std::span<const Cube> cubes, std::span<const std::size_t> places, std::size_t width,
    const std::function<bool(std::size_t place, std::size_t length)>& canBeat);

}  // namespace ostrel
