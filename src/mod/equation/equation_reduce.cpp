// Minimising the sets of an Equation and working a missing one out.
#include "equation/equation.h"
#include "minimizer/sum_of_products.h"
#include "run/heart.h"

namespace ostrel {
namespace {

// An Equation without an ON set has no support, and so isTooComplex lets it pass. A complement
// beyond this effort would take seconds.
constexpr std::size_t effortWithoutSupport = std::size_t{1} << 31U;

}  // namespace

bool Equation::reduce(SetSelector selector) {
  return workOut(selector, false);
}

void Equation::reduceToSmaller(SetSelector selector) {
  workOut(selector, true);
  keepSets(SetSelector::Smaller);
}

bool Equation::workOut(SetSelector selector, bool keepsSmaller) {
  if (isConstant(Constant::Either) || isEmpty()) return true;
  if (!hasSupport()) computeSupport();
  const bool setIsMissing = onSet_.empty() || offSet_.empty();
  if (setIsMissing && isTooComplex()) return false;

  const bool wantsOn = selector != SetSelector::Off;
  const bool wantsOff = selector != SetSelector::On;
  if (wantsOn && !onSet_.empty()) onSet_ = minimizeChain(onSet_, *terms_);
  heartMsg();
  TermChain off = offSet_;
  if (wantsOff && !off.empty()) off = minimizeChain(off, *terms_);
  if (wantsOn && onSet_.empty()) {
    std::optional<TermChain> on = complementChain(off, *terms_, effortWithoutSupport);
    if (!on) return false;
    onSet_ = *std::move(on);
  }
  if (wantsOff && off.empty()) {
    const bool wouldGoAgain = keepsSmaller && complementHasAtLeast(onSet_.size(), onSet_, *terms_);
    if (!wouldGoAgain) off = *complementChain(onSet_, *terms_, unlimited);
  }
  offSet_ = std::move(off);
  return true;
}

}  // namespace ostrel
