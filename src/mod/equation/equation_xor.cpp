// Exclusive-or synthesis of one Equation: what of it may be taken apart, and the operands as
// Equations. xor_pair.cpp finds the pair.
#include <algorithm>
#include <optional>

#include "equation/equation.h"
#include "minimizer/budgets.h"
#include "minimizer/column_map.h"
#include "minimizer/xor_pair.h"
#include "run/heart.h"

namespace ostrel {

bool Equation::bringToPlainForm() {
  if (polarity == Polarity::Inverted) {
    if (offSet_.empty() && !reduce(SetSelector::Off)) return false;
    swapSets();
    togglePolarity();
  }
  // The ON set can read columns that the support doesn't know: of a set that was exchanged in, or
  // of a node that was there before and now stands for a group of terms.
  ColumnSet columns = supportColumns();
  const std::size_t known = columns.size();
  ostrel::markUsedColumns(onSet_, *terms_, columns);
  if (columns.size() > known) {
    support_.length = 0;
    computeSupport();
  }
  return true;
}

/// A half of an exclusive-or pair, from cubes of the columns of `map`.
Equation Equation::makeXorOperand(std::span<const Cube> cubes, const ColumnMap& map,
                                  XorHalf role) const {
  Equation operand(*terms_);
  for (const Cube& cube : cubes) operand.addOnTerm(terms_->term(map.restore(cube)));
  operand.extension = Extension::None;
  operand.xorRole = role;
  return operand;
}

std::optional<XorOperands> Equation::decomposeXor(int termLimit) {
  if (onSet_.empty()) return std::nullopt;
  if (!hasSupport()) computeSupport();
  if (!bringToPlainForm()) return std::nullopt;

  const std::size_t terms = onSet_.size() + offSet_.size();
  const ColumnSet support = supportColumns();
  const std::size_t columns = support.size();
  if (terms * columns * columns > xorBudget) return std::nullopt;

  const ColumnMap map(support, terms_->width());
  CubeList function;
  for (const Term term : onSet_) function.push_back(map.compact(terms_->cube(term)));
  const XorPairLimits limits = {.effort = xorBudget / std::max<std::size_t>(terms * columns, 1),
                                .terms = static_cast<std::size_t>(termLimit),
                                .universalIsAllowed = columns != terms_->width()};
  const std::optional<XorPair> pair = bestXorPair(function, columns, limits, heartMsg);
  if (!pair) return std::nullopt;

  XorOperands operands = {makeXorOperand({&pair->left, 1}, map, XorHalf::Left),
                          makeXorOperand(pair->right, map, XorHalf::Right)};
  operands.left.reduce(SetSelector::Both);
  const bool leftIsLiteral = operands.left.onCount() == 1 && operands.left.offCount() == 1;
  operands.right.reduce(leftIsLiteral ? SetSelector::Both : SetSelector::On);
  swapSetsIfShorter(operands.left, operands.right);
  return operands;
}

void swapSetsIfShorter(Equation& left, Equation& right) {
  if (left.offCount() != 1 || right.offCount() == 0 || right.offCount() >= right.onCount()) return;
  left.swapSets();
  right.swapSets();
}

}  // namespace ostrel
