#include "verify/proof/prover.h"

#include <algorithm>

#include "verify/proof/cnf.h"

namespace ostrel::verify {

namespace {

constexpr signed char undecided = 2;

// Shortening an assignment evaluates the cone once for each variable; beyond this many steps the
// assignment stays as long as it is.
constexpr std::size_t narrowBudget = 50'000'000;

// Each conflict is learnt from once.
class ConflictCounter : public CaDiCaL::Learner {
 public:
  bool learning(int /*size*/) override {
    ++count;
    return false;
  }
  void learn(int /*literal*/) override {}

  std::int64_t count = 0;
};

}  // namespace

std::uint64_t Simulation::random() {
  state_ += 0x9e3779b97f4a7c15;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
  z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
  return z ^ (z >> 31);
}

void Simulation::evaluate(std::size_t node) {
  std::uint64_t* value = &values_[node * words];
  if (graph_.isVariable(node)) {
    std::generate_n(value, words, [this] { return random(); });
    return;
  }
  std::fill_n(value, words, node == 0 ? 0 : ~std::uint64_t{0});
  for (const Literal input : graph_.inputs(node)) {
    const std::uint64_t flip = input.isComplement() ? ~std::uint64_t{0} : 0;
    const std::uint64_t* source = &values_[input.node() * words];
    for (std::size_t w = 0; w < words; ++w) value[w] &= source[w] ^ flip;
  }
}

void Simulation::update() {
  std::size_t node = values_.size() / words;
  values_.resize(graph_.size() * words);
  for (; node < graph_.size(); ++node) evaluate(node);
}

void Simulation::set(Literal variable, std::size_t vector, bool value) {
  std::uint64_t& word = values_[variable.node() * words + vector / 64];
  const std::uint64_t bit = std::uint64_t{1} << (vector % 64);
  word = value != variable.isComplement() ? word | bit : word & ~bit;
}

std::optional<std::size_t> Simulation::firstVector(Literal goal) const {
  for (std::size_t vector = 0; vector < vectors; ++vector) {
    if (value(goal, vector)) return vector;
  }
  return std::nullopt;
}

bool Simulation::value(Literal literal, std::size_t vector) const {
  const std::uint64_t word = values_[literal.node() * words + vector / 64];
  return ((word >> (vector % 64)) & 1) != (literal.isComplement() ? 1U : 0U);
}

Proof Prover::find(Literal goal, std::vector<Literal>& assignment, Literal settled) {
  assignment.clear();
  if (goal == falseLiteral) return Proof::Never;
  const std::vector<std::size_t> nodes = graph_.cone({goal, settled});
  simulation_.update();
  if (const auto vector = simulation_.firstVector(goal)) {
    for (const std::size_t node : nodes) {
      const Literal variable{static_cast<std::uint32_t>(2 * node)};
      if (!graph_.isVariable(node)) continue;
      assignment.push_back(variable ^ !simulation_.value(variable, *vector));
    }
  } else if (const Proof proof = solve(goal, nodes, assignment); proof != Proof::Found) {
    return proof;
  }
  narrow(goal, settled, nodes, assignment);
  return Proof::Found;
}

std::optional<bool> Prover::evaluate(Literal literal, const std::vector<Literal>& assignment) {
  propagate(graph_.cone({literal}), assignment);
  const signed char value = ternary(literal);
  return value == undecided ? std::nullopt : std::optional(value == 1);
}

// Guesses for the choices are collected, each of which fails to make the goal false under the next
// assignment: the question whether one assignment withstands all choices becomes a few that the
// solver can answer. Every turn adds a guess that is new, and counts as a conflict.
Proof Prover::findForAll(Graph& graph, Literal goal, const std::vector<Literal>& choices,
                         std::vector<Literal>& assignment, Literal settled) {
  std::vector<Literal> guess;
  for (const Literal choice : choices) guess.push_back(!choice);
  Literal withstands = trueLiteral;
  for (bool isFirst = true; isFirst || --work_.effort > 0; isFirst = false) {
    withstands = graph.both(withstands, graph.restrict(goal, guess));
    const Proof proof = find(withstands, assignment, graph.restrict(settled, guess));
    if (proof != Proof::Found || choices.empty()) return proof;
    std::vector<Literal> escape;
    const Proof escapes = find(!graph.restrict(goal, assignment), escape);
    if (escapes != Proof::Found) return escapes == Proof::Never ? Proof::Found : escapes;
    for (Literal& g : guess) {
      g = {static_cast<std::uint32_t>(2 * g.node())};
      if (std::ranges::find(escape, g) == escape.end()) g = !g;
    }
  }
  work_.effort = std::max<std::int64_t>(work_.effort, 0);
  return Proof::GaveUp;
}

Proof Prover::solve(Literal goal, const std::vector<std::size_t>& nodes,
                    std::vector<Literal>& assignment) {
  Cnf cnf(graph_);
  cnf.clause({cnf.literal(goal)});
  ConflictCounter conflicts;
  CaDiCaL::Solver solver;
  solver.set("quiet", 1);
  work_.files.open(cnf, title_, nameOf_, solver);
  for (const int literal : cnf.clauses()) solver.add(literal);
  solver.connect_learner(&conflicts);
  solver.limit("conflicts", static_cast<int>(std::min<std::int64_t>(work_.effort, 1 << 30)));
  const int status = solver.solve();
  solver.disconnect_learner();
  work_.files.close(status == 20, solver);
  work_.effort = status == 0 ? 0 : std::max<std::int64_t>(work_.effort - conflicts.count, 0);
  if (status != 10) return status == 20 ? Proof::Never : Proof::GaveUp;
  for (const std::size_t node : nodes) {
    if (!graph_.isVariable(node)) continue;
    const Literal variable{static_cast<std::uint32_t>(2 * node)};
    assignment.push_back(variable ^ !cnf.value(solver, variable));
  }
  return Proof::Found;
}

signed char Prover::ternary(Literal literal) const {
  const signed char value = ternary_[literal.node()];
  return value == undecided ? undecided
                            : static_cast<signed char>(value ^ (literal.isComplement() ? 1 : 0));
}

void Prover::propagate(const std::vector<std::size_t>& nodes,
                       const std::vector<Literal>& assignment) {
  ternary_.resize(graph_.size(), undecided);
  for (const std::size_t node : nodes) ternary_[node] = undecided;
  for (const Literal given : assignment) ternary_[given.node()] = given.isComplement() ? 0 : 1;
  ternary_[0] = 0;
  for (const std::size_t node : nodes) {
    if (graph_.inputs(node).empty()) continue;
    signed char value = 1;
    for (const Literal input : graph_.inputs(node)) {
      const signed char v = ternary(input);
      if (v == 0) value = 0;
      if (v == 0) break;
      if (v == undecided) value = undecided;
    }
    ternary_[node] = value;
  }
}

// Drops each variable without which the goal is still true: what stays is what a reader needs.
void Prover::narrow(Literal goal, Literal settled, const std::vector<std::size_t>& nodes,
                    std::vector<Literal>& assignment) {
  std::size_t steps = 0;
  for (const std::size_t node : nodes) steps += 1 + graph_.inputs(node).size();
  for (std::size_t i = 0; i < assignment.size() && steps * assignment.size() < narrowBudget;) {
    const Literal dropped = assignment[i];
    assignment.erase(assignment.begin() + static_cast<std::ptrdiff_t>(i));
    propagate(nodes, assignment);
    if (ternary(goal) == 1 && ternary(settled) != undecided) continue;
    assignment.insert(assignment.begin() + static_cast<std::ptrdiff_t>(i), dropped);
    ++i;
  }
}

}  // namespace ostrel::verify
