// Boolean functions as one shared graph of conjunctions.
//
// A node is a constant, a variable or the AND of any number of literals; everything else is made
// of these. Nodes with the same inputs are one node, so the rows that two files have in common are
// stored and proven once, and a function that was not touched is equal because it is the same
// literal.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace ostrel::verify {

/// A node or its complement.
struct Literal {
  std::uint32_t code = 0;  ///< twice the node, plus 1 for the complement

  std::size_t node() const { return code >> 1; }
  bool isComplement() const { return (code & 1) != 0; }
  Literal operator!() const { return {code ^ 1}; }
  Literal operator^(bool invert) const { return {code ^ (invert ? 1U : 0U)}; }
  friend auto operator<=>(const Literal&, const Literal&) = default;
};

inline constexpr Literal falseLiteral{0};
inline constexpr Literal trueLiteral{1};

class Graph {
 public:
  Graph();

  Literal variable();

  /// The AND of the literals; true for none. Their order and repetition do not matter.
  Literal conjunction(std::vector<Literal> inputs);
  /// The OR of the literals; false for none.
  Literal disjunction(std::vector<Literal> inputs);
  Literal both(Literal a, Literal b) { return conjunction({a, b}); }
  Literal either(Literal a, Literal b) { return disjunction({a, b}); }
  Literal exclusiveOr(Literal a, Literal b);

  /// The literal with constants in the place of variables, each given as the literal that is true.
  Literal restrict(Literal goal, const std::vector<Literal>& values);

  /// The nodes that a literal depends on, itself among them, in ascending order.
  std::vector<std::size_t> cone(const std::vector<Literal>& goals) const;

  /// Nodes are numbered in order of creation, so inputs stand in front of what reads them.
  std::size_t size() const { return ends_.size(); }
  /// The literals of a conjunction; empty for the constant and for a variable.
  std::span<const Literal> inputs(std::size_t node) const;
  bool isVariable(std::size_t node) const { return node != 0 && inputs(node).empty(); }

 private:
  Literal find(std::size_t hash, std::span<const Literal> sorted) const;

  std::vector<std::size_t> ends_;  // where the inputs of each node end in pool_
  std::vector<Literal> pool_;
  std::unordered_multimap<std::size_t, std::uint32_t> nodesByHash_;
};

}  // namespace ostrel::verify
