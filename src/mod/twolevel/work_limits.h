// How much work each level of thoroughness allows. All are counts of steps or things, found by
// trying them on real circuits; none is a promise.
#pragma once

#include <array>
#include <cstddef>

namespace ostrel {

/// How much work may be done for one function. Trial is for those that do thousands of them.
enum class Thoroughness { Trial, Fast, Normal, Deep };

struct WorkLimits {
  std::array<std::size_t, 3> diagramNodes;  // of the first, second and third try of all orders
  std::size_t workNodes;                    // of the same diagram in each later step
  std::size_t listedCubes;                  // covers with more are not worked on
  std::size_t primeNodes;                   // of the graph of all primes
  std::size_t primes;                       // a covering table has no more columns
  std::size_t rows;                         // nor rows
  std::size_t tableSteps;                   // to make it
  std::size_t firstLookSteps;               // to reduce and price it
  std::size_t searchSteps;                  // and to try columns one by one
  std::size_t iterationSteps;               // of the loop over covers
  std::size_t xorSteps;                     // to rank what may stand left of an exclusive OR
  std::size_t raisingSteps;                 // to raise and to thin out rows without a diagram
  std::size_t passSteps;                    // of all functions of a pass
};

/// A step in a diagram takes as long as so many others.
constexpr std::size_t diagramStep = 10;

/// More rows than these stay as they are: each copy of a million takes tens of megabytes.
constexpr std::size_t maxRows = 200'000;

/// More columns than these give no diagram, since its recursion is as deep.
constexpr std::size_t maxDiagramColumns = 512;

constexpr WorkLimits trialLimits = {.diagramNodes = {1'000, 0, 0},
                                    .workNodes = 5'000,
                                    .listedCubes = 150,
                                    .primeNodes = 2'000,
                                    .primes = 200,
                                    .rows = 200,
                                    .tableSteps = 20'000,
                                    .firstLookSteps = 200'000,
                                    .searchSteps = 10'000,
                                    .iterationSteps = 20'000,
                                    .xorSteps = 0,
                                    .raisingSteps = 50'000,
                                    .passSteps = 0};

constexpr WorkLimits fastLimits = {.diagramNodes = {4'000, 20'000, 0},
                                   .workNodes = 20'000,
                                   .listedCubes = 1'000,
                                   .primeNodes = 10'000,
                                   .primes = 1'000,
                                   .rows = 1'000,
                                   .tableSteps = 100'000,
                                   .firstLookSteps = 2'000'000,
                                   .searchSteps = 100'000,
                                   .iterationSteps = 200'000,
                                   .xorSteps = 300'000,
                                   .raisingSteps = 1'000'000,
                                   .passSteps = 50'000'000};

constexpr WorkLimits normalLimits = {.diagramNodes = {4'000, 30'000, 150'000},
                                     .workNodes = 200'000,
                                     .listedCubes = 10'000,
                                     .primeNodes = 100'000,
                                     .primes = 12'000,
                                     .rows = 10'000,
                                     .tableSteps = 1'000'000,
                                     .firstLookSteps = 25'000'000,
                                     .searchSteps = 4'000'000,
                                     .iterationSteps = 1'200'000,
                                     .xorSteps = 500'000,
                                     .raisingSteps = 10'000'000,
                                     .passSteps = 400'000'000};

constexpr WorkLimits deepLimits = {.diagramNodes = {4'000, 30'000, 300'000},
                                   .workNodes = 600'000,
                                   .listedCubes = 20'000,
                                   .primeNodes = 300'000,
                                   .primes = 30'000,
                                   .rows = 30'000,
                                   .tableSteps = 20'000'000,
                                   .firstLookSteps = 300'000'000,
                                   .searchSteps = 200'000'000,
                                   .iterationSteps = 40'000'000,
                                   .xorSteps = 10'000'000,
                                   .raisingSteps = 100'000'000,
                                   .passSteps = 3'000'000'000};

constexpr const WorkLimits& workLimits(Thoroughness thoroughness) {
  if (thoroughness == Thoroughness::Trial) return trialLimits;
  if (thoroughness == Thoroughness::Fast) return fastLimits;
  return thoroughness == Thoroughness::Normal ? normalLimits : deepLimits;
}

}  // namespace ostrel
