// Feeds arbitrary cubes, within the budgets that bound the minimizer's callers, to every operation
// on sums of products, and compares the functions of input and result point by point.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include "minimizer/budgets.h"
#include "minimizer/cover_bound.h"
#include "minimizer/sum_of_products.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "minimizer/xor_pair.h"

namespace {

using namespace ostrel;

constexpr std::size_t evaluatedWidth = 10;

// How many cubes of the list hold each point of the space.
std::vector<std::size_t> countPoints(const CubeList& list, std::size_t width) {
  std::vector<std::size_t> counts(std::size_t{1} << width);
  for (std::size_t point = 0; point < counts.size(); ++point) {
    for (const Cube& cube : list) {
      counts[point] += (cube.block(0).care & (cube.block(0).value ^ point)) == 0 ? 1U : 0U;
    }
  }
  return counts;
}

// Aborts unless isRight(how many cubes of `before`, of `after` hold the point) at every point.
template <class IsRight>
void compare(const CubeList& before, const CubeList& after, std::size_t width, IsRight isRight) {
  if (width > evaluatedWidth) return;
  const auto in = countPoints(before, width);
  const auto out = countPoints(after, width);
  for (std::size_t point = 0; point < in.size(); ++point) {
    if (!isRight(in[point], out[point])) std::abort();
  }
}

bool sameSum(std::size_t in, std::size_t out) {
  return (in > 0) == (out > 0);
}

void checkSums(const CubeList& cubes, std::size_t width, std::size_t extraColumns) {
  compare(cubes, minimizeList(cubes, width, width + extraColumns), width, sameSum);
  if (width * width * cubes.size() > complexityLimit) return;
  Effort effort(effortOfOne);
  CubeList list = cubes;
  if (!ListAlgebra<Cube>(width, effort).simplify(list)) std::abort();
  compare(cubes, list, width, sameSum);
  if (!complementList(list, width, effort)) std::abort();
  if (!cubes.empty()) {
    compare(cubes, list, width, [](auto in, auto out) { return (in > 0) != (out > 0); });
  }
}

// The cover, and one cube of it against the expansion of all others.
void checkXor(const CubeList& cubes, std::size_t width) {
  const auto cover = xorCover(std::span<const Cube>(cubes), width);
  if (!cover) return;
  compare(cubes, *cover, width, [](auto in, auto out) { return (in > 0) == (out % 2 == 1); });
  if (cover->empty()) std::abort();
  const CubeList others(cover->begin() + 1, cover->end());
  Effort effort(effortOfOne);
  XorExpansion<Cube> expansion(width, effort);
  XorExpansion<Cube>::State state;
  for (const Cube& cube : others) expansion.take(state, cube);
  const CubeList sum = expansion.sum(state);
  CoverBound lower(std::span<const Cube>(cubes), width);
  const std::size_t bound = lower.ofXor(cover->front().block(0), cubes.size() + 1);
  // A universal cube whose companions cancel has no sum of products here.
  if (sum.empty() && std::any_of(others.begin(), others.end(),
                                 [](const Cube& cube) { return cube.literalCount() == 0; })) {
    return;
  }
  if (bound > sum.size()) std::abort();
  compare(others, sum, width, [](auto in, auto out) { return (in % 2 == 1) == (out > 0); });
}

void checkPair(const CubeList& cubes, std::size_t width) {
  const auto pair = bestXorPair(cubes, width, {1000, cubes.size() + 1, true}, [] {});
  if (!pair || width > evaluatedWidth) return;
  const auto wanted = countPoints(cubes, width);
  const auto left = countPoints({pair->left}, width);
  const auto right = countPoints(pair->right, width);
  for (std::size_t point = 0; point < wanted.size(); ++point) {
    if ((wanted[point] > 0) != ((left[point] > 0) != (right[point] > 0))) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::size_t width = 1 + data[0] % 80;
  const std::size_t extraColumns = data[1] % 3;
  CubeList cubes;
  for (std::size_t at = 2; at < size && (cubes.size() + 1) * width * width <= xorBudget;) {
    Cube cube;
    // Two bits a column: "0", "1" and twice a dash.
    for (std::size_t column = 0; column < width && at < size; ++column) {
      cube.set(column, "01--"[(data[at] >> (column % 4 * 2)) & 3U]);
      if (column % 4 == 3 || column + 1 == width) ++at;
    }
    cubes.push_back(std::move(cube));
  }
  checkSums(cubes, width, extraColumns);
  checkXor(cubes, width);
  checkPair(cubes, width);
  return 0;
}
