// An Equation that gives terms to a node: the exchange of listed terms for one literal.
#include <algorithm>
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
  auto end = onSet_.begin();  // of the first terms of all texts
  while (end != onSet_.end() && !missing.empty()) missing.erase((end++)->index);
  if (!missing.empty()) return false;
  Cube literal;
  literal.set(column, nodePolarity == Polarity::Inverted ? '0' : '1');
  // The first term of each text goes.
  const auto goes = [&toRemove](Term term) { return toRemove.erase(term.index) > 0; };
  onSet_.erase(std::remove_if(onSet_.begin(), end, goes), end);
  assert(toRemove.empty());
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
