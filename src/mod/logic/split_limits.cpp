#include "logic/split_limits.h"

#include <algorithm>
#include <utility>

#include "logic/kept_sets.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The number of terms of the set that stands for SlotLogic: ON, or OFF if there is no ON term.
int logicTermCount(const Signal& signal) {
  const Equation* logic = signal.slot(SlotLogic);
  if (logic == nullptr) return 0;
  return logic->onSet().empty() ? logic->offCount() : logic->onCount();
}

}  // namespace

void addWideLogic(Signal& signal, int limit, Announce announce,
                  std::vector<Candidate>& candidates) {
  const Options& opts = options();
  const bool tells = announce == Announce::Yes;
  if (limit < opts.shareMin) limit = std::min(opts.splitMax, opts.shareMin);
  if (!signal.hasXorPair()) {
    const int terms = logicTermCount(signal);
    if (signal.slot(SlotLogic) != nullptr && terms > limit) {
      candidates.push_back({signal, *signal.slot(SlotLogic)});
    }
    if (tells && terms > opts.splitMax) note({signal.name, " is being split"});
    return;
  }
  Equation& left = *signal.slot(SlotXorLeft);
  Equation& right = *signal.slot(SlotXorRight);
  if (left.onCount() > 1) {
    if (tells) note({" ", signal.name, ".X is being split"});
    candidates.push_back({signal, left});
  }
  if (limit >= opts.clusterSize - 1) --limit;
  if (right.onCount() > limit) candidates.push_back({signal, right});
  if (tells && right.onCount() > opts.splitMax) note({signal.name, ".X is being split"});
}

void addWideControls(Signal& signal, std::vector<Candidate>& candidates) {
  const Options& opts = options();
  const std::pair<Slot, int> limits[] = {
      {SlotXorLeft, 1},          {SlotClock, opts.ckLimit}, {SlotClockEnable, opts.ceLimit},
      {SlotReset, opts.arLimit}, {SlotSet, opts.apLimit},   {SlotOutputEnable, opts.oeLimit}};
  for (const auto& [index, terms] : limits) {
    Equation* equation = signal.slot(index);
    if (equation == nullptr || equation->termCount(toldSet(signal, index)) <= terms) continue;
    const std::string_view extension =
        index == SlotXorLeft ? ".X" : extensionText(equation->extension);
    note({signal.name, extension, " has too many product terms. An node will be applied."});
    candidates.push_back({signal, *equation});
  }
}

}  // namespace ostrel
