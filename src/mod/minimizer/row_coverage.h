// The question whether a cube is covered by the OR of other cubes, for short lists of cubes of one
// block each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/cube.h"
#include "minimizer/effort.h"

namespace ostrel {

/// A list of at most `capacity` cubes. A step of a question is a few word operations for each
/// cube, whatever the number of columns. The object keeps its memory from list to list.
class RowCoverage {
 public:
  static constexpr std::size_t capacity = 64;

  /// Starts a new list.
  void reset() {
    rows_.clear();
    present_ = 0;
  }

  /// Adds a cube; its number is the count of those that were added before.
  void add(const NarrowCube& cube) {
    present_ |= std::uint64_t{1} << rows_.size();
    rows_.push_back(cube.block(0));
  }

  /// Takes the cube of a number out.
  void remove(std::size_t number) { present_ &= ~(std::uint64_t{1} << number); }

  /// True if every point of `cube`, which has this number, lies in another cube of the list. Each
  /// pass over the cubes of a question spends a step for each of them; false, whatever the answer
  /// would be, once the effort is spent.
  bool isCovered(const NarrowCube& cube, std::size_t number, Effort& effort);

 private:
  using Row = Cube::Block;
  enum class Verdict { Covered, Uncovered, Open };

  bool isTautology(Effort& effort);
  Verdict judge(std::size_t begin, Effort& effort);
  void split(std::size_t begin);

  std::vector<Row> rows_;
  std::uint64_t present_ = 0;  // the numbers of the cubes that are still there

  // The open questions, one behind the other: are these cubes together true everywhere?
  std::vector<Row> open_;
  std::vector<std::size_t> begins_;
};

}  // namespace ostrel
