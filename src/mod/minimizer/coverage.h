// The question whether a cube is covered by the OR of other cubes of its list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/cube.h"
#include "minimizer/effort.h"

namespace ostrel {

/// A list of cubes turned on its side: for each literal the set of the cubes that have it, one bit
/// a cube. A step of a question about many cubes is then a few word operations for each column.
/// The object keeps its memory from list to list.
class Coverage {
 public:
  /// Starts a list of at most `capacity` cubes with literals below `width` only.
  void reset(std::size_t width, std::size_t capacity);

  /// Adds a cube; its number is the count of those that were added before.
  template <PackedCube C>
  void add(const C& cube);

  /// Takes the cube of a number out.
  void remove(std::size_t number) { cubes_[number / 64] &= ~(Word{1} << (number % 64)); }

  /// True if every point of `cube`, which has this number, lies in another cube of the list. Each
  /// look at the literals of the cubes spends a step for each word that it reads; false, whatever
  /// the answer would be, once the effort is spent.
  template <PackedCube C>
  bool isCovered(const C& cube, std::size_t number, Effort& effort);

 private:
  using Word = std::uint64_t;
  enum class Verdict { Covered, Uncovered, Open };

  /// An open question: are these cubes, looked at in these columns only, together true everywhere?
  struct Question {
    Word* columns;
    Word* cubes;
  };
  Question question(std::size_t number) {
    Word* const begin = questions_.data() + number * (blocks_ + words_);
    return {begin, begin + blocks_};
  }

  const Word* literal(std::size_t column, bool isOne) const {
    return literals_.data() + (2 * column + (isOne ? 1 : 0)) * words_;
  }

  Verdict judge(Question open, Effort& effort);
  bool look(Question open);
  Verdict settleLone(Question open);
  void split(Question open, Question next);

  std::size_t blocks_ = 1;       // words of a set of columns
  std::size_t words_ = 1;        // words of a set of cubes
  std::size_t count_ = 0;        // cubes that were added
  std::vector<Word> literals_;   // for each column the cubes with "0", then those with "1"
  std::vector<Word> cubes_;      // the cubes that are still there
  std::vector<Word> questions_;  // the open questions, one behind the other

  // Scratch: the cubes of a question with at least one, two and three literals.
  std::vector<Word> once_;
  std::vector<Word> twice_;
  std::vector<Word> thrice_;
};

}  // namespace ostrel
