// An Equation that gives terms to a node: the exchange of listed terms for one literal.
#include <cassert>
#include <unordered_set>

#include "equation/equation.h"

namespace ostrel {

bool Equation::substituteNode(std::span<const Term> list, std::size_t column, Polarity nodePolarity,
                              bool exact) {
  if (exact && onSet_.size() != list.size()) return false;
  std::unordered_set<std::uint32_t> missing;
  for (const Term term : list) missing.insert(term.index);
  std::unordered_set<std::uint32_t> toRemove = missing;
  for (const Term term : onSet_) {
    missing.erase(term.index);
    if (missing.empty()) break;
  }
  if (!missing.empty()) return false;
  Cube literal;
  literal.set(column, nodePolarity == Polarity::Inverted ? '0' : '1');
  // The first term of each text goes.
  [[maybe_unused]] const std::size_t before = onSet_.size();
  std::erase_if(onSet_, [&toRemove](Term term) { return toRemove.erase(term.index) > 0; });
  assert(toRemove.empty() && onSet_.size() == before - list.size());
  onSet_.push_back(terms_->term(literal));
  clearOffSet();
  return true;
}

bool Equation::dropRepeatedTerms() {
  std::unordered_set<std::uint32_t> seen;
  const auto isRepeated = [&seen](Term term) { return !seen.insert(term.index).second; };
  return std::erase_if(onSet_, isRepeated) > 0;
}

}  // namespace ostrel
