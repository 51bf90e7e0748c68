// Exclusive-or synthesis of one Equation.
//
// The ON set of f is turned into an exclusive-or sum of cubes, f = c1 XOR c2 XOR ... XOR ce. Any
// one cube can be the left operand; the right operand is then the exclusive OR of all the others,
// brought back to a sum of products. The cube with the shortest right operand wins, and of equally
// good cubes the one that was tried first.
//
// Example: the terms 100, 010, 001, 111 (odd parity) are the sum 0-- XOR --1 XOR -0-, and the pair
// is 0-- on the left, -00 + -11 on the right: three terms in place of four.
#include <algorithm>
#include <utility>

#include "equation/equation.h"
#include "equation/sort_by_dashes.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "run/heart.h"

namespace ostrel {
namespace {

// Bounds the work twice: functions whose measure (terms times columns in use squared) is greater
// are left alone, and the number of cubes tried shrinks as the measure and the sum grow.
constexpr std::int64_t xorBudget = 25600;

/// A left operand and the cubes of its right operand, in the columns in use.
struct XorPair {
  Cube left;
  CubeList right;
};

/// The best pair over the first `tries` cubes of an exclusive-or sum, none if no cube was tried.
/// The cube without a literal is no operand where all `designWidth` columns are in use.
std::optional<XorPair> bestPair(const CubeList& sum, std::int64_t tries, std::size_t width,
                                std::size_t designWidth) {
  std::optional<XorPair> best;
  const std::size_t count = std::min(sum.size(), static_cast<std::size_t>(tries));
  forEachLeftOut(sum, count, width, [&](std::size_t i, CubeList others) {
    if (dashCount(sum[i], width) == designWidth) return;
    if (!best || others.size() < best->right.size()) best = {sum[i], std::move(others)};
    heartMsg();
  });
  return best;
}

}  // namespace

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

std::unique_ptr<Equation> Equation::makeXorOperand(std::span<const Cube> cubes,
                                                   const ColumnMap& map, XorHalf role) const {
  auto operand = std::make_unique<Equation>(*terms_, owner, name);
  for (const Cube& cube : cubes) operand->addOnCover(terms_->cover(map.widen(cube)));
  operand->extension = Extension::None;
  operand->xorRole = role;
  return operand;
}

bool Equation::decomposeXor(std::unique_ptr<Equation>& left, std::unique_ptr<Equation>& right) {
  if (onSet_.empty()) return false;
  if (!hasSupport()) computeSupport();
  if (!bringToPlainForm()) return false;

  const std::int64_t terms = onCount() + offCount();
  const ColumnSet support = supportColumns();
  const auto columns = static_cast<std::int64_t>(support.size());
  if (terms * columns * columns > xorBudget) return false;

  const ColumnMap map(support, terms_->width());
  CubeList narrow;
  for (const Cover cover : onSet_) narrow.push_back(map.narrow(terms_->cube(cover)));
  std::optional<CubeList> sum = xorCover(narrow, map.narrowWidth());
  if (!sum) return false;
  const auto length = static_cast<std::int64_t>(sum->size());
  const std::int64_t tries =
      std::max<std::int64_t>(xorBudget / std::max<std::int64_t>(terms * columns * length, 1), 1);
  sortByDashes(*sum);
  const auto pair = bestPair(*sum, tries, map.narrowWidth(), terms_->width());
  if (!pair) return false;

  left = makeXorOperand({&pair->left, 1}, map, XorHalf::Left);
  left->reduce(SetSelector::Both);
  right = makeXorOperand(pair->right, map, XorHalf::Right);
  const bool leftIsLiteral = left->onCount() == 1 && left->offCount() == 1;
  right->reduce(leftIsLiteral ? SetSelector::Both : SetSelector::On);
  if (left->offCount() == 1 && right->offCount() >= 1 && right->offCount() < right->onCount()) {
    left->swapSets();  // the exclusive OR of two complements is that of the functions
    right->swapSets();
  }
  return true;
}

}  // namespace ostrel
