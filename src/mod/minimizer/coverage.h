// The question whether a cube is covered by the OR of other cubes of its list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "minimizer/cube.h"
#include "minimizer/effort.h"

namespace ostrel {

/// A list of cubes about which one question after the other is asked. The object keeps its memory
/// from list to list.
template <PackedCube C>
class Coverage {
 public:
  /// Starts a list of cubes with literals below `width` only.
  void reset(std::size_t width);

  /// Adds a cube; its number is the count of those that were added before.
  void add(const C& cube);

  /// Takes the cube of a number out, by giving it every literal in both senses: it is apart from
  /// all that have one.
  void remove(std::size_t number);

  /// True if every point of `cube`, which has this number, lies in another cube of the list. Each
  /// pass over the cubes of a question spends a step for each block of them; false, whatever the
  /// answer would be, once the effort is spent.
  bool isCovered(const C& cube, std::size_t number, Effort& effort);

 private:
  using Word = std::uint64_t;
  enum class Verdict { Covered, Uncovered, Open };

  /// 64 columns of a cube, or of several: those with "1" and those with "0".
  struct Literals {
    Word ones = 0;
    Word zeros = 0;
    Word any() const { return ones | zeros; }
    Literals in(Word columns) const { return {ones & columns, zeros & columns}; }
    void add(Literals other) {
      ones |= other.ones;
      zeros |= other.zeros;
    }
    bool meets(Literals other) const { return ((ones & other.ones) | (zeros & other.zeros)) != 0; }
  };

  std::size_t blocks() const;
  const Literals* row(std::uint32_t number) const { return rows_.data() + number * blocks(); }
  Word* columns() { return columns_.data() + columns_.size() - blocks(); }

  bool ask(const C& cube, std::size_t number);
  Verdict judge(Effort& effort);
  bool look();
  bool settle();
  void split();
  std::pair<std::size_t, Word> columnToSplit();

  std::vector<Literals> rows_;  // the blocks of each cube, one cube behind the other
  std::size_t blocks_ = 1;

  // The open questions, one behind the other: are these cubes, looked at in these columns only,
  // together true everywhere? The last one is in hand.
  std::vector<std::uint32_t> open_;
  std::vector<std::size_t> begins_;
  std::vector<Word> columns_;

  // Scratch, for each block: the literals that some cube of the question in hand has, and those
  // that settle their columns.
  std::vector<Literals> seen_;
  std::vector<Literals> settled_;
};

}  // namespace ostrel
