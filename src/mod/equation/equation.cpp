#include "equation/equation.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

#include "minimizer/budgets.h"
#include "run/log.h"

namespace ostrel {
namespace {

bool isUniversal(Term term, const TermTable& terms) {
  return terms.cube(term).literalCount() == 0;
}

}  // namespace

Status Equation::readColumn(const PlaFile& file, int column, ColumnSets sets) {
  const PlaName& columnName = file.name(NameKind::Output, column);
  if (extension != Extension::End) {
    error({columnName.base, " has conflicting functions or DOT extensions (",
           extensionText(columnName.extension), " and ", extensionText(extension), ")"});
    return Status::Fatal;
  }
  extension = columnName.extension;
  polarity = columnName.polarity;
  if (xorRole == XorHalf::None) xorRole = columnName.xorHalf;
  if (columnName.percent) togglePolarity();
  phase = file.phaseOf(column);
  onSet_ = std::move(sets.on);
  offSet_ = std::move(sets.off);
  freeTerms_ = std::move(sets.free);
  if (isEmpty() && file.type == PlaType::f) addOffTerm(terms_->term(Cube()));
  return Status::Ok;
}

int Equation::termCount(SetSelector selector) const {
  if (selector == SetSelector::On) return onCount();
  if (selector == SetSelector::Off) return offCount();
  if (onSet_.empty()) return offCount();
  return offSet_.empty() ? onCount() : std::min(onCount(), offCount());
}

bool Equation::isConstant(Constant constant) const {
  if (onCount() + offCount() > 1) return false;
  if (polarity == Polarity::Inverted && constant != Constant::Either) {
    constant = constant == Constant::Zero ? Constant::One : Constant::Zero;
  }
  if (constant == Constant::Zero && !onSet_.empty()) return false;
  if (constant == Constant::One && onSet_.empty()) return false;
  const TermChain& chain = onSet_.empty() ? offSet_ : onSet_;
  return chain.empty() || isUniversal(chain.front(), *terms_);
}

bool Equation::onHoldsUniversal() const {
  return std::ranges::any_of(onSet_, [this](Term term) { return isUniversal(term, *terms_); });
}

bool Equation::exceedsLimit(std::size_t columns, std::size_t terms) {
  return columns * columns * terms > complexityLimit;
}

bool Equation::mayBe(Constant constant, PlaType type) const {
  const bool isOn = (constant == Constant::One) != (polarity == Polarity::Inverted);
  const bool isListedOn = (type == PlaType::f || type == PlaType::fd) && offSet_.empty();
  if (isListedOn && !isOn) return onSet_.empty();
  const TermChain others = isListedOn ? TermChain{terms_->term(Cube())} : isOn ? offSet_ : onSet_;
  Effort effort(questionEffort);
  return isCoveredBy(others, isOn ? onSet_ : offSet_, *terms_, effort);
}

bool Equation::isTooComplex() const {
  return exceedsLimit(supportColumns().size(), onSet_.size() + offSet_.size());
}

bool Equation::sameFunction(const Equation& other) const {
  return (!onSet_.empty() && sameTerms(onSet_, other.onSet_)) ||
         (!offSet_.empty() && sameTerms(offSet_, other.offSet_));
}

bool Equation::hasSupport() const {
  return support_.length != 0 && support_.revision == terms_->revision();
}

void Equation::computeSupport() {
  if (onSet_.empty() || hasSupport()) return;
  support_.chain = onSet_;
  support_.length = terms_->width();
  support_.revision = terms_->revision();
}

ColumnSet Equation::supportColumns() const {
  ColumnSet columns;
  if (hasSupport()) ostrel::markUsedColumns(support_.chain, *terms_, columns);
  return columns;
}

void Equation::markUsedColumns(ColumnSet& columns) {
  computeSupport();
  if (hasSupport()) ostrel::markUsedColumns(support_.chain, *terms_, columns);
}

void Equation::clearOnSet() {
  if (!isConstant(Constant::One)) onSet_.clear();
}

void Equation::clearOffSet() {
  if (!isConstant(Constant::Zero)) offSet_.clear();
}

bool Equation::keepSets(SetSelector selector) {
  const bool smaller = selector == SetSelector::Smaller;
  if (selector == SetSelector::On || (smaller && onCount() >= 1 && onCount() <= offCount())) {
    clearOffSet();
  }
  if (selector == SetSelector::Off || (smaller && offCount() >= 1 && offCount() < onCount())) {
    clearOnSet();
  }
  assert(onSet_.empty() || offSet_.empty());
  if (!onSet_.empty() || isConstant(Constant::Either)) return false;
  swapSets();
  togglePolarity();
  return true;
}

void Equation::togglePolarity() {
  polarity = polarity == Polarity::Inverted ? Polarity::None : Polarity::Inverted;
}

void Equation::normalizePolarity() {
  if (polarity != Polarity::Inverted || !isConstant(Constant::Either)) return;
  swapSets();
  togglePolarity();
}

void Equation::swapExtension() {
  static constexpr std::array<std::pair<Extension, Extension>, 7> twins = {
      {{Extension::RE, Extension::PR},
       {Extension::AR, Extension::AP},
       {Extension::SR, Extension::SP},
       {Extension::S, Extension::R},
       {Extension::ASYNC, Extension::SYNC},
       {Extension::SET, Extension::CLR},
       {Extension::ASET, Extension::ACLR}}};
  for (const auto& [a, b] : twins) {
    if (extension == a || extension == b) {
      extension = extension == a ? b : a;
      return;
    }
  }
}

void Equation::renumber(const std::vector<Term>& renumbered) {
  for (TermChain* chain : {&onSet_, &offSet_, &freeTerms_}) {
    for (Term& term : *chain) {
      assert(term.index < renumbered.size());
      term = renumbered[term.index];
    }
  }
}

}  // namespace ostrel
