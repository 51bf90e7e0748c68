// Cones of the graph as clauses of one solver.
#pragma once

#include <cadical.hpp>
#include <unordered_map>
#include <vector>

#include "verify/proof/graph.h"

namespace ostrel::verify {

class Cnf {
 public:
  explicit Cnf(const Graph& graph) : graph_(graph) {}

  void clause(std::initializer_list<int> literals) {
    clauses_.insert(clauses_.end(), literals);
    end();
  }

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

  /// All clauses, a 0 behind each.
  const std::vector<int>& clauses() const { return clauses_; }
  std::size_t clauseCount() const { return clauseCount_; }
  /// The node of each of the solver's variables, from its variable 1 on.
  const std::vector<std::size_t>& nodes() const { return nodes_; }

  /// The value in the solver's model; false for a variable that no clause mentions.
  bool value(CaDiCaL::Solver& solver, Literal variable) const {
    return names_.contains(variable.node()) && solver.val(name(variable)) > 0;
  }

 private:
  int name(Literal literal) const {
    const int n = names_.at(literal.node());
    return literal.isComplement() ? -n : n;
  }

  void meet(std::size_t node, std::vector<std::size_t>& fresh) {
    if (!names_.emplace(node, static_cast<int>(nodes_.size()) + 1).second) return;
    nodes_.push_back(node);
    fresh.push_back(node);
  }

  void define(std::size_t node) {
    const int own = names_.at(node);
    if (node == 0) clause({-own});
    const auto inputs = graph_.inputs(node);
    if (inputs.empty()) return;
    for (const Literal input : inputs) clause({-own, name(input)});
    for (const Literal input : inputs) clauses_.push_back(-name(input));
    clauses_.push_back(own);
    end();
  }

  void end() {
    clauses_.push_back(0);
    ++clauseCount_;
  }

  const Graph& graph_;
  std::unordered_map<std::size_t, int> names_;
  std::vector<std::size_t> nodes_;
  std::vector<int> clauses_;
  std::size_t clauseCount_ = 0;
};

}  // namespace ostrel::verify
