// Sharp products of lists, and the operations that stand on them.
//
// Example: the complement of "10", "01" starts from "--". Taking "10" away leaves the pieces "0-"
// and "-1"; merging keeps both, in reverse order. Taking "01" away from "-1" leaves "11", from
// "0-" it leaves "00". The complement is "11", "00".
//
// The plain sharp product makes overlapping pieces, at most one for each literal of the cube that
// is taken away. What keeps them few is the merging after each cube and the simplification, which
// costs more, after every fourth; their order follows from the order in which pieces and untouched
// cubes are put together, and ties go to the first cube everywhere below.
#include "minimizer/list_algebra.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ostrel {

template <PackedCube C>
void ListAlgebra<C>::simplify(List& list) {
  Effort unbounded;
  simplify(list, unbounded);
}

template <PackedCube C>
void ListAlgebra<C>::sharp(List& list, std::span<const C> taken) {
  Effort unbounded;
  sharp(list, taken, unbounded);
}

template <PackedCube C>
void ListAlgebra<C>::complement(List& list) {
  Effort unbounded;
  complement(list, unbounded);
}

template <PackedCube C>
bool ListAlgebra<C>::simplify(List& list, Effort& effort) {
  if (list.size() < 2) return true;
  groups_.groupByDashes(list);
  groups_.expandGroups();
  groups_.mergeGroups(groups_.width());
  groups_.dropRedundant(effort);
  groups_.flattenGroups(list);
  return !effort.isSpent();
}

template <PackedCube C>
void ListAlgebra<C>::merge(List& list) {
  if (list.size() < 2) return;
  groups_.groupByDashes(list);
  groups_.mergeGroups(groups_.width());
  groups_.flattenGroups(list);
}

// The merging of a list costs at most a step for each pair of its cubes.
template <PackedCube C>
bool ListAlgebra<C>::sharp(List& list, std::span<const C> taken, Effort& effort) {
  std::size_t merged = 0;
  for (const C& cube : taken) {
    if (list.empty()) return true;
    sharpOne(list, cube);
    if (!effort.spend(list.size() * list.size())) return false;
    if (merged < 3) {
      merge(list);
      ++merged;
    } else {
      if (!simplify(list, effort)) return false;
      merged = 0;
    }
  }
  return true;
}

// The new list: the first cube if it was left whole, the other whole cubes in reverse order, then
// the pieces in the order in which they were made.
template <PackedCube C>
void ListAlgebra<C>::sharpOne(List& list, const C& taken) {
  pieces_.clear();
  const bool firstIsWhole = !cubesIntersect(list.front(), taken);
  std::erase_if(list, [&](const C& cube) { return sharpCube(cube, taken, pieces_); });
  std::reverse(list.begin() + (firstIsWhole ? 1 : 0), list.end());
  std::move(pieces_.begin(), pieces_.end(), std::back_inserter(list));
}

template <PackedCube C>
bool ListAlgebra<C>::complement(List& list, Effort& effort) {
  if (list.empty()) return true;
  List rest(1);
  if (!sharp(rest, list, effort) || !simplify(rest, effort)) return false;
  list = std::move(rest);
  return true;
}

template class ListAlgebra<Cube>;
template class ListAlgebra<NarrowCube>;

}  // namespace ostrel
