// An Equation that gives terms to a node: the exchange of listed terms for one literal.
#include <unordered_set>

#include "equation/equation.h"

namespace ostrel {

bool Equation::substituteNode(std::span<const Cover> list, std::size_t column,
                              Polarity nodePolarity, bool exact) {
  if (exact && onSet_.size() != list.size()) return false;
  std::unordered_set<std::uint32_t> missing;
  for (const Cover cover : list) missing.insert(cover.index);
  std::unordered_set<std::uint32_t> toRemove = missing;
  for (const Cover cover : onSet_) {
    missing.erase(cover.index);
    if (missing.empty()) break;
  }
  if (!missing.empty()) return false;
  Cube literal;
  literal.set(column, nodePolarity == Polarity::Inverted ? '0' : '1');
  // The first term of each text goes.
  std::erase_if(onSet_, [&toRemove](Cover cover) { return toRemove.erase(cover.index) > 0; });
  onSet_.push_back(terms_->cover(literal));
  clearOffSet();
  return true;
}

bool Equation::dropRepeatedCovers() {
  std::unordered_set<std::uint32_t> seen;
  const auto isRepeated = [&seen](Cover cover) { return !seen.insert(cover.index).second; };
  return std::erase_if(onSet_, isRepeated) > 0;
}

}  // namespace ostrel
