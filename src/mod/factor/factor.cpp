#include "factor/factor.h"

#include <utility>

#include "factor/divisors.h"
#include "factor/merge.h"

namespace ostrel {
namespace {

constexpr std::size_t pairSteps = 2'000'000;
constexpr std::size_t mergeSteps = 1'000'000;

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
