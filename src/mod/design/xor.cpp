// Exclusive-or pairs, Signal by Signal: those of the file are laid out, new ones are looked for
// before and after splitting, and at the end each pair is turned around for the device.
#include <algorithm>
#include <optional>

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

/// With --lossless brings what was cut in its inverted form back to that, where it would have to
/// keep the other one and is too wide in it.
void keepCut(Signal& signal, const std::optional<Equation>& before) {
  Equation* logic = signal.slot(SlotLogic);
  const bool hasTurned = before && logic != nullptr && logic->polarity != before->polarity;
  if (!options().lossless || !hasTurned || logicSelector(signal) != SetSelector::On ||
      logic->onCount() <= std::max(options().splitMax, before->onCount())) {
    return;
  }
  *logic = *before;
  note({signal.name, " keeps its inverted set, which was cut"});
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
    std::optional<Equation> before;
    if (turn == XorTurn::NewLogic && options().lossless && signal->slot(SlotLogic) != nullptr) {
      before = *signal->slot(SlotLogic);
    }
    const bool isWide = opts.minimize != MinimizeEffort::None && diligence.isLeft();
    isWide ? synthesizeXorWidely(*signal, diligence) : synthesizeXor(*signal);
    keepCut(*signal, before);
  }
}

void swapXorPairs(Design& design) {
  for (Signal* signal : design.logic()) {
    if (signal->slot(SlotXorLeft) != nullptr) signal->swapSlots(SlotXorLeft, SlotXorRight);
  }
}

}  // namespace ostrel
