#include "logic/told_sets.h"

#include "run/options.h"

namespace ostrel {
namespace {

SetSelector logicSet(const Signal& signal) {
  const Options& opts = options();
  const bool onOnly = !mayInvert(signal) || !opts.reduce ||
                      (!opts.invert && !signal.isCombinatorial()) ||
                      (opts.ffBeforeInverter && signal.registerType == RegisterType::REG_T);
  return onOnly ? SetSelector::On : SetSelector::Both;
}

}  // namespace

bool isInitialized(const Signal& signal) {
  return signal.slot(SlotReset) != nullptr || signal.slot(SlotSet) != nullptr;
}

bool mayInvert(const Signal& signal) {
  const Options& opts = options();
  return !opts.lossless || !opts.ffBeforeInverter || opts.swapSetReset || !isInitialized(signal);
}

SetSelector toldSet(const Signal& signal, Slot slot) {
  const Options& opts = options();
  switch (slot) {
    case SlotLogic:
      return logicSet(signal);
    case SlotClock:
      return opts.ckMode;
    case SlotClockEnable:
      return opts.ceMode;
    case SlotReset:
      return opts.arMode;
    case SlotSet:
      return opts.apMode;
    case SlotOutputEnable:
      return opts.oeMode;
    default:
      return SetSelector::On;
  }
}

}  // namespace ostrel
