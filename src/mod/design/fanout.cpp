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
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

namespace {

/// The readers by the supports, or by both sets as well.
Readers countBy(Design& design, bool withSets) {
  Readers readers(design.columns().size(), 0);
  for (const Signal* reader : design.logic()) {
    ColumnSet read;
    const auto markColumns = [&](Equation& equation) {
      equation.markUsedColumns(read);
      if (!withSets) return;
      markUsedColumns(equation.onSet(), design.terms(), read);
      markUsedColumns(equation.offSet(), design.terms(), read);
    };
    for (Equation* equation : reader->mainEquations()) markColumns(*equation);
    for (const Slot index : controlSlots) {
      if (reader->slot(index) != nullptr) markColumns(*reader->slot(index));
    }
    read.forEach([&readers](std::size_t column) { ++readers[column]; });
  }
  return readers;
}

}  // namespace

Readers countReaders(Design& design) {
  heartMsg();
  Readers readers = countBy(design, false);
  if (!options().lossless) return readers;
  const Readers all = countBy(design, true);
  for (const auto& signal : design.signals()) {
    if (signal->isNode && fanoutOf(*signal, all) != fanoutOf(*signal, readers)) {
      note({signal->name, " is read by sets that may not be kept, and stays for them"});
    }
  }
  return all;
}

int fanoutOf(const Signal& signal, const Readers& readers) {
  assert(std::ranges::all_of(signal.columns, [&](std::size_t c) { return c < readers.size(); }));
  int count = 0;
  for (const std::size_t column : signal.columns) count += readers[column];
  return count;
}

void computeSupports(Design& design) {
  for (const Signal* signal : design.logic()) {
    for (Equation* equation : signal->mainEquations()) equation->computeSupport();
  }
}

}  // namespace ostrel
