// From the columns of a design to those that one function uses, and back.
//
// A function reads few of the columns of its design, and all algorithms on cubes are the faster the
// fewer columns there are. So its cubes are made compact first, and the results restored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "minimizer/column_set.h"
#include "minimizer/cube.h"

namespace ostrel {

/// The cube with each literal moved to the column targets[its own column]; no two of them have one
/// target.
Cube remapCube(const Cube& cube, const std::uint32_t* targets);

class ColumnMap {
 public:
  /// `used` are columns below `width`; their ranks in ascending order are the compact columns.
  ColumnMap(const ColumnSet& used, std::size_t width);

  std::size_t compactWidth() const { return used_.size(); }

  /// A cube, which has literals in columns in use only, in the compact columns.
  Cube compact(const Cube& cube) const;

  /// A cube of compact columns in those of the design; the columns that are not in use are dashes.
  Cube restore(const Cube& cube) const;

 private:
  std::vector<std::uint32_t> used_;
  // For each column in use its rank. The others are never set: a design has thousands of columns
  // and a map is made for each function, so clearing them would take longer than using the map.
  std::unique_ptr<std::uint32_t[]> ranks_;
};

}  // namespace ostrel
