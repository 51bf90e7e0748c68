#include "logic/polarity.h"

#include <utility>

#include "logic/lossless.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The flip-flop now holds the complement, so its initial state has changed with the output.
void followInversion(Signal& signal) {
  if (options().swapSetReset) {
    signal.swapSlots(SlotReset, SlotSet);
    signal.initSwapped = !signal.initSwapped;
    note({signal.name, " Set/Reset swapped to follow output polarity"});
  } else {
    warning({signal.name, " polarity is inverted, register initialization has changed"});
  }
}

}  // namespace

SetSelector logicSelector(const Signal& signal) {
  const Options& opts = options();
  const bool onOnly = !mayInvert(signal) || !opts.reduce ||
                      (!opts.invert && !signal.isCombinatorial()) ||
                      (opts.ffBeforeInverter && signal.registerType == RegisterType::REG_T);
  return onOnly ? SetSelector::On : SetSelector::Both;
}

void reduce(Signal& signal) {
  Equation* logic = signal.slot(SlotLogic);
  if (!signal.reduced) {
    if (logic != nullptr) logic->reduceToSmaller(logicSelector(signal));
    signal.reduced = true;
    return;
  }
  if (logic != nullptr) logic->reduce(logicSelector(signal));
  Equation* left = signal.slot(SlotXorLeft);
  Equation* right = signal.slot(SlotXorRight);
  if (left != nullptr) left->reduce(SetSelector::Both);
  if (right != nullptr) right->reduce(SetSelector::Both);
  if (signal.hasXorPair() && left->offCount() == 1 && right->offCount() > 0 &&
      right->offCount() < right->onCount()) {
    left->swapSets();
    right->swapSets();
  }
}

void choosePolarity(Signal& signal) {
  const Options& opts = options();
  Equation* logic = signal.slot(SlotLogic);
  const bool isInverted =
      logic != nullptr && logic->keepSets(heldSet(signal, SlotLogic, logicSelector(signal)));
  const bool isInitialized = signal.slot(SlotReset) != nullptr || signal.slot(SlotSet) != nullptr;
  if (isInverted && opts.ffBeforeInverter && isInitialized) followInversion(signal);
  const std::pair<Slot, SetSelector> choices[] = {
      {SlotXorLeft, SetSelector::On}, {SlotXorRight, SetSelector::On}, {SlotClock, opts.ckMode},
      {SlotClockEnable, opts.ceMode}, {SlotReset, opts.arMode},        {SlotSet, opts.apMode},
      {SlotOutputEnable, opts.oeMode}};
  for (const auto& [index, selector] : choices) {
    if (signal.slot(index) != nullptr)
      signal.slot(index)->keepSets(heldSet(signal, index, selector));
  }
}

void normalizePolarity(Signal& signal) {
  for (const Slot index : allSlots) {
    if (signal.slot(index) != nullptr) signal.slot(index)->normalizePolarity();
  }
}

}  // namespace ostrel
