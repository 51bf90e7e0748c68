// Functions as reduced ordered binary decision diagrams.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/cube_list.h"
#include "minimizer/effort.h"
#include "twolevel/node_table.h"

namespace ostrel {

/// The diagrams of functions of one set of columns; level i of a diagram asks for column i. Equal
/// functions have equal edges. Recursion goes as deep as there are columns, so callers bound those.
class Diagram {
 public:
  /// A function: the number of a node, doubled, plus 1 where it stands for the node's complement.
  using Edge = std::uint32_t;
  static constexpr Edge one = 0;
  static constexpr Edge zero = 1;

  /// No node is made once there are `nodeLimit`. What would need one, or a step more than the
  /// effort has, gives just any function; the effort is spent then, which is what to ask for.
  Diagram(std::size_t width, std::size_t nodeLimit, Effort& effort);

  /// From now on there may be so many nodes more than there are.
  void allowMoreNodes(std::size_t count) { nodeLimit_ = nodes_.size() + count; }

  /// The OR of cubes with columns below the width.
  Edge sum(std::span<const Cube> cubes);

  Edge conjunction(Edge f, Edge g);
  Edge difference(Edge f, Edge g) { return conjunction(f, negation(g)); }
  Edge disjunction(Edge f, Edge g) { return negation(conjunction(negation(f), negation(g))); }
  static Edge negation(Edge f) { return f ^ 1U; }

  /// What is left of f where the columns have the values of the literals.
  Edge cofactor(Edge f, const Cube& literals);

  /// The function that is `low` where the column is 0 and `high` where it is 1; both ask for later
  /// columns only.
  Edge node(std::uint32_t level, Edge low, Edge high);

  /// The first column that f asks for, or the width for a constant.
  std::uint32_t level(Edge f) const { return nodes_[f / 2][0]; }

  /// The halves of f in a column that is not behind its first.
  Edge low(Edge f, std::uint32_t at) const {
    return level(f) == at ? nodes_[f / 2][1] ^ (f & 1U) : f;
  }
  Edge high(Edge f, std::uint32_t at) const {
    return level(f) == at ? nodes_[f / 2][2] ^ (f & 1U) : f;
  }

  std::size_t width() const { return width_; }
  std::size_t size() const { return nodes_.size(); }
  Effort& effort() { return effort_; }

 private:
  using Rows = std::span<const Cube*>;
  Edge sumFrom(Rows rows, std::uint32_t level);
  Edge product(const Cube& cube, std::uint32_t level);
  Edge cofactorOf(Edge f, const Cube& literals, std::uint32_t end);

  std::size_t width_;
  std::size_t nodeLimit_;
  Effort& effort_;
  NodeTable nodes_;  // level, low, high, 0; `high` is never a complement
  ResultCache conjunctions_;
  std::vector<const Cube*> sorting_;  // scratch of sumFrom

  // Cofactors found in the present call, by node.
  struct Cofactor {
    std::uint32_t call = 0;
    Edge result = 0;
  };
  std::vector<Cofactor> cofactors_;
  std::uint32_t cofactorCall_ = 0;
};

}  // namespace ostrel
