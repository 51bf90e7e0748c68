// Which of a Signal's Equations are too wide and must give terms to buried nodes.
#include <algorithm>

#include "logic/signal.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

void Signal::checkSplit(EquationList& candidates, int limit, bool announce) {
  const Options& set = options();
  if (limit < set.shareMin) limit = std::min(set.splitMax, set.shareMin);
  if (!hasXorPair()) {
    const int terms = logicTermCount();
    if (slot(SlotLogic) != nullptr && terms > limit) candidates.push_back(slot(SlotLogic));
    if (announce && terms > set.splitMax) {
      logMessage(toLog, "<Note> %s: %s is being split\n", toolTag, name.c_str());
    }
    return;
  }
  if (slot(SlotXorLeft)->onCount() > 1) {
    if (announce) logMessage(toLog, "<Note> %s:  %s.X is being split\n", toolTag, name.c_str());
    candidates.push_back(slot(SlotXorLeft));
  }
  if (limit >= set.clusterSize - 1) --limit;
  const int rightTerms = slot(SlotXorRight)->onCount();
  if (rightTerms > limit) candidates.push_back(slot(SlotXorRight));
  if (announce && rightTerms > set.splitMax) {
    logMessage(toLog, "<Note> %s: %s.X is being split\n", toolTag, name.c_str());
  }
}

void Signal::checkControlSplit(EquationList& candidates) {
  const Options& set = options();
  struct Limit {
    Slot index;
    SetSelector mode;
    int terms;
  };
  const Limit limits[] = {
      {SlotXorLeft, SetSelector::On, 1},          {SlotClock, set.ckMode, set.ckLimit},
      {SlotClockEnable, set.ceMode, set.ceLimit}, {SlotReset, set.arMode, set.arLimit},
      {SlotSet, set.apMode, set.apLimit},         {SlotOutputEnable, set.oeMode, set.oeLimit}};
  for (const Limit& limit : limits) {
    Equation* equation = slot(limit.index);
    if (equation == nullptr || equation->termCount(limit.mode) <= limit.terms) continue;
    const char* extension =
        limit.index == SlotXorLeft ? ".X" : extensionText(equation->extension).data();
    logMessage(toLog, "<Note> %s: %s%s has too many product terms. An node will be applied.\n",
               toolTag, name.c_str(), extension);
    candidates.push_back(equation);
  }
}

}  // namespace ostrel
