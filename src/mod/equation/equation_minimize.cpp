// The two-level minimisation of one Equation.
//
// Idea. Both sets go as cubes to the minimisation, which knows no Equations, and come back as
// terms. What the file leaves open is free: its "-", and what neither set holds where both are
// there.
//
// Example. ON = 11, OFF = 00 of two columns leaves two points free: ON becomes 1-, OFF 0-.
//
// Cost. That of the minimisation, which has its own limits.
//
// Order. Terms with few literals first, equally long ones by the age of their handles: in this
// order functions that have terms in common name them alike, which is what splitting shares by.
#include <algorithm>
#include <cassert>
#include <utility>

#include "equation/equation.h"
#include "twolevel/cube_xor.h"

namespace ostrel {
namespace {

TermChain termsOf(const CubeList& cubes, TermTable& terms) {
  TermChain chain;
  chain.reserve(cubes.size());
  for (const Cube& cube : cubes) chain.push_back(terms.term(cube));
  std::sort(chain.begin(), chain.end(), [&](Term a, Term b) {
    const std::size_t literals = terms.cube(a).literalCount();
    const std::size_t others = terms.cube(b).literalCount();
    return literals != others ? literals < others : a < b;
  });
  return chain;
}

}  // namespace

Minimized Equation::minimize(WantedSets wanted, Thoroughness thoroughness) {
  if (isEmpty() || isConstant(Constant::Either)) return {CoverState::Minimum, 0};
  if (onSet_.size() + offSet_.size() > maxRows) return {};  // before they are copied
  const bool isOffOnly = onSet_.empty();
  if (isOffOnly) swapSets();
  PartialFunction function = {cubesOf(onSet_, *terms_), cubesOf(freeTerms_, *terms_), {}};
  if (!offSet_.empty()) function.off = cubesOf(offSet_, *terms_);
  if (isOffOnly && wanted == WantedSets::On) wanted = WantedSets::Off;
  const MinimizedFunction result = ostrel::minimize(function, wanted, thoroughness);
  onSet_ = termsOf(result.on.cubes, *terms_);
  if (result.off.state != CoverState::Unknown) offSet_ = termsOf(result.off.cubes, *terms_);
  if (isOffOnly) swapSets();
  freeTerms_.clear();
  support_ = {};
  assert(!isEmpty());
  const bool isOn = onSet_.size() <= offSet_.size() || offSet_.empty();
  return {isOn ? result.on.state : result.off.state, result.steps};
}

std::optional<std::pair<Equation, Equation>> Equation::findXorPair(int termLimit, bool mayTurn,
                                                                   Thoroughness thoroughness,
                                                                   std::size_t& steps) const {
  if (termLimit < 3) return std::nullopt;
  const auto limit = static_cast<std::size_t>(termLimit) - 1;
  const auto pair = ostrel::findCubeXor(cubesOf(onSet_, *terms_), cubesOf(offSet_, *terms_), limit,
                                        mayTurn, thoroughness, steps);
  if (!pair) return std::nullopt;
  std::pair<Equation, Equation> operands = {Equation(*terms_), Equation(*terms_)};
  auto& [left, right] = operands;
  left.onSet_ = {terms_->term(pair->left)};
  right.onSet_ = termsOf(pair->right, *terms_);
  left.extension = right.extension = Extension::None;
  left.xorRole = XorHalf::Left;
  right.xorRole = XorHalf::Right;
  if (pair->isTurned) right.polarity = Polarity::Inverted;
  assert(left.onCount() + right.onCount() < termLimit);
  return operands;
}

}  // namespace ostrel
