#include "verify/proof/graph.h"

#include <algorithm>
#include <unordered_set>

namespace ostrel::verify {

namespace {

std::size_t hashOf(std::span<const Literal> literals) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const Literal literal : literals) hash = (hash ^ literal.code) * 0x9e3779b97f4a7c15;
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

// Sorts, drops repetitions and constant true. False if the AND is constantly false: a literal and
// its complement are neighbours once sorted.
bool normalize(std::vector<Literal>& literals) {
  std::sort(literals.begin(), literals.end());
  literals.erase(std::unique(literals.begin(), literals.end()), literals.end());
  std::erase(literals, trueLiteral);
  if (!literals.empty() && literals.front() == falseLiteral) return false;
  for (std::size_t i = 1; i < literals.size(); ++i) {
    if (literals[i - 1] == !literals[i]) return false;
  }
  return true;
}

}  // namespace

Graph::Graph() {
  ends_.push_back(0);
}

Literal Graph::variable() {
  ends_.push_back(pool_.size());
  return {static_cast<std::uint32_t>(2 * (ends_.size() - 1))};
}

std::span<const Literal> Graph::inputs(std::size_t node) const {
  const std::size_t begin = node == 0 ? 0 : ends_[node - 1];
  return std::span(pool_).subspan(begin, ends_[node] - begin);
}

Literal Graph::find(std::size_t hash, std::span<const Literal> sorted) const {
  const auto [first, last] = nodesByHash_.equal_range(hash);
  for (auto i = first; i != last; ++i) {
    if (std::ranges::equal(inputs(i->second), sorted)) return {2 * i->second};
  }
  return falseLiteral;
}

Literal Graph::conjunction(std::vector<Literal> literals) {
  if (!normalize(literals)) return falseLiteral;
  if (literals.empty()) return trueLiteral;
  if (literals.size() == 1) return literals.front();
  const std::size_t hash = hashOf(literals);
  if (const Literal known = find(hash, literals); known != falseLiteral) return known;
  pool_.insert(pool_.end(), literals.begin(), literals.end());
  ends_.push_back(pool_.size());
  const auto node = static_cast<std::uint32_t>(ends_.size() - 1);
  nodesByHash_.emplace(hash, node);
  return {2 * node};
}

Literal Graph::disjunction(std::vector<Literal> literals) {
  for (Literal& literal : literals) literal = !literal;
  return !conjunction(std::move(literals));
}

Literal Graph::exclusiveOr(Literal a, Literal b) {
  const bool invert = a.isComplement() != b.isComplement();
  const Literal x = a ^ a.isComplement();
  const Literal y = b ^ b.isComplement();
  return either(both(x, !y), both(!x, y)) ^ invert;
}

std::vector<std::size_t> Graph::cone(const std::vector<Literal>& goals) const {
  std::unordered_set<std::size_t> seen;
  std::vector<std::size_t> nodes;
  const auto meet = [&](Literal literal) {
    if (seen.insert(literal.node()).second) nodes.push_back(literal.node());
  };
  for (const Literal goal : goals) meet(goal);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    for (const Literal input : inputs(nodes[i])) meet(input);
  }
  std::sort(nodes.begin(), nodes.end());
  return nodes;
}

Literal Graph::restrict(Literal goal, const std::vector<Literal>& values) {
  std::unordered_map<std::size_t, Literal> copies;
  for (const Literal value : values) copies[value.node()] = trueLiteral ^ value.isComplement();
  for (const std::size_t node : cone({goal})) {
    std::vector<Literal> copied;
    for (const Literal input : inputs(node)) {
      copied.push_back(copies.at(input.node()) ^ input.isComplement());
    }
    const Literal self{static_cast<std::uint32_t>(2 * node)};
    copies.emplace(node, copied.empty() ? self : conjunction(std::move(copied)));
  }
  return copies.at(goal.node()) ^ goal.isComplement();
}

}  // namespace ostrel::verify
