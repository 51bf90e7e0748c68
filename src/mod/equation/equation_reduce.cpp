// Minimising the sets of an Equation and working a missing one out.
//
// Idea. A wanted set that is there is minimised; one that is missing is the complement of the
// other, by the sharp product. Both work in the columns that the function uses.
//
// Example. ON = 10, 11 becomes 1-, and the missing OFF set 0-.
//
// Cost. A complement can be exponentially longer than its function: a missing set is worked out
// only below the complexity limit and within an effort.
//
// Order. Both sets come out in the order that the minimizer gives, and all later ties follow it.
// The support stays that of the ON set as it was before.
#include <algorithm>
#include <cassert>
#include <utility>

#include "equation/equation.h"
#include "minimizer/budgets.h"
#include "run/heart.h"

namespace ostrel {

bool Equation::reduce(SetSelector selector) {
  return workOut(selector, false);
}

bool Equation::reduceForSmaller(SetSelector selector) {
  return workOut(selector, true);
}

/// The complement of a set. The support may be that of another set, or there may be none, so a set
/// that is wider than any that the limit lets through draws on what the run has for such sets.
std::optional<TermChain> Equation::complementOf(const TermChain& chain) const {
  ColumnSet columns;
  ostrel::markUsedColumns(chain, *terms_, columns);
  Effort& reserve = terms_->reserve();
  const bool isWide = exceedsLimit(columns.size(), chain.size());
  const std::size_t most = isWide ? std::min(effortOfOne, reserve.left()) : effortOfOne;
  Effort effort(most);
  std::optional<TermChain> complement = complementChain(chain, *terms_, effort);
  if (isWide) reserve.spend(most - effort.left());
  return complement;
}

bool Equation::workOut(SetSelector selector, bool keepsSmaller) {
  if (isConstant(Constant::Either) || isEmpty()) return true;
  if (!hasSupport()) computeSupport();
  const bool setIsMissing = onSet_.empty() || offSet_.empty();
  if (setIsMissing && isTooComplex()) return false;

  const bool wantsOn = selector != SetSelector::Off;
  const bool wantsOff = selector != SetSelector::On;
  std::optional<TermChain> on = onSet_;
  if (wantsOn && !on->empty()) on = minimizeChain(*on, *terms_);
  heartMsg();
  std::optional<TermChain> off = offSet_;
  if (wantsOff && !off->empty()) off = minimizeChain(*off, *terms_);
  if (wantsOn && on->empty()) on = complementOf(*off);
  if (wantsOff && on && off->empty()) {
    const bool wouldGoAgain = keepsSmaller && complementHasAtLeast(on->size(), *on, *terms_);
    if (!wouldGoAgain) off = complementOf(*on);
  }
  if (!on || !off) return false;
  onSet_ = *std::move(on);
  offSet_ = *std::move(off);
  assert(!isEmpty());
  return true;
}

}  // namespace ostrel
