// The algebra of sums of products: difference, complement, minimisation.
//
// A list stands for the OR of its cubes; `width` is the width of all cubes of a call. None of the
// operations looks for a smallest cover. Each gives the one list, in the one order, that its steps
// lead to; ties go to the first cube. The lists can grow exponentially in bad cases, so callers
// bound what they hand in, or the effort of a complement; there are no other failures.
#pragma once

#include <cstddef>
#include <span>

#include "minimizer/cube_list.h"
#include "minimizer/effort.h"

namespace ostrel {

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
/// callers test for that case first. The steps spend the effort: the pairs of cubes that they
/// merge, and the looks at cubes that may be redundant. The answer is false, and the list
/// unchanged, where the effort is not enough.
bool complementList(CubeList& list, std::size_t width, Effort& effort);
void complementList(CubeList& list, std::size_t width);

}  // namespace ostrel
