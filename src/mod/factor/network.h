// A network of functions: outputs and nodes that read columns and each other.
//
// Column numbers below `width` are what the network reads from outside. Function `outputs + k` is
// node k, and what it drives is column `width + k`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "minimizer/cube_list.h"

namespace ostrel {

/// What a network may cost and what a node is worth.
struct FactorLimits {
  std::size_t price = 5;         // of a node, in terms
  std::size_t cluster = 5;       // terms; a cut moves whole clusters
  std::size_t depth = SIZE_MAX;  // nodes one behind another
};

/// One function, by a cover of its own, of its complement, or of both.
struct NetworkFunction {
  CubeList on;
  CubeList off;
  bool hasOff = false;    // `off` covers the complement; otherwise it is empty and not known
  bool mayTurn = true;    // it can be kept by its complement
  bool isGone = false;    // a node that nothing reads any more
  std::size_t limit = 0;  // most terms

  /// Whether the complement has fewer terms and may stand for the function.
  bool isTurned() const { return hasOff && mayTurn && off.size() < on.size(); }
  std::size_t termCount() const { return isTurned() ? off.size() : on.size(); }
};

struct Network {
  std::size_t width = 0;
  std::size_t outputs = 0;
  std::vector<NetworkFunction> functions;

  std::size_t columnOf(std::size_t function) const { return width + function - outputs; }
  std::size_t nodeLimit = 0;  // most terms of a node
};

/// Terms, and nodes at their price, of a function and of the nodes that it is cut into where it has
/// more terms than it may.
std::size_t costOf(const NetworkFunction& function, const FactorLimits& limits);

/// Likewise of all that is not gone.
std::size_t costOf(const Network& network, const FactorLimits& limits);

/// True if one of the covers has a literal of the column.
bool reads(const NetworkFunction& function, std::size_t column);

/// The nodes that are left, renumbered so that each reads columns and older nodes only.
void packNodes(Network& network);

/// The functions, in ascending order, of each part of the network that shares no node with another
/// part; the two outputs of a link are of one part. Parts without a node are left out; the others
/// stand in the order of their first outputs.
std::vector<std::vector<std::size_t>> partsOf(
    const Network& network, std::span<const std::pair<std::size_t, std::size_t>> links);

/// These functions of the network, which read no other node, as one of their own with `width`
/// columns from outside, no fewer than the network has.
Network extracted(const Network& network, std::span<const std::size_t> functions,
                  std::size_t width);

}  // namespace ostrel
