// The algebra of sums of products: difference, complement, minimisation, and the way back from an
// exclusive-or sum.
//
// A list stands for the OR of its cubes; `width` is the width of all cubes of a call. None of the
// operations looks for a smallest cover. Each gives the one list, in the one order, that its steps
// lead to; ties go to the first cube. The lists can grow exponentially in bad cases, so callers
// bound what they hand in, or the effort of a complement; there are no other failures.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <span>

#include "minimizer/cube_list.h"

namespace ostrel {

/// No bound on an effort.
inline constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// Merges without expansion: equal cubes become one, cubes that differ in one literal are joined,
/// cubes inside a neighbour with one dash more go. The cubes come back by falling number of dashes.
///
/// The cubes use columns 0 to width - 1 and were narrowed from a list of `wideWidth` columns,
/// which is at least `width`. Only if the two are equal does a cube of dashes only remove all other
/// cubes; otherwise it removes just the cubes with one literal.
CubeList minimizeList(CubeList list, std::size_t width, std::size_t wideWidth);

/// Expands, merges and removes redundant cubes. An empty list stays empty.
void simplifyList(CubeList& list, std::size_t width);

/// Sharp product of two lists: takes the cubes of `taken`, one after the other, away from `list`.
///
/// After each of them what is left is merged, and at every fourth it is simplified. An empty
/// `taken` changes nothing; a list that is covered by `taken` becomes empty.
void sharpList(CubeList& list, std::span<const Cube> taken, std::size_t width);

/// Replaces the list by its complement over `width` columns, the simplified sharp product of the
/// universal cube and the list. A tautology becomes empty, and an empty list *stays empty*:
/// callers test for that case first. The answer is false, and the list unchanged, once the steps
/// had more than `effort` pairs of cubes to merge.
bool complementList(CubeList& list, std::size_t width, std::size_t effort = unlimited);

/// The sum of products of the exclusive OR of the cubes.
///
/// Two equal cubes cancel. A universal cube inverts the rest; if nothing is left of the rest, the
/// result is empty all the same, as `complementList` of nothing is. A list of universal cubes
/// alone gives the universal cube if there is an odd number of them, else the empty list.
CubeList xorExpand(std::span<const Cube> cubes, std::size_t width);

/// Calls visit(i, sum) for i from 0 to count - 1, where `sum` is what xorExpand gives for the cubes
/// without the i-th. Cheaper than that many calls: the work on the cubes in front of the i-th,
/// which are taken in one by one, is done once for all.
void forEachLeftOut(std::span<const Cube> cubes, std::size_t count, std::size_t width,
                    const std::function<void(std::size_t, CubeList)>& visit);

}  // namespace ostrel
