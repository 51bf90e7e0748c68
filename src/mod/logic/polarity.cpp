#include "logic/polarity.h"

#include <algorithm>
#include <cassert>
#include <span>

#include "logic/kept_sets.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// True if the set that was kept is the inverse one.
bool keepSet(Signal& signal, Slot slot) {
  completeSet(signal, slot);
  const SetSelector kept = keptSet(signal, slot);
  if (kept != toldSet(signal, slot)) {
    note({signal.name, extensionText(signal.slot(slot)->extension), " keeps the set that it has"});
  }
  return signal.slot(slot)->keepSets(kept);
}

/// The flip-flop now holds the complement, so its initial state has changed with the output.
void followInversion(Signal& signal) {
  if (options().swapSetReset) {
    exchangeSetAndReset(signal);
  } else {
    warning({signal.name, " polarity is inverted, register initialization has changed"});
  }
}

}  // namespace

void exchangeSetAndReset(Signal& signal) {
  signal.swapSlots(SlotReset, SlotSet);
  signal.initSwapped = !signal.initSwapped;
  note({signal.name, " Set/Reset swapped to follow output polarity"});
}

void reduce(Signal& signal) {
  Equation* logic = signal.slot(SlotLogic);
  if (!signal.reduced) {
    if (logic != nullptr) {
      logic->reduceForSmaller(logicSelector(signal));
      logic->keepSets(SetSelector::Smaller);
    }
    signal.reduced = true;
    return;
  }
  if (logic != nullptr) {
    // XOR synthesis weighs both sets of what it has not seen; nobody else looks at the larger one.
    const bool isLast = signal.xorTried || !options().xorSynthesis;
    const SetSelector selector = logicSelector(signal);
    isLast ? logic->reduceForSmaller(selector) : logic->reduce(selector);
  }
  Equation* left = signal.slot(SlotXorLeft);
  Equation* right = signal.slot(SlotXorRight);
  if (left != nullptr) left->reduce(SetSelector::Both);
  if (right != nullptr) right->reduce(SetSelector::Both);
  if (signal.hasXorPair()) swapSetsIfShorter(*left, *right);
}

void choosePolarity(Signal& signal) {
  Equation* logic = signal.slot(SlotLogic);
  const bool isInverted = logic != nullptr && keepSet(signal, SlotLogic);
  if (isInverted && options().ffBeforeInverter && isInitialized(signal)) followInversion(signal);
  for (const Slot index : std::span(allSlots).subspan(SlotXorLeft)) {
    if (signal.slot(index) != nullptr) keepSet(signal, index);
  }
  assert(std::ranges::none_of(allSlots, [&signal](Slot slot) {
    const Equation* equation = signal.slot(slot);
    return equation != nullptr && !equation->onSet().empty() && !equation->offSet().empty();
  }));
  signal.setsChosen = true;
}

void normalizePolarity(Signal& signal) {
  for (const Slot index : allSlots) {
    const bool isData = index == SlotLogic || index == SlotXorLeft || index == SlotXorRight;
    if (isData && !mayInvert(signal)) continue;
    if (signal.slot(index) != nullptr) signal.slot(index)->normalizePolarity();
  }
}

}  // namespace ostrel
