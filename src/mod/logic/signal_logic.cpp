// The decisions on one Signal's logic: which sets its Equations keep, and what it takes over from
// another Signal.
#include <utility>

#include "logic/input_column.h"
#include "logic/signal.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

/// The sets that SlotLogic may choose from: only ON where inversion at the output is ruled out.
SetSelector Signal::logicSelector() const {
  const Options& set = options();
  const bool onOnly = !set.reduce || (!set.invert && !isCombinatorial()) ||
                      (set.ffBeforeInverter && registerType == RegisterType::REG_T);
  return onOnly ? SetSelector::On : SetSelector::Both;
}

void Signal::reduce() {
  Equation* logic = slot(SlotLogic);
  Equation* left = slot(SlotXorLeft);
  Equation* right = slot(SlotXorRight);
  if (!reduced) {
    if (logic != nullptr) logic->reduceToSmaller(logicSelector());
  } else {
    if (logic != nullptr) logic->reduce(logicSelector());
    if (left != nullptr) left->reduce(SetSelector::Both);
    if (right != nullptr) right->reduce(SetSelector::Both);
    if (hasXorPair() && left->offCount() == 1 && right->offCount() > 0 &&
        right->offCount() < right->onCount()) {
      left->swapSets();
      right->swapSets();
    }
  }
  reduced = true;
}

void Signal::choosePolarity() {
  const Options& set = options();
  if (slot(SlotLogic) != nullptr && slot(SlotLogic)->keepSets(logicSelector()) &&
      set.ffBeforeInverter && (slot(SlotReset) != nullptr || slot(SlotSet) != nullptr)) {
    // The flip-flop now holds the complement, so its initial state has changed with the output.
    if (set.swapSetReset) {
      swapSlots(SlotReset, SlotSet);
      logMessage(toLog, "<Note> %s: %s Set/Reset swapped to follow output polarity\n", toolTag,
                 name.c_str());
    } else {
      logMessage(toLog,
                 "<Warning> %s: %s polarity is inverted, register initialization has changed\n",
                 toolTag, name.c_str());
    }
  }
  const std::pair<Slot, SetSelector> choices[] = {
      {SlotXorLeft, SetSelector::On}, {SlotXorRight, SetSelector::On}, {SlotClock, set.ckMode},
      {SlotClockEnable, set.ceMode},  {SlotReset, set.arMode},         {SlotSet, set.apMode},
      {SlotOutputEnable, set.oeMode}};
  for (const auto& [index, selector] : choices) {
    if (slot(index) != nullptr) slot(index)->keepSets(selector);
  }
}

void Signal::normalizePolarity() {
  for (const auto& equation : slots_) {
    if (equation) equation->normalizePolarity();
  }
}

void Signal::swapSlots(Slot a, Slot b) {
  std::swap(slots_[a], slots_[b]);
  if (slots_[a] && slots_[b]) {
    std::swap(slots_[a]->extension, slots_[b]->extension);
    std::swap(slots_[a]->xorRole, slots_[b]->xorRole);
  } else if (slots_[a] || slots_[b]) {
    (slots_[a] ? slots_[a] : slots_[b])->swapExtension();
  }
}

void Signal::copyLogicFrom(const Signal& other) {
  const auto invert = [](Polarity& own, Polarity others) {
    if (others != Polarity::Inverted) return;
    own = own == Polarity::Inverted ? Polarity::Positive : Polarity::Inverted;
  };
  invert(polarity, other.polarity);
  invert(columnPolarity, other.columnPolarity);

  const Equation* old = slot(SlotLogic);
  const Extension oldExtension = old != nullptr ? old->extension : Extension::None;
  const Polarity oldPolarity = old != nullptr ? old->polarity : Polarity::None;
  const auto copy = [&](Slot index, XorHalf role) -> Equation* {
    deleteSlot(index);
    if (other.slot(index) == nullptr) return nullptr;
    slots_[index] = std::make_unique<Equation>(*other.slot(index), role);
    slots_[index]->owner = this;
    slots_[index]->name = name;
    slots_[index]->extension = oldExtension;
    return slot(index);
  };
  Equation* logic = copy(SlotLogic, XorHalf::None);
  if (logic != nullptr && oldPolarity == Polarity::Inverted) logic->togglePolarity();
  for (Equation* operand : {copy(SlotXorLeft, XorHalf::Left), copy(SlotXorRight, XorHalf::Right)}) {
    if (operand != nullptr) operand->polarity = oldPolarity;
  }
}

std::optional<std::size_t> Signal::singleLiteral(std::span<const InputColumn> table) const {
  const Equation* logic = slot(SlotLogic);
  if (logic == nullptr) return std::nullopt;
  const bool isOn = !logic->onSet().empty();
  const TermChain& chain = isOn ? logic->onSet() : logic->offSet();
  if (chain.size() != 1) return std::nullopt;
  const Cube& cube = terms_->cube(chain.front());
  if (cube.literalCount() != 1) return std::nullopt;

  std::size_t column = 0;
  bool inverted = !isOn;
  cube.forEachLiteral([&](std::size_t c, char literal) {
    column = c;
    if (literal == '0') inverted = !inverted;
  });
  const InputColumn& source = table[column];
  if (source.extension == Extension::Q && source.signal->polarity == Polarity::Inverted) {
    inverted = !inverted;
  }
  if (inverted) return std::nullopt;
  return column;
}

int Signal::bestTermCount() const {
  int count = 0;
  if (slot(SlotXorLeft) == nullptr && slot(SlotXorRight) == nullptr) {
    return slot(SlotLogic) == nullptr ? 0 : slot(SlotLogic)->termCount(SetSelector::Smaller);
  }
  for (const Slot index : {SlotXorLeft, SlotXorRight}) {
    if (slot(index) != nullptr) count += slot(index)->termCount(SetSelector::Smaller);
  }
  return count;
}

void Signal::fillFromTerms(std::span<const Term> group) {
  Equation& logic = makeEquation(SlotLogic);
  logic.extension = Extension::None;
  for (const Term term : group) logic.addOnTerm(term);
}

}  // namespace ostrel
