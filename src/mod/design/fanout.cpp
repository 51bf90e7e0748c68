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

void computeSupports(Design& design) {
  for (const Signal* signal : design.logic()) {
    for (Equation* equation : signal->mainEquations()) equation->computeSupport();
  }
}

}  // namespace ostrel
