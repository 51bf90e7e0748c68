// Every function in few terms, before anything is decided about it and after it was split.
//
// Order: Signals and their slots in order; the terms of a function come in the order that the
// minimisation gives.
#include <string>
#include <utility>

#include "design/passes.h"
#include "logic/kept_sets.h"
#include "logic/thoroughness.h"
#include "run/heart.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The sets that later steps may keep of a slot. The layout of a pair weighs both of each half.
WantedSets wantedSets(const Signal& signal, Slot slot) {
  if (slot == SlotXorLeft || slot == SlotXorRight) return WantedSets::Both;
  switch (toldSet(signal, slot)) {
    case SetSelector::On:
      return WantedSets::On;
    case SetSelector::Off:
      return WantedSets::Off;
    default:
      return WantedSets::Smaller;
  }
}

}  // namespace

void minimizeFunctions(Design& design) {
  if (options().minimize == MinimizeEffort::None) return;
  int open = 0;
  Diligence diligence;
  for (Signal* signal : design.logic()) {
    for (const Slot slot : allSlots) {
      Equation* equation = signal->slot(slot);
      if (equation == nullptr) continue;
      heartMsg();
      Minimized result;
      if (diligence.isLeft()) {
        result = equation->minimize(wantedSets(*signal, slot), diligence.level());
      }
      diligence.spend(result.steps);
      if (result.state == CoverState::Given || result.state == CoverState::Irredundant) ++open;
    }
  }
  if (open > 0) note({std::to_string(open), " functions are beyond the effort of --minimize"});
  computeSupports(design);
}

void minimizeNewLogic(Design& design) {
  if (options().minimize == MinimizeEffort::None || options().splitMax < 2) return;
  Diligence diligence;
  for (Signal* signal : design.logic()) {
    for (Equation* equation : signal->mainEquations()) {
      if (!diligence.isLeft()) break;
      heartMsg();
      Equation shorter = *equation;
      const bool isHalf = signal->hasXorPair();
      const WantedSets wanted = isHalf ? WantedSets::On : wantedSets(*signal, SlotLogic);
      diligence.spend(shorter.minimize(wanted, diligence.level()).steps);
      if (isHalf) shorter.clearOffSet();
      if (shorter.isEmpty()) continue;  // a half that is 0 says so in its OFF set alone
      const int terms = equation->termCount(SetSelector::Smaller);
      if (shorter.termCount(SetSelector::Smaller) < terms) *equation = std::move(shorter);
    }
  }
  computeSupports(design);
}

}  // namespace ostrel
