// What goes: Signals that stand in no column, and nodes that nothing reads.
#include <unordered_set>
#include <utility>

#include "design/design.h"
#include "run/log.h"

namespace ostrel {

void Design::removeUnusedSignals() {
  std::unordered_set<const Signal*> named;
  for (const NameKind kind : {NameKind::Input, NameKind::Output}) {
    for (const PlaName& column : sourcePla_.table(kind).records) {
      named.insert(findSignal(column.base));
    }
  }
  std::vector<Signal*> orphans;
  for (const auto& signal : signals_) {
    if (!named.contains(signal.get())) orphans.push_back(signal.get());
  }
  for (const Signal* orphan : orphans) {
    logMessage(toLog, "<Warning> %s: %s is not used and removed from design\n", toolTag,
               orphan->name.c_str());
  }
  removeSignals(orphans);
}

void Design::removeDeadNodes() {
  std::vector<Signal*> dead;
  for (const auto& signal : signals_) {
    if (signal->isNode && signal->isCombinatorial() && signal->fanoutCount == 0) {
      dead.push_back(signal.get());
    }
  }
  for (const Signal* signal : dead) {
    logMessage(toLog, "<Warning> %s: %s is being removed\n", toolTag, signal->name.c_str());
  }
  removeSignals(dead);
}

/// Takes the Signals and their columns out of the design, all in one sweep: no removal depends on
/// another one, and only the columns and terms that are left at the end are ever looked at.
void Design::removeSignals(std::span<Signal* const> gone) {
  if (gone.empty()) return;
  const std::unordered_set<const Signal*> set(gone.begin(), gone.end());
  ColumnSet goneColumns;
  for (const Signal* signal : gone) {
    names_.erase(signal->name);
    for (const std::size_t column : signal->columns) goneColumns.insert(column);
  }
  std::erase_if(signals_, [&set](const auto& signal) { return set.contains(signal.get()); });
  deleteColumns(goneColumns);
  classifySignals();
}

/// The columns behind a deleted one move up, in the table, in every term and in every Signal.
void Design::deleteColumns(const ColumnSet& gone) {
  if (gone.empty()) return;
  std::vector<int> newColumn(columns_.size(), -1);
  std::size_t kept = 0;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    if (gone.contains(c)) continue;
    newColumn[c] = static_cast<int>(kept);
    columns_[kept++] = columns_[c];
  }
  columns_.resize(kept);
  const std::vector<Term> renumbered = terms_.deleteColumns(gone);
  for (const auto& signal : signals_) signal->followDeletion(renumbered, newColumn);
}

}  // namespace ostrel
