// The minimizer on random covers, at the sizes that the budgets of its callers allow, and the
// minimisation of long lists, whose cost has to grow with their length and not with its square.
#include <benchmark/benchmark.h>
#include <bit>
#include <random>

#include "minimizer/sum_of_products.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"

namespace {

using namespace ostrel;

// Cubes in which "0", "1" and a dash are equally likely, the same ones in every run.
CubeList randomCubes(std::size_t count, std::size_t width, unsigned seed) {
  std::mt19937 random(seed);
  CubeList list(count);
  for (Cube& cube : list) {
    for (std::size_t column = 0; column < width; ++column) cube.set(column, "01-"[random() % 3]);
  }
  return list;
}

// Runs `work` on ten covers in turn, since the cost of single covers differs widely.
template <class Work>
void onRandomCovers(benchmark::State& state, Work work) {
  const auto width = static_cast<std::size_t>(state.range(0));
  const auto count = static_cast<std::size_t>(state.range(1));
  std::vector<CubeList> covers;
  for (unsigned seed = 0; seed < 10; ++seed) covers.push_back(randomCubes(count, width, seed));
  std::size_t made = 0;
  std::size_t turn = 0;
  for (auto _ : state) made += work(covers[turn++ % covers.size()], width);
  state.counters["cubes"] =
      benchmark::Counter(static_cast<double>(made), benchmark::Counter::kAvgIterations);
}

// The time of one list. The two times have a ratio of about 10 if the cost is linear in the length.
// Both take turns on lists of 20,000 cubes altogether, so that neither is favoured by what caches
// and branch predictors keep from one turn to the next.
void minimise(benchmark::State& state) {
  constexpr std::size_t total = 20000;
  const auto count = static_cast<std::size_t>(state.range(0));
  std::vector<CubeList> lists;
  for (unsigned seed = 0; seed < total / count; ++seed) {
    lists.push_back(randomCubes(count, 32, seed));
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(minimizeList(lists[turn++ % lists.size()], 32, 32));
  }
}
BENCHMARK(minimise)->Arg(2000)->Arg(20000)->Unit(benchmark::kMicrosecond);

void complement(benchmark::State& state) {
  onRandomCovers(state, [](CubeList cubes, std::size_t width) {
    Effort unbounded;
    complementList(cubes, width, unbounded);
    return cubes.size();
  });
}
BENCHMARK(complement)->Args({8, 64})->Args({16, 16})->Unit(benchmark::kMicrosecond);

void expandXor(benchmark::State& state) {
  onRandomCovers(state, [](const CubeList& cubes, std::size_t width) {
    Effort unbounded;
    XorExpansion<Cube64> expansion(width, unbounded);
    XorExpansion<Cube64>::State sum;
    for (const Cube& cube : cubes) expansion.take(sum, Cube64(cube));
    return expansion.sum(sum).size();
  });
}
BENCHMARK(expandXor)->Args({8, 64})->Args({16, 16})->Unit(benchmark::kMicrosecond);

void coverByXor(benchmark::State& state) {
  onRandomCovers(state, [](const CubeList& cubes, std::size_t width) {
    return xorCover(std::span<const Cube>(cubes), width).value_or(CubeList()).size();
  });
}
BENCHMARK(coverByXor)
    ->Args({8, 64})
    ->Args({16, 16})
    ->Args({16, 100})
    ->Unit(benchmark::kMicrosecond);

// The full group of 128 disjoint cubes that no two of which are neighbours: odd parity of 8
// columns.
void coverParityByXor(benchmark::State& state) {
  CubeList cubes;
  for (unsigned point = 0; point < 256; ++point) {
    if (std::popcount(point) % 2 == 0) continue;
    cubes.emplace_back().setBlock(0, {0xFF, point});
  }
  for (auto _ : state) benchmark::DoNotOptimize(xorCover(std::span<const Cube>(cubes), 8));
}
BENCHMARK(coverParityByXor)->Unit(benchmark::kMicrosecond);

}  // namespace
