// A quicksort with the middle entry as pivot, and a selection sort of the greatest for ranges of
// at most 8 entries. Three cubes a, b, c of equal dash count come out as b, c, a.
#include "equation/sort_by_dashes.h"

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
bool hasMoreDashes(const Cube& a, const Cube& b) {
  return a.literalCount() < b.literalCount();
}

void sortShort(CubeList& cubes, Range range) {
  for (; range.high > range.low; --range.high) {
    std::size_t greatest = range.low;
    for (std::size_t i = range.low + 1; i <= range.high; ++i) {
      if (hasMoreDashes(cubes[i], cubes[greatest])) greatest = i;
    }
    std::swap(cubes[greatest], cubes[range.high]);
  }
}

/// Moves the pivot to its place and pushes what is still to be sorted on either side of it.
void partition(CubeList& cubes, Range range, std::vector<Range>& pending) {
  const auto [low, high] = range;
  std::swap(cubes[low + (high - low + 1) / 2], cubes[low]);
  const Cube pivot = cubes[low];
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

void sortByDashes(CubeList& cubes) {
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
}

}  // namespace ostrel
