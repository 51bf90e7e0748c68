// Orders of columns for decision diagrams.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/cube_list.h"

namespace ostrel {

/// How a diagram asks for columns; which is best can't be told without trying.
enum class ColumnOrder {
  ByAttraction,   // each behind those that it stands in cubes with
  MostUsedFirst,  // by the number of cubes that read it
  AsGiven
};

/// The columns that the cubes read, in the order in which a diagram is to ask for them.
std::vector<std::uint32_t> orderedColumns(std::span<const Cube> cubes, ColumnOrder order);

}  // namespace ostrel
