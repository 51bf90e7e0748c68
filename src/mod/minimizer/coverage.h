// The question whether a cube is covered by the OR of other cubes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/cube.h"

namespace ostrel {

/// One question at a time: begin() with the cube, add() the others, then ask isCovered(). The
/// object keeps its memory from question to question.
class Coverage {
 public:
  /// Starts a question about `cube`; all cubes of the question have literals below `width` only.
  template <PackedCube C>
  void begin(const C& cube, std::size_t width);

  /// Adds cubes to those that may cover.
  template <PackedCube C>
  void add(std::span<const C> others);

  /// True if every point of the cube lies in one of the added cubes. It ends the question.
  bool isCovered();

 private:
  enum class Verdict { Covered, Uncovered, Open };

  /// What the rows of a segment have in 64 columns: each mask holds the columns in which some row
  /// has a "1" or a "0", and those in which this is the only literal of a row.
  struct Columns {
    std::uint64_t ones = 0;
    std::uint64_t zeros = 0;
    std::uint64_t loneOnes = 0;
    std::uint64_t loneZeros = 0;
  };

  Verdict judge(std::size_t begin);
  bool look(std::size_t begin);
  bool settleColumns(std::size_t begin);
  void split(std::size_t begin);
  std::size_t shortestRow(std::size_t begin) const;
  std::size_t copyRow(std::size_t from, std::size_t to);
  void makeRoom(std::size_t blocks);

  std::size_t stride_ = 1;           // blocks of a row
  std::vector<Cube::Block> cube_;    // the cube in question, as a row
  std::vector<Cube::Block> rows_;    // the open sub-questions, one behind the other; never shrinks
  std::size_t end_ = 0;              // where the last of them ends
  std::vector<std::size_t> begins_;  // the first block of each of them in rows_
  std::vector<Columns> columns_;     // scratch: one for each block of a row
};

}  // namespace ostrel
