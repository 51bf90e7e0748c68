// From the columns of cubes to the levels of a diagram, and back.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/column_map.h"
#include "minimizer/cube_list.h"
#include "twolevel/column_order.h"

namespace ostrel {

/// The orders that are worth trying, the most promising one first.
inline constexpr std::array columnOrders = {ColumnOrder::ByAttraction, ColumnOrder::MostUsedFirst,
                                            ColumnOrder::AsGiven};

/// The columns that some cubes read, numbered in the order in which a diagram asks for them.
class Renamed {
 public:
  Renamed(std::span<const Cube> cubes, ColumnOrder order)
      : columns_(orderedColumns(cubes, order)),
        levels_(columns_.empty() ? 0 : *std::max_element(columns_.begin(), columns_.end()) + 1U) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      levels_[columns_[i]] = static_cast<std::uint32_t>(i);
    }
  }

  std::size_t width() const { return columns_.size(); }

  /// Cubes that read no other columns, with their levels; and the other way round.
  CubeList toLevels(std::span<const Cube> cubes) const { return mapped(cubes, levels_); }
  CubeList toColumns(std::span<const Cube> cubes) const { return mapped(cubes, columns_); }

 private:
  static CubeList mapped(std::span<const Cube> cubes, const std::vector<std::uint32_t>& map) {
    CubeList result;
    result.reserve(cubes.size());
    for (const Cube& cube : cubes) result.push_back(remapCube(cube, map.data()));
    return result;
  }

  std::vector<std::uint32_t> columns_;
  std::vector<std::uint32_t> levels_;
};

}  // namespace ostrel
