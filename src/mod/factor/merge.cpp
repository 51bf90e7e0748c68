// Nodes that are not worth their price go back into what reads them.
//
// Idea. In a reader each cube with the node's literal is replaced by its products with the cubes of
// the node, or of its complement where the literal is inverted; what comes out is minimised. If the
// readers get fewer terms dearer than what the node cost, the change stands.
//
// Example. x = an + b!n with n = c + d is x = ac + ad + b!c!d: one term more in the place of a node
// of two terms.
//
// Cost. One minimisation for each node and reader in each sweep; sweeps end when nothing changes,
// and a trial is repeated only where node or readers have changed.
//
// Order. The newest node first, in sweeps that ask for less and less gain.
#include "factor/merge.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

#include "minimizer/list_checks.h"
#include "twolevel/minimize.h"

namespace ostrel {
namespace {

constexpr std::size_t maxProducts = 400;  // of a trial; more hardly ever come down to a limit

/// The function of the cubes, minimised. `isOff`: the cubes are those of its complement. False,
/// with nothing changed, where its own cover is out of reach then: every function has one.
bool setCovers(NetworkFunction& function, CubeList cubes, bool isOff, Thoroughness thoroughness) {
  MinimizedFunction result =
      minimize({std::move(cubes), {}, {}}, WantedSets::Smaller, thoroughness);
  if (isOff) std::swap(result.on, result.off);
  if (result.on.state == CoverState::Unknown) return false;
  function.on = std::move(result.on.cubes);
  function.off = std::move(result.off.cubes);
  function.hasOff = result.off.state != CoverState::Unknown;
  assert(haveNoCommonPoint<Cube>(function.on, function.off));
  return true;
}

class Merging {
 public:
  Merging(Network& network, const FactorLimits& limits, Effort& effort)
      : network_(network),
        limits_(limits),
        effort_(effort),
        changes_(network.functions.size(), 1),
        triedAt_(network.functions.size(), 0) {}

  void run() {
    const auto price = static_cast<std::ptrdiff_t>(limits_.price);
    for (const std::ptrdiff_t gain : {price, price / 2, std::ptrdiff_t{0}}) {
      std::ranges::fill(triedAt_, 0);
      while (sweep(gain)) {
      }
    }
  }

 private:
  bool sweep(std::ptrdiff_t gain) {
    bool isChanged = false;
    for (std::size_t f = network_.functions.size(); f-- > network_.outputs;) {
      if (effort_.isSpent()) return false;
      if (!network_.functions[f].isGone) isChanged |= tryMerge(f, gain);
    }
    return isChanged;
  }

  std::vector<std::size_t> readersOf(std::size_t column) const {
    std::vector<std::size_t> result;
    for (std::size_t f = 0; f < network_.functions.size(); ++f) {
      if (!network_.functions[f].isGone && reads(network_.functions[f], column))
        result.push_back(f);
    }
    return result;
  }

  bool tryMerge(std::size_t node, std::ptrdiff_t gain) {
    const std::vector<std::size_t> readers = readersOf(network_.columnOf(node));
    std::size_t newest = changes_[node];
    for (const std::size_t reader : readers) newest = std::max(newest, changes_[reader]);
    if (triedAt_[node] >= newest) return false;
    triedAt_[node] = clock_;
    const NetworkFunction& gone = network_.functions[node];
    auto left = static_cast<std::ptrdiff_t>(costOf(gone, limits_) + limits_.price) - gain;
    std::vector<NetworkFunction> merged;
    for (const std::size_t reader : readers) {
      std::optional<NetworkFunction> result = substituted(network_.functions[reader], node);
      if (!result) return false;
      left += static_cast<std::ptrdiff_t>(costOf(network_.functions[reader], limits_));
      left -= static_cast<std::ptrdiff_t>(costOf(*result, limits_));
      merged.push_back(*std::move(result));
      if (left < -200) return false;
    }
    if (left < 0) return false;
    ++clock_;
    for (std::size_t i = 0; i < readers.size(); ++i) {
      network_.functions[readers[i]] = std::move(merged[i]);
      changes_[readers[i]] = clock_;
    }
    network_.functions[node].isGone = true;
    return true;
  }

  /// The reader with the node's function in the place of its literals; nothing where that takes too
  /// many products.
  std::optional<NetworkFunction> substituted(const NetworkFunction& reader, std::size_t node) {
    const NetworkFunction& function = network_.functions[node];
    const std::size_t column = network_.columnOf(node);
    const bool isOff = reader.hasOff && reader.off.size() < reader.on.size();
    CubeList products;
    for (Cube cube : isOff ? reader.off : reader.on) {
      const char literal = cube.at(column);
      if (literal == '0' && !function.hasOff) return std::nullopt;
      cube.set(column, '-');
      const CubeList own = {Cube()};
      const CubeList& factors = literal == '-' ? own : literal == '1' ? function.on : function.off;
      for (const Cube& factor : factors) {
        if (auto product = intersectCubes(cube, factor)) products.push_back(*std::move(product));
      }
      if (products.size() > maxProducts) return std::nullopt;
    }
    effort_.spend(products.size() + 20);
    NetworkFunction result = reader;
    if (!setCovers(result, std::move(products), isOff, Thoroughness::Trial)) return std::nullopt;
    assert(!reads(result, column));
    return result;
  }

  Network& network_;
  const FactorLimits& limits_;
  Effort& effort_;
  std::size_t clock_ = 1;
  std::vector<std::size_t> changes_;  // when each function got its present covers
  std::vector<std::size_t> triedAt_;  // when each node was tried last
};

}  // namespace

void minimizeNetwork(Network& network, Thoroughness thoroughness, Effort& effort) {
  for (NetworkFunction& function : network.functions) {
    if (function.isGone) continue;
    effort.spend(function.on.size() + 20);
    CubeList cubes = function.on;
    setCovers(function, std::move(cubes), false, thoroughness);
  }
}

void mergeNodes(Network& network, const FactorLimits& limits, Effort& effort) {
  Merging(network, limits, effort).run();
}

}  // namespace ostrel
