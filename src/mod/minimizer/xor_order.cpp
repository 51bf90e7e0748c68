// The sort that picks the cubes to try as left operands.
//
// Idea. A quicksort with the middle entry as pivot, and a selection sort of the greatest for ranges
// of at most 8 entries (Hoare, 1961; no recursion, the open ranges stand on a stack).
//
// Example. Three cubes a, b, c of equal dash count come out as b, c, a.
//
// Cost. n log n comparisons for most lists, n * n at worst; a sum has at most 128 cubes for each
// number of dashes.
//
// Order. Part of the output, do not tidy: the sort isn't stable, and the order that it gives equal
// keys decides which of two equally good cubes is taken. No other sort will do.
#include "minimizer/xor_order.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

constexpr std::size_t shortRange = 8;

/// Both ends belong to the range.
struct Range {
  std::size_t low;
  std::size_t high;
};

// More literals are fewer dashes.
template <PackedCube C>
bool hasMoreDashes(const C& a, const C& b) {
  return a.literalCount() < b.literalCount();
}

template <PackedCube C>
void sortShort(std::vector<C>& cubes, Range range) {
  for (; range.high > range.low; --range.high) {
    std::size_t greatest = range.low;
    for (std::size_t i = range.low + 1; i <= range.high; ++i) {
      if (hasMoreDashes(cubes[i], cubes[greatest])) greatest = i;
    }
    std::swap(cubes[greatest], cubes[range.high]);
  }
}

/// Moves the pivot to its place and pushes what is still to be sorted on either side of it.
template <PackedCube C>
void partition(std::vector<C>& cubes, Range range, std::vector<Range>& pending) {
  const auto [low, high] = range;
  std::swap(cubes[low + (high - low + 1) / 2], cubes[low]);
  const C pivot = cubes[low];
  std::size_t i = low;
  std::size_t j = high + 1;
  while (true) {
    do ++i;
    while (i <= high && !hasMoreDashes(cubes[i], pivot));
    do --j;
    while (j > low && !hasMoreDashes(pivot, cubes[j]));
    if (j < i) break;
    std::swap(cubes[i], cubes[j]);
  }
  std::swap(cubes[low], cubes[j]);
  if (j > low + 1) pending.push_back({low, j - 1});
  if (i < high) pending.push_back({i, high});
}

}  // namespace

template <PackedCube C>
void sortByDashes(std::vector<C>& cubes) {
  if (cubes.size() < 2) return;
  std::vector<Range> pending = {{0, cubes.size() - 1}};
  while (!pending.empty()) {
    const Range range = pending.back();
    pending.pop_back();
    if (range.high - range.low < shortRange) {
      sortShort(cubes, range);
    } else {
      partition(cubes, range, pending);
    }
  }
  assert(std::is_sorted(cubes.begin(), cubes.end(),
                        [](const C& a, const C& b) { return hasMoreDashes(b, a); }));
}

template void sortByDashes(std::vector<Cube>&);
template void sortByDashes(std::vector<Cube64>&);

}  // namespace ostrel
