// The wider search for an exclusive-or pair, behind the one that every run makes.
#include <optional>
#include <utility>

#include "logic/kept_sets.h"
#include "logic/thoroughness.h"
#include "logic/xor_operands.h"
#include "run/heart.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The function with an ON set and without an inversion; none where that takes a complement.
std::optional<Equation> plainForm(Equation function) {
  if (function.polarity == Polarity::Inverted) {
    function.swapSets();
    function.togglePolarity();
  }
  if (function.onSet().empty()) return std::nullopt;
  return function;
}

/// An inverted operand turns the output. That must be allowed, and without consequences for an
/// initial state.
bool mayTurn(const Signal& signal) {
  return logicSelector(signal) == SetSelector::Both && !options().ffBeforeInverter;
}

}  // namespace

bool synthesizeXorWidely(Signal& signal, Diligence& diligence) {
  const Equation* logic = signal.slot(SlotLogic);
  if (logic == nullptr || signal.polarity == Polarity::Inverted) return synthesizeXor(signal);
  if (logic->polarity == Polarity::Inverted && !mayTurn(signal)) return synthesizeXor(signal);
  const Equation function = *logic;
  const Thoroughness level = diligence.level();
  int terms = function.termCount(SetSelector::Smaller);
  if (synthesizeXor(signal)) {
    Equation& right = *signal.slot(SlotXorRight);
    diligence.spend(right.minimize(WantedSets::On, level).steps);
    terms = signal.slot(SlotXorLeft)->onCount() + right.onCount();
  }
  heartMsg();
  const std::optional<Equation> plain = plainForm(function);
  if (!plain) return signal.hasXorPair();
  std::size_t steps = 0;
  auto pair = plain->findXorPair(terms, mayTurn(signal), level, steps);
  diligence.spend(steps);
  if (!pair) return signal.hasXorPair();
  pair->first.extension = pair->second.extension = function.extension;
  signal.setSlot(SlotXorLeft, std::move(pair->first));
  signal.setSlot(SlotXorRight, std::move(pair->second));
  signal.deleteSlot(SlotLogic);
  return true;
}

}  // namespace ostrel
