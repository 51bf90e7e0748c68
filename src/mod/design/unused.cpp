// What goes: Signals that stand in no column, and nodes that nothing reads.
//
// Order. All that goes is chosen before the first one goes, so a node that only a dead node reads
// stays. The warnings stand in the order of the declarations.
#include <unordered_set>

#include "design/passes.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

void removeUnusedSignals(Design& design) {
  std::unordered_set<const Signal*> named;
  for (const NameKind kind : {NameKind::Input, NameKind::Output}) {
    for (const PlaName& column : design.source().table(kind).records) {
      named.insert(design.find(column.base));
    }
  }
  std::vector<Signal*> orphans;
  for (const auto& signal : design.signals()) {
    if (!named.contains(signal.get())) orphans.push_back(signal.get());
  }
  for (const Signal* orphan : orphans) {
    warning({orphan->name, " is not used and removed from design"});
  }
  design.remove(orphans);
}

namespace {

/// Takes out of `dead` what a set of a Signal that stays reads; supports needn't show that.
void keepWhatSetsRead(Design& design, std::vector<Signal*>& dead) {
  std::unordered_set<const Signal*> gone(dead.begin(), dead.end());
  std::vector<const Signal*> open;  // that stay, and whose sets weren't looked at
  for (const auto& signal : design.signals()) {
    if (!gone.contains(signal.get())) open.push_back(signal.get());
  }
  while (!open.empty()) {
    const Signal* reader = open.back();
    open.pop_back();
    ColumnSet read;
    for (const Slot slot : allSlots) {
      const Equation* equation = reader->slot(slot);
      if (equation == nullptr) continue;
      markUsedColumns(equation->onSet(), design.terms(), read);
      markUsedColumns(equation->offSet(), design.terms(), read);
    }
    read.forEach([&](std::size_t column) {
      const Signal* signal = design.columns()[column].signal;
      if (gone.erase(signal) == 0) return;
      note({signal->name, " is read by a set that is kept, and stays"});
      open.push_back(signal);
    });
  }
  std::erase_if(dead, [&gone](const Signal* signal) { return !gone.contains(signal); });
}

}  // namespace

void removeDeadNodes(Design& design, const Readers& readers) {
  std::vector<Signal*> dead;
  for (const auto& signal : design.signals()) {
    if (signal->isNode && signal->isCombinatorial() && fanoutOf(*signal, readers) == 0) {
      dead.push_back(signal.get());
    }
  }
  if (options().lossless && !dead.empty()) keepWhatSetsRead(design, dead);
  for (const Signal* signal : dead) warning({signal->name, " is being removed"});
  design.remove(dead);
}

}  // namespace ostrel
