// Which points of a function lie in which primes, as a table for the covering problem.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "minimizer/cube_list.h"
#include "twolevel/diagram.h"

namespace ostrel {

/// The columns of a covering problem that cover one of its rows, in ascending order.
using CoveringRow = std::vector<std::uint32_t>;

/// For the points of `lower`, each of which lies in one of the primes, the numbers of the primes
/// that hold it. Of two rows one of which has all numbers of the other, both need not be there:
/// what meets the rows that are given meets them all. None where there are more than `limit` or the
/// effort of the diagram ends.
std::optional<std::vector<CoveringRow>> coveringRows(Diagram& diagram, Diagram::Edge lower,
                                                     std::span<const Cube> primes,
                                                     std::size_t limit);

}  // namespace ostrel
