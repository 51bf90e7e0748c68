// Idea. A function is a node that asks for its first column and goes on in one of two halves;
// equal halves are one node, so that functions are compared by number and every result of an
// operation is worked out once for a pair of nodes. (Bryant, Graph-based algorithms for Boolean
// function manipulation, 1986; complemented edges: Brace, Rudell, Bryant, 1990.)
//
// Example. a' b + a b' is the node a with the halves b and not b; both are one node b, reached
// by a plain and by a complemented edge.
//
// Cost. A conjunction takes at most the product of the sizes of its operands, a sum of cubes a
// split in three for every column and two operations for what they leave. Sizes depend on the
// order of the columns and can be exponential in any; effort and node limit end that.
//
// Order. The numbers of nodes follow the order in which they are made, and the results that are
// found again follow the numbers. Neither changes a function, but both change the work counted.
#include "twolevel/diagram.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace ostrel {

Diagram::Diagram(std::size_t width, std::size_t nodeLimit, Effort& effort)
    : width_(width), nodeLimit_(nodeLimit), effort_(effort) {
  nodes_.number({static_cast<std::uint32_t>(width), one, one, 0});
}

Diagram::Edge Diagram::node(std::uint32_t at, Edge low, Edge high) {
  assert(at < level(low) && at < level(high));
  if (low == high) return low;
  if (nodes_.size() >= nodeLimit_) {
    effort_.spend(effort_.left());
    return zero;
  }
  const Edge complement = high & 1U;
  return nodes_.number({at, low ^ complement, high ^ complement, 0}) * 2 + complement;
}

Diagram::Edge Diagram::sum(std::span<const Cube> cubes) {
  std::vector<const Cube*> rows;
  rows.reserve(cubes.size());
  for (const Cube& cube : cubes) rows.push_back(&cube);
  return sumFrom(rows, 0);
}

// The rows with 0, with 1 and without the column, in this order, each group summed by itself.
Diagram::Edge Diagram::sumFrom(Rows rows, std::uint32_t at) {
  if (rows.empty()) return zero;
  if (at == width_) return one;
  if (rows.size() == 1) return product(*rows[0], at);
  if (!effort_.spend(rows.size())) return zero;
  sorting_.assign(rows.begin(), rows.end());
  std::size_t begins[4] = {};
  for (std::size_t group = 0; group < 3; ++group) {
    begins[group + 1] = begins[group];
    for (const Cube* row : sorting_) {
      if (row->at(at) == "01-"[group]) rows[begins[group + 1]++] = row;
    }
  }
  const auto part = [&](std::size_t group) {
    return sumFrom(rows.subspan(begins[group], begins[group + 1] - begins[group]), at + 1);
  };
  const Edge low = part(0);
  const Edge high = part(1);
  const Edge both = part(2);
  return disjunction(node(at, low, high), both);
}

Diagram::Edge Diagram::product(const Cube& cube, std::uint32_t from) {
  Edge result = one;
  for (auto at = static_cast<std::uint32_t>(width_); at-- > from;) {
    const char literal = cube.at(at);
    if (literal == '1') result = node(at, zero, result);
    if (literal == '0') result = node(at, result, zero);
  }
  return result;
}

Diagram::Edge Diagram::conjunction(Edge f, Edge g) {
  if (f == zero || g == zero || f == negation(g)) return zero;
  if (f == one || f == g) return g;
  if (g == one) return f;
  if (f > g) std::swap(f, g);
  if (const auto known = conjunctions_.find(f, g)) return static_cast<Edge>(*known);
  if (!effort_.spend(1)) return zero;
  const std::uint32_t at = std::min(level(f), level(g));
  const Edge lows = conjunction(low(f, at), low(g, at));
  const Edge highs = conjunction(high(f, at), high(g, at));
  const Edge result = node(at, lows, highs);
  if (!effort_.isSpent()) conjunctions_.store(f, g, result);
  return result;
}

Diagram::Edge Diagram::cofactor(Edge f, const Cube& literals) {
  std::uint32_t end = 0;
  literals.forEachLiteral(
      [&](std::size_t column, char) { end = static_cast<std::uint32_t>(column) + 1; });
  ++cofactorCall_;
  cofactors_.resize(std::max(cofactors_.size(), nodes_.size()));
  return cofactorOf(f, literals, end);
}

Diagram::Edge Diagram::cofactorOf(Edge f, const Cube& literals, std::uint32_t end) {
  std::uint32_t at = level(f);
  while (at < end && literals.at(at) != '-') {
    f = literals.at(at) == '0' ? low(f, at) : high(f, at);
    at = level(f);
  }
  if (at >= end) return f;
  const std::uint32_t place = f / 2;
  const Edge complement = f & 1U;
  if (cofactors_[place].call == cofactorCall_) return cofactors_[place].result ^ complement;
  if (!effort_.spend(1)) return zero;
  const Edge lows = cofactorOf(low(f, at) ^ complement, literals, end);
  const Edge highs = cofactorOf(high(f, at) ^ complement, literals, end);
  const Edge result = node(at, lows, highs);
  cofactors_[place] = {cofactorCall_, result};
  return result ^ complement;
}

}  // namespace ostrel
