#include "factor/network.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace ostrel {
namespace {

bool anyReads(const CubeList& cubes, std::size_t column) {
  return std::ranges::any_of(cubes, [&](const Cube& cube) { return cube.at(column) != '-'; });
}

/// The nodes that a function reads, each once.
std::vector<std::size_t> nodesOf(const Network& network, const NetworkFunction& function) {
  ColumnSet columns;
  for (const CubeList* cover : {&function.on, &function.off}) {
    for (const Cube& cube : *cover) cube.addSupportTo(columns);
  }
  std::vector<std::size_t> nodes;
  columns.forEach([&](std::size_t column) {
    if (column >= network.width) nodes.push_back(network.outputs + column - network.width);
  });
  return nodes;
}

Cube renumbered(const Cube& cube, std::size_t width, const std::vector<std::size_t>& newColumn) {
  Cube result;
  cube.forEachLiteral([&](std::size_t column, char literal) {
    result.set(column < width ? column : newColumn[column - width], literal);
  });
  return result;
}

/// All functions that are not gone, each behind the nodes that it reads, else in order.
std::vector<std::size_t> inwardOrder(const Network& network) {
  std::vector<std::size_t> order;
  std::vector<char> isDone(network.functions.size(), 0);
  std::vector<std::size_t> stack;
  for (std::size_t f = 0; f < network.functions.size(); ++f) {
    if (network.functions[f].isGone) continue;
    stack.push_back(f);
    while (!stack.empty()) {
      const std::size_t top = stack.back();
      const std::size_t height = stack.size();
      if (isDone[top] == 0) {
        for (const std::size_t node : nodesOf(network, network.functions[top])) {
          assert(!network.functions[node].isGone);
          if (isDone[node] == 0) stack.push_back(node);
        }
      }
      if (stack.size() > height) continue;
      stack.pop_back();
      if (std::exchange(isDone[top], 1) == 0) order.push_back(top);
    }
  }
  return order;
}

/// True if each node reads nodes in front of it.
[[maybe_unused]] bool readsOlderOnly(const Network& network) {
  for (std::size_t f = network.outputs; f < network.functions.size(); ++f) {
    for (const std::size_t node : nodesOf(network, network.functions[f])) {
      if (node >= f) return false;
    }
  }
  return true;
}

/// Which things belong together, by the first of them.
class Partition {
 public:
  explicit Partition(std::size_t size) : leaders_(size) {
    std::iota(leaders_.begin(), leaders_.end(), std::size_t{0});
  }

  std::size_t leaderOf(std::size_t thing) {
    while (leaders_[thing] != thing) thing = leaders_[thing] = leaders_[leaders_[thing]];
    return thing;
  }

  void join(std::size_t a, std::size_t b) {
    const auto [first, second] = std::minmax({leaderOf(a), leaderOf(b)});
    leaders_[second] = first;
  }

 private:
  std::vector<std::size_t> leaders_;
};

}  // namespace

std::size_t costOf(const NetworkFunction& function, const FactorLimits& limits) {
  if (function.isGone) return 0;
  const std::size_t terms = function.termCount();
  if (terms <= function.limit || function.limit < 2) return terms;
  assert(limits.cluster > 0);
  const std::size_t whole = function.limit / limits.cluster * limits.cluster;
  const std::size_t gain = std::max<std::size_t>(whole == 0 ? function.limit : whole, 2) - 1;
  const std::size_t cuts = (terms - function.limit + gain - 1) / gain;
  return terms + cuts * (limits.price + 1);
}

std::size_t costOf(const Network& network, const FactorLimits& limits) {
  std::size_t cost = 0;
  for (std::size_t f = 0; f < network.functions.size(); ++f) {
    const NetworkFunction& function = network.functions[f];
    cost += costOf(function, limits);
    if (f >= network.outputs && !function.isGone) cost += limits.price;
  }
  return cost;
}

bool reads(const NetworkFunction& function, std::size_t column) {
  return anyReads(function.on, column) || anyReads(function.off, column);
}

void packNodes(Network& network) {
  std::vector<std::size_t> order = inwardOrder(network);
  const auto nodes = std::stable_partition(order.begin(), order.end(),
                                           [&](std::size_t f) { return f < network.outputs; });
  std::sort(order.begin(), nodes);
  network = extracted(network, order, network.width);
  assert(readsOlderOnly(network));
}

std::vector<std::vector<std::size_t>> partsOf(
    const Network& network, std::span<const std::pair<std::size_t, std::size_t>> links) {
  Partition parts(network.functions.size());
  for (const auto& [one, other] : links) parts.join(one, other);
  for (std::size_t f = 0; f < network.functions.size(); ++f) {
    for (const std::size_t node : nodesOf(network, network.functions[f])) parts.join(f, node);
  }
  std::vector<std::vector<std::size_t>> members(network.functions.size());
  for (std::size_t f = 0; f < members.size(); ++f) members[parts.leaderOf(f)].push_back(f);
  std::erase_if(members,
                [&](const auto& part) { return part.empty() || part.back() < network.outputs; });
  return members;
}

Network extracted(const Network& network, std::span<const std::size_t> functions,
                  std::size_t width) {
  Network result = {width, 0, {}, network.nodeLimit};
  while (result.outputs < functions.size() && functions[result.outputs] < network.outputs) {
    ++result.outputs;
  }
  std::vector<std::size_t> newColumn(network.functions.size() - network.outputs);
  for (const std::size_t f : functions) {
    if (f >= network.outputs) {
      newColumn[f - network.outputs] = result.columnOf(result.functions.size());
    }
    result.functions.push_back(network.functions[f]);
  }
  for (NetworkFunction& function : result.functions) {
    for (CubeList* cover : {&function.on, &function.off}) {
      for (Cube& cube : *cover) cube = renumbered(cube, network.width, newColumn);
    }
  }
  return result;
}

}  // namespace ostrel
