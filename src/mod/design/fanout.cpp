// Who reads whom, by the supports of the Equations.
//
// Idea. A Signal reads a column if the support of one of its Equations holds it, and it counts once
// for each column, however many of its Equations and terms read it.
//
// Example. n is read through the columns n and n.FB. A Signal with the terms n and n.FB counts
// twice; one with the terms n & a and n & b counts once.
//
// Cost. The literals of all supports.
//
// Order. When a support is worked out is seen in the output: it describes the ON set of that
// moment, and stays so when the sets are exchanged. The logic has its supports from the file's own
// sets, the control functions from the sets that they keep.
#include <algorithm>
#include <cassert>

#include "design/passes.h"
#include "run/heart.h"

namespace ostrel {

Readers countReaders(Design& design) {
  heartMsg();
  Readers readers(design.columns().size(), 0);
  for (const Signal* reader : design.logic()) {
    ColumnSet read;
    for (Equation* equation : reader->mainEquations()) equation->markUsedColumns(read);
    for (const Slot index : controlSlots) {
      if (reader->slot(index) != nullptr) reader->slot(index)->markUsedColumns(read);
    }
    read.forEach([&readers](std::size_t column) { ++readers[column]; });
  }
  return readers;
}

int fanoutOf(const Signal& signal, const Readers& readers) {
  assert(std::ranges::all_of(signal.columns, [&](std::size_t c) { return c < readers.size(); }));
  int count = 0;
  for (const std::size_t column : signal.columns) count += readers[column];
  return count;
}

ColumnSet columnsThatMatter(const Design& design, std::unordered_set<const Signal*> passive) {
  std::vector<const Signal*> open;  // whose sets weren't looked at
  for (const auto& signal : design.signals()) {
    if (!passive.contains(signal.get())) open.push_back(signal.get());
  }
  ColumnSet all;
  while (!open.empty()) {
    const Signal* reader = open.back();
    open.pop_back();
    ColumnSet read;
    for (const Slot slot : allSlots) {
      const Equation* equation = reader->slot(slot);
      if (equation == nullptr || equation->isFree) continue;
      markUsedColumns(equation->onSet(), design.terms(), read);
      markUsedColumns(equation->offSet(), design.terms(), read);
    }
    read.forEach([&](std::size_t column) {
      all.insert(column);
      const Signal* signal = design.columns()[column].signal;
      if (passive.erase(signal) > 0) open.push_back(signal);
    });
  }
  return all;
}

bool readsAny(const ColumnSet& columns, const Signal& signal) {
  return std::ranges::any_of(signal.columns, [&](std::size_t c) { return columns.contains(c); });
}

void computeSupports(Design& design) {
  for (const Signal* signal : design.logic()) {
    for (Equation* equation : signal->mainEquations()) equation->computeSupport();
  }
}

}  // namespace ostrel
