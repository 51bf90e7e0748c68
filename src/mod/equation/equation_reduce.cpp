// Minimising the sets of an Equation and working a missing one out.
#include "equation/equation.h"
#include "run/heart.h"

namespace ostrel {

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
  if (wantsOff && !offSet_.empty()) offSet_ = minimizeChain(offSet_, *terms_);
  if (wantsOn && onSet_.empty()) onSet_ = complementChain(offSet_, *terms_);
  if (wantsOff && offSet_.empty()) {
    const bool wouldGoAgain = keepsSmaller && complementHasAtLeast(onSet_.size(), onSet_, *terms_);
    if (!wouldGoAgain) offSet_ = complementChain(onSet_, *terms_);
  }
  return true;
}

}  // namespace ostrel
