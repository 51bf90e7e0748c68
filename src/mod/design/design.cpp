#include "design/design.h"

#include <algorithm>
#include <cassert>
#include <unordered_set>

#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// True if the column reads the Signal itself and not what stands on its pin.
bool readsOwnValue(const InputColumn& column) {
  return column.extension != Extension::None && column.extension != Extension::PIN;
}

/// With --lossless true of a Signal whose value need not stand in the column, -1 for a new one. A
/// node has no pin to be off.
bool canBeOff(const Signal& signal, std::span<const InputColumn> columns, int column) {
  const Equation* enable = signal.slot(SlotOutputEnable);
  if (!options().lossless || enable == nullptr || enable->isEmpty() || signal.isNode) return false;
  if (column >= 0 && readsOwnValue(columns[static_cast<std::size_t>(column)])) return false;
  // An enable of several terms can come to read the very pin that it turns off.
  Equation once = *enable;
  once.dropRepeatedTerms();
  if (once.isConstant(Constant::One)) return false;
  note({signal.name, " can be off and serves no other function"});
  return true;
}

}  // namespace

Signal* Design::find(std::string_view name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? nullptr : found->second;
}

Signal* Design::findEquivalent(const Equation& equation, ColumnChoice columnOf) const {
  const auto serves = [&](const Signal* signal) {
    const Equation* logic = signal->slot(SlotLogic);
    return signal->isCombinatorial() && logic != nullptr && logic->sameFunction(equation) &&
           !canBeOff(*signal, columns_, columnOf(*signal));
  };
  const auto found = std::ranges::find_if(logic_, serves);
  return found == logic_.end() ? nullptr : *found;
}

Signal* Design::declare(const PlaName& record, bool isNode) {
  if (find(record.base) != nullptr) return nullptr;
  assert(names_.size() == signals_.size());
  signals_.push_back(std::make_unique<Signal>(terms_, record, isNode));
  Signal* signal = signals_.back().get();
  names_.emplace(signal->name, signal);
  return signal;
}

void Design::listLogic() {
  logic_.clear();
  for (const auto& signal : signals_) {
    if (!signal->hasNoLogic()) logic_.push_back(signal.get());
  }
  logicIsCurrent_ = true;
}

/// No removal depends on another one, and only the columns and terms that are left at the end are
/// ever looked at.
void Design::remove(std::span<Signal* const> gone) {
  if (gone.empty()) return;
  const std::unordered_set<const Signal*> set(gone.begin(), gone.end());
  ColumnSet goneColumns;
  for (const Signal* signal : gone) {
    names_.erase(signal->name);
    for (const std::size_t column : signal->columns) goneColumns.insert(column);
  }
  std::erase_if(signals_, [&set](const auto& signal) { return set.contains(signal.get()); });
  assert(names_.size() == signals_.size());
  deleteColumns(goneColumns);
  listLogic();
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
  assert(terms_.width() == columns_.size());
  for (const auto& signal : signals_) {
    signal->followDeletion(renumbered, newColumn);
    assert(std::ranges::all_of(signal->columns, [&](std::size_t column) {
      return column < columns_.size() && columns_[column].signal == signal.get();
    }));
  }
}

std::size_t Design::addColumn(Signal& signal, Extension extension) {
  const std::size_t column = columns_.size();
  columns_.push_back({&signal, extension});
  signal.columns.push_back(column);
  terms_.appendColumns(1);
  assert(terms_.width() == columns_.size());
  return column;
}

std::size_t Design::addReadingColumn(Signal& signal) {
  const auto column = addColumn(signal, signal.isCombinatorial() ? Extension::None : Extension::Q);
  (signal.isNode ? signal.feedbackColumn : signal.pinColumn) = static_cast<int>(column);
  return column;
}

}  // namespace ostrel
