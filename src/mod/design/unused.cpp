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
void keepWhatSetsRead(const Design& design, std::vector<Signal*>& dead) {
  const ColumnSet read = columnsThatMatter(design, {dead.begin(), dead.end()});
  std::erase_if(dead, [&read](const Signal* signal) {
    if (!readsAny(read, *signal)) return false;
    note({signal->name, " is read by a set that is kept, and stays"});
    return true;
  });
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
