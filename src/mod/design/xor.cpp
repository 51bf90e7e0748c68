// Exclusive-or pairs, Signal by Signal: those of the file are laid out, new ones are looked for
// before and after splitting, and at the end each pair is turned around for the device.
#include "design/passes.h"
#include "logic/kept_sets.h"
#include "logic/xor_operands.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

void orderXorPairs(Design& design) {
  for (Signal* signal : design.logic()) {
    if (signal->slot(SlotLogic) == nullptr) orderXorPair(*signal);
  }
}

namespace {

/// With --lossless true of what was cut in its inverted form and would have to keep the other one.
bool wouldWiden(const Signal& signal) {
  const Equation* logic = signal.slot(SlotLogic);
  if (!options().lossless || logic == nullptr || logic->polarity != Polarity::Inverted ||
      logicSelector(signal) != SetSelector::On) {
    return false;
  }
  note({signal.name, " keeps its inverted set, which was cut"});
  return true;
}

}  // namespace

void synthesizeXor(Design& design, XorTurn turn) {
  const Options& opts = options();
  if (!opts.xorSynthesis || !opts.reduce) return;
  Diligence diligence;
  for (Signal* signal : design.logic()) {
    if (signal->registerType == RegisterType::REG_T && opts.noXorOnT) continue;
    if (signal->hasXorPair() || (turn == XorTurn::NewLogic && signal->xorTried)) continue;
    signal->xorTried = true;
    if (turn == XorTurn::NewLogic && wouldWiden(*signal)) continue;
    const bool isWide = opts.minimize != MinimizeEffort::None && diligence.isLeft();
    isWide ? synthesizeXorWidely(*signal, diligence) : synthesizeXor(*signal);
  }
}

void swapXorPairs(Design& design) {
  for (Signal* signal : design.logic()) {
    if (signal->slot(SlotXorLeft) != nullptr) signal->swapSlots(SlotXorLeft, SlotXorRight);
  }
}

}  // namespace ostrel
