// Cones of the graph as clauses of one solver.
#pragma once

#include <cadical.hpp>
#include <unordered_map>
#include <vector>

#include "verify/graph.h"

namespace ostrel::verify {

class Cnf {
 public:
  explicit Cnf(const Graph& graph) : graph_(graph) { solver.set("quiet", 1); }

  CaDiCaL::Solver solver;

  void clause(std::initializer_list<int> literals) {
    for (const int literal : literals) solver.add(literal);
    solver.add(0);
  }

  int newVariable() { return ++variables_; }

  /// The solver's literal. The clauses of its cone are added unless they are there.
  int literal(Literal goal) {
    std::vector<std::size_t> fresh;
    meet(goal.node(), fresh);
    for (std::size_t i = 0; i < fresh.size(); ++i) {
      for (const Literal input : graph_.inputs(fresh[i])) meet(input.node(), fresh);
    }
    for (const std::size_t node : fresh) define(node);
    return name(goal);
  }

  bool mentions(Literal variable) const { return names_.contains(variable.node()); }

  /// The value in the model; false for a variable that no clause mentions.
  bool value(Literal variable) { return mentions(variable) && solver.val(name(variable)) > 0; }

 private:
  int name(Literal literal) const {
    const int n = names_.at(literal.node());
    return literal.isComplement() ? -n : n;
  }

  void meet(std::size_t node, std::vector<std::size_t>& fresh) {
    if (!names_.emplace(node, variables_ + 1).second) return;
    ++variables_;
    fresh.push_back(node);
  }

  void define(std::size_t node) {
    const int own = names_.at(node);
    if (node == 0) clause({-own});
    const auto inputs = graph_.inputs(node);
    if (inputs.empty()) return;
    for (const Literal input : inputs) clause({-own, name(input)});
    for (const Literal input : inputs) solver.add(-name(input));
    clause({own});
  }

  const Graph& graph_;
  std::unordered_map<std::size_t, int> names_;
  int variables_ = 0;
};

}  // namespace ostrel::verify
