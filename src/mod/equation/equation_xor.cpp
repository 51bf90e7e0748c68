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
#include <optional>
#include <vector>

#include "equation/equation.h"
#include "equation/sort_by_dashes.h"
#include "minimizer/cover_bound.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "run/heart.h"

namespace ostrel {
namespace {

// Bounds the work twice: functions whose measure (terms times columns in use squared) is greater
// are left alone, and the number of cubes tried shrinks as the measure and the sum grow.
constexpr std::int64_t xorBudget = 25600;

/// The best pair of a function over the first `tries` cubes of its exclusive-or sum: the place of
/// the left operand, and the right one. None if no cube is one, or if each pair is proven to have
/// `termLimit` terms or more. The cube without a literal is no operand where all `designWidth`
/// columns are in use.
std::optional<LeftOut> bestPair(const CubeList& function, const CubeList& sum, std::int64_t tries,
                                std::size_t width, std::size_t designWidth, int termLimit) {
  const std::size_t count = std::min(sum.size(), static_cast<std::size_t>(tries));
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < count; ++i) {
    if (dashCount(sum[i], width) != designWidth) places.push_back(i);
  }
  CoverBound bound(function, width);
  const auto canBeat = [&](std::size_t place, std::size_t length) {
    heartMsg();
    return bound.ofXor(sum[place], length) < length;
  };
  // The complement of a single literal is a single term too: such a pair can be turned around. For
  // any other left operand no OFF set is worked out on the right, so the pair stays as it is.
  const auto limit = static_cast<std::size_t>(termLimit);
  const auto canPay = [&](std::size_t place) {
    return sum[place].literalCount() < 2 || canBeat(place, limit - 1);
  };
  if (std::ranges::none_of(places, canPay)) return std::nullopt;
  return shortestLeftOut(sum, places, width, canBeat);
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
  auto operand = std::make_unique<Equation>(*terms_);
  for (const Cube& cube : cubes) operand->addOnTerm(terms_->term(map.widen(cube)));
  operand->extension = Extension::None;
  operand->xorRole = role;
  return operand;
}

bool Equation::decomposeXor(int termLimit, std::unique_ptr<Equation>& left,
                            std::unique_ptr<Equation>& right) {
  if (onSet_.empty()) return false;
  if (!hasSupport()) computeSupport();
  if (!bringToPlainForm()) return false;

  const std::int64_t terms = onCount() + offCount();
  const ColumnSet support = supportColumns();
  const auto columns = static_cast<std::int64_t>(support.size());
  if (terms * columns * columns > xorBudget) return false;

  const ColumnMap map(support, terms_->width());
  CubeList narrow;
  for (const Term term : onSet_) narrow.push_back(map.narrow(terms_->cube(term)));
  std::optional<CubeList> sum = xorCover(narrow, map.narrowWidth());
  if (!sum) return false;
  const auto length = static_cast<std::int64_t>(sum->size());
  const std::int64_t tries =
      std::max<std::int64_t>(xorBudget / std::max<std::int64_t>(terms * columns * length, 1), 1);
  sortByDashes(*sum);
  const std::optional<LeftOut> pair =
      bestPair(narrow, *sum, tries, map.narrowWidth(), terms_->width(), termLimit);
  if (!pair) return false;

  left = makeXorOperand({&(*sum)[pair->place], 1}, map, XorHalf::Left);
  left->reduce(SetSelector::Both);
  right = makeXorOperand(pair->sum, map, XorHalf::Right);
  const bool leftIsLiteral = left->onCount() == 1 && left->offCount() == 1;
  right->reduce(leftIsLiteral ? SetSelector::Both : SetSelector::On);
  if (left->offCount() == 1 && right->offCount() >= 1 && right->offCount() < right->onCount()) {
    left->swapSets();  // the exclusive OR of two complements is that of the functions
    right->swapSets();
  }
  return true;
}

}  // namespace ostrel
