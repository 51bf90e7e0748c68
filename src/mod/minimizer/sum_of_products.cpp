// Difference, complement and simplification of sums of products.
//
// Idea. All of it stands on the sharp product a # b, the points of cube a outside of cube b (Roth's
// cube calculus; see Brayton, Hachtel, McMullen, Sangiovanni-Vincentelli, "Logic Minimization
// Algorithms for VLSI Synthesis", 1984). The complement of a list is the universal cube without
// each of its cubes. The plain sharp product makes overlapping pieces, at most one for each literal
// of the cube that is taken away; what keeps them few is the merging of neighbours after each cube.
// Simplification, which costs more, comes after every fourth: expansion by consensus with a larger
// cube, merging, and the removal of redundant cubes.
//
// Example. The complement of "10", "01" starts from "--". Taking "10" away leaves the pieces "0-"
// and "-1"; merging keeps both, in reverse order. Taking "01" away from "-1" leaves "11", from
// "0-" it leaves "00". The complement is "11", "00".
//
// Cost. Each cube that is taken away multiplies the list by the number of its literals at worst, so
// the result may be exponentially long, and so may the time for redundant cubes. Within the budgets
// of the callers lists of some dozen cubes are the rule. The effort counts the square of a list for
// each merge, and what Coverage counts.
//
// Order. Part of the output, do not tidy: the rhythm of three merges and a simplification; the turn
// that sharpOne gives to the cubes that it leaves whole; pieces behind them in the order of the
// columns; each turn of the groups, which merging reverses and a list of one cube never sees.
#include "minimizer/sum_of_products.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

#include "minimizer/list_checks.h"

namespace ostrel {

template <PackedCube C>
bool ListAlgebra<C>::simplify(List& list) {
  if (list.size() < 2) return true;
  groups_.groupByDashes(list);
  groups_.expandGroups();
  groups_.mergeGroups(UniversalCube::StandsAlone);
  groups_.dropRedundant(effort_);
  groups_.flattenGroups(list);
  return !effort_.isSpent();
}

template <PackedCube C>
void ListAlgebra<C>::merge(List& list) {
  if (list.size() < 2) return;
  groups_.groupByDashes(list);
  groups_.mergeGroups(UniversalCube::StandsAlone);
  groups_.flattenGroups(list);
}

template <PackedCube C>
bool ListAlgebra<C>::sharp(List& list, std::span<const C> taken) {
  std::size_t merged = 0;
  for (const C& cube : taken) {
    if (list.empty()) return true;
    sharpOne(list, cube);
    if (!effort_.spend(list.size() * list.size())) return false;
    if (merged < 3) {
      merge(list);
      ++merged;
    } else {
      if (!simplify(list)) return false;
      merged = 0;
    }
  }
  assert(haveNoCommonPoint<C>(list, taken));
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
bool ListAlgebra<C>::complement(List& list) {
  if (list.empty()) return true;
  List rest(1);
  if (!sharp(rest, list) || !simplify(rest)) return false;
  assert(agree<C>(list, PointsOf::NoCube, rest, PointsOf::AnyCube));
  list = std::move(rest);
  return true;
}

CubeList minimizeList(std::span<const Cube> list, std::size_t width, std::size_t wideWidth) {
  const auto universal =
      width == wideWidth ? UniversalCube::StandsAlone : UniversalCube::IsOrdinary;
  CubeList result = onCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    CubeGroups<C> groups(width);
    groups.groupByDashes(cubes);
    groups.mergeGroups(universal);
    groups.dropDuplicates(universal);
    groups.flattenGroups(cubes);
  });
  assert(agree<Cube>(list, PointsOf::AnyCube, result, PointsOf::AnyCube));
  return result;
}

bool complementList(CubeList& list, std::size_t width, Effort& effort) {
  bool isDone = false;
  list = onCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    isDone = ListAlgebra<C>(width, effort).complement(cubes);
  });
  return isDone;
}

template class ListAlgebra<Cube>;
template class ListAlgebra<Cube64>;

}  // namespace ostrel
