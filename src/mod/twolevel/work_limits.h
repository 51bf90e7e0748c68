// How much work each level of thoroughness allows. All are counts of steps or things, found by
// trying them on real circuits; none is a promise.
#pragma once

#include <array>
#include <cstddef>

#include "twolevel/minimize.h"

namespace ostrel {

struct WorkLimits {
  std::array<std::size_t, 3> diagramNodes;  // of the first, second and third try of all orders
  std::size_t columns;                      // more give no diagram: its recursion is as deep
  std::size_t workNodes;                    // of the same diagram in each later step
  std::size_t listedCubes;                  // covers with more are not worked on
  std::size_t primeNodes;                   // of the graph of all primes
  std::size_t primes;                       // a covering table has no more columns
  std::size_t rows;                         // nor rows
  std::size_t tableSteps;                   // to make it
  std::size_t firstLookSteps;               // to reduce and price it
  std::size_t searchSteps;                  // and to try columns one by one
  std::size_t iterationSteps;               // of the loop of reduce, expand, irredundant
  std::size_t starts;                       // of the loop, each in an order of its own
};

constexpr WorkLimits workLimits(Thoroughness thoroughness) {
  WorkLimits limits = {{4'000, 30'000, 150'000},
                       512,
                       300'000,
                       4'000,
                       100'000,
                       12'000,
                       8'000,
                       3'000'000,
                       30'000'000,
                       4'000'000,
                       5'000'000,
                       2};
  if (thoroughness == Thoroughness::Fast) {
    limits = {{4'000, 20'000, 0},
              512,
              20'000,
              1'000,
              4'000,
              400,
              1'000,
              50'000,
              300'000,
              100'000,
              500'000,
              1};
  }
  if (thoroughness == Thoroughness::Deep) {
    limits = {{4'000, 30'000, 300'000},
              512,
              1'000'000,
              20'000,
              500'000,
              30'000,
              30'000,
              20'000'000,
              300'000'000,
              200'000'000,
              40'000'000,
              6};
  }
  return limits;
}

}  // namespace ostrel
