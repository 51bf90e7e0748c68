// An Equation as a candidate for splitting: its terms in other lists, and the exchange of listed
// terms for one literal of a node.
#include <algorithm>
#include <unordered_set>

#include "equation/equation.h"

namespace ostrel {

void Equation::collectCovers(CoverList& target) const {
  for (const Cover cover : onSet_) target.add(cover);
}

int Equation::sharedUse(const CoverList& list) const {
  int sum = 0;
  for (const Cover cover : onSet_) sum += std::max(list.useCountOf(cover), 0);
  return sum;
}

std::optional<Cover> Equation::mostSharedCover(const CoverList& list) const {
  std::optional<Cover> best;
  int bestCount = 0;
  for (const Cover cover : onSet_) {
    const int count = list.useCountOf(cover);
    if (count <= bestCount) continue;
    best = cover;
    bestCount = count;
  }
  return best;
}

bool Equation::hasCover(Cover cover, SetSelector set) const {
  return chainHasText(set == SetSelector::On ? onSet_ : offSet_, cover);
}

bool Equation::substituteNode(std::span<const Cover> list, std::size_t column,
                              Polarity nodePolarity, bool exact) {
  if (exact && onSet_.size() != list.size()) return false;
  std::unordered_set<std::uint32_t> present;
  for (const Cover cover : onSet_) present.insert(cover.index);
  for (const Cover cover : list) {
    if (!present.contains(cover.index)) return false;
  }
  Cube literal;
  literal.set(column, nodePolarity == Polarity::Inverted ? '0' : '1');
  onSet_.push_back(terms_->cover(literal));
  removeListed(onSet_, list);
  clearOffSet();
  return true;
}

void Equation::dropRepeatedCovers() {
  std::unordered_set<std::uint32_t> seen;
  std::erase_if(onSet_, [&seen](Cover cover) { return !seen.insert(cover.index).second; });
}

}  // namespace ostrel
