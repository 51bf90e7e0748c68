// The folding of Signals that only repeat an exclusive-or node.
//
// Idea. A device has its exclusive-or gate at the output. Where a pin repeats a node that holds a
// pair, the pin takes the pair over; the node goes when nothing reads it any more.
//
// Example. Y = n, n = a XOR (b + c): Y becomes a XOR (b + c). If another Signal reads n too, the
// node is only copied if it is no longer than a cluster, since its terms then stand twice.
//
// Order. Readers take over in the order of the list, each from what its source is at that time: a
// chain of repeats is followed if it stands in that order.
#include "logic/collapse.h"

#include "design/passes.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The node whose pair the reader can take over, or null.
const Signal* repeatedNode(const Design& design, const Signal& reader) {
  const auto column = singleLiteral(reader, design.columns(), design.terms());
  if (!column) return nullptr;
  const Signal* source = design.columns()[*column].signal;
  const bool isPairNode = source->isNode && source->isCombinatorial() &&
                          source->slot(SlotXorLeft) != nullptr && source != &reader;
  return isPairNode ? source : nullptr;
}

}  // namespace

bool collapseFeedback(Design& design, const Readers& readers) {
  // The most terms of a node that is copied into several readers.
  const int limit = options().clusterSize == 1 ? 5 : options().clusterSize;
  bool changed = false;
  for (Signal* reader : design.logic()) {
    const Signal* source = repeatedNode(design, *reader);
    if (source == nullptr) continue;
    if (fanoutOf(*source, readers) > 1 && bestTermCount(*source) > limit) continue;
    copyLogic(*source, *reader);
    changed = true;
  }
  if (changed) design.noteEmptiedLogic();
  return changed;
}

}  // namespace ostrel
