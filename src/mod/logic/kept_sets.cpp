#include "logic/kept_sets.h"

#include "run/log.h"
#include "run/options.h"

namespace ostrel {

std::string_view whyOnOnly(const Signal& signal) {
  const Options& opts = options();
  if (!mayInvert(signal)) return "-sr no";
  if (!opts.reduce) return "-reduce none";
  if (!opts.invert && !signal.isCombinatorial()) return "-invert no";
  return opts.ffBeforeInverter && signal.registerType == RegisterType::REG_T ? "-ff_inv yes" : "";
}

SetSelector logicSelector(const Signal& signal) {
  return whyOnOnly(signal).empty() ? SetSelector::Both : SetSelector::On;
}

SetSelector toldSet(const Signal& signal, Slot slot) {
  const Options& opts = options();
  switch (slot) {
    case SlotLogic:
      return logicSelector(signal);
    case SlotXorLeft:
    case SlotXorRight:
      return SetSelector::On;
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
  }
  return SetSelector::On;
}

bool isMissing(const Equation& equation, SetSelector set) {
  const bool isOn = set == SetSelector::On;
  const TermChain& chain = isOn ? equation.onSet() : equation.offSet();
  const TermChain& other = isOn ? equation.offSet() : equation.onSet();
  return set != SetSelector::Smaller && chain.empty() && !other.empty();
}

SetSelector keptSet(const Signal& signal, Slot slot) {
  const SetSelector told = toldSet(signal, slot);
  if (!options().lossless || !isMissing(*signal.slot(slot), told)) return told;
  if (slot == SlotOutputEnable && signal.enableMayGo) return told;
  return told == SetSelector::On ? SetSelector::Off : SetSelector::On;
}

void completeSet(Signal& signal, Slot slot) {
  Equation& equation = *signal.slot(slot);
  const SetSelector told = toldSet(signal, slot);
  const bool isHalf = slot == SlotXorLeft || slot == SlotXorRight;  // their layout sees to that
  if (!options().lossless || signal.setsChosen || isHalf) return;
  if (slot == SlotOutputEnable && signal.enableMayGo) return;
  if (equation.isConstant(Constant::Either) || !isMissing(equation, told)) return;
  const bool isDone = equation.reduce(SetSelector::Both);
  if (isDone && isMissing(equation, told)) equation.makeConstant(told == SetSelector::Off);
  note({signal.name, extensionText(equation.extension),
        isDone ? " has its missing set worked out" : " has no other set"});
}

bool isInitialized(const Signal& signal) {
  return signal.slot(SlotReset) != nullptr || signal.slot(SlotSet) != nullptr;
}

bool hasFixedInit(const Signal& signal) {
  const Options& opts = options();
  return opts.lossless && opts.ffBeforeInverter && !opts.swapSetReset && isInitialized(signal);
}

bool mayInvert(const Signal& signal) {
  return !signal.keepsSense || !hasFixedInit(signal);
}

}  // namespace ostrel
