#include "factor/factor.h"

#include <utility>

#include "factor/divisors.h"
#include "factor/merge.h"

namespace ostrel {
namespace {

// Counted in pairs of cubes and in products of trials; found by trying them on real circuits.
constexpr std::size_t pairSteps = 8'000'000;
constexpr std::size_t mergeSteps = 220'000;

}  // namespace

bool factor(Network& network, const FactorLimits& limits) {
  Network result = network;
  Effort pairs(pairSteps);
  if (!extractDivisors(result, limits, pairs)) return false;
  Effort effort(mergeSteps);
  minimizeNetwork(result, Thoroughness::Fast, effort);
  mergeNodes(result, limits, effort);
  packNodes(result);
  network = std::move(result);
  return true;
}

}  // namespace ostrel
