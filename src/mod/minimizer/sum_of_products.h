// The algebra of sums of products: difference, complement, minimisation.
//
// A list stands for the OR of its cubes; `width` is the width of all cubes of a call. None of the
// operations looks for a smallest cover. Each gives the one list, in the one order, that its steps
// lead to; ties go to the first cube. The lists can grow exponentially in bad cases, so callers
// bound what they hand in, or the effort; there are no other failures.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "minimizer/cube_groups.h"
#include "minimizer/cube_list.h"
#include "minimizer/effort.h"

namespace ostrel {

/// Merges without expansion: equal cubes become one, cubes that differ in one literal are joined,
/// cubes inside a neighbour with one dash more go. The cubes come back by falling number of dashes.
///
/// The cubes use columns 0 to width - 1 and were made compact from a list of `wideWidth` columns,
/// which is at least `width`. Only if the two are equal does a cube of dashes only remove all other
/// cubes; otherwise it removes just the cubes with one literal.
CubeList minimizeList(std::span<const Cube> list, std::size_t width, std::size_t wideWidth);

/// Replaces the list by its complement over `width` columns; a tautology becomes empty, and an
/// empty list *stays empty*: callers test for that case first. False, and the list unchanged, where
/// the effort is not enough.
bool complementList(CubeList& list, std::size_t width, Effort& effort);

/// The operations on lists of one width, on cubes of either form, with memory that is kept from one
/// operation to the next. The steps spend the effort: the pairs of cubes that they merge, and the
/// looks at cubes that may be redundant. The answer is false where it isn't enough.
template <PackedCube C>
class ListAlgebra {
  using List = std::vector<C>;

 public:
  /// The effort is the caller's, and outlives the object.
  ListAlgebra(std::size_t width, Effort& effort) : groups_(width), effort_(effort) {}

  /// Expands, merges and removes redundant cubes: a local search for a cover with fewer and larger
  /// cubes. An empty list stays empty. Where the effort ends, the list stands for the same function
  /// and is less simple.
  bool simplify(List& list);

  /// The sharp product of two lists: takes the cubes of `taken`, one after the other, away from
  /// `list`. An empty `taken` changes nothing; a list that is covered by `taken` becomes empty.
  /// Where the effort ends, the list is somewhere in between.
  bool sharp(List& list, std::span<const C> taken);

  /// complementList on such a list.
  bool complement(List& list);

 private:
  void sharpOne(List& list, const C& taken);
  void merge(List& list);

  CubeGroups<C> groups_;
  Effort& effort_;
  List pieces_;  // scratch: the pieces that a sharp product leaves of the cubes it cuts
};

}  // namespace ostrel
