// The two ends of a run that loses nothing; what stands between asks logic/lossless.h.
#include "logic/lossless.h"

#include <algorithm>
#include <utility>

#include "design/passes.h"
#include "logic/kept_sets.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

bool hasFixedInits(const Design& design) {
  return std::ranges::any_of(design.signals(), [](const auto& s) { return hasFixedInit(*s); });
}

void completeFunctions(Design& design, const Names& fixed) {
  if (!options().lossless) return;
  for (const auto& signal : design.signals()) {
    signal->keepsSense = fixed.contains(signal->name);
    complete(*signal, design.type);
  }
  design.listLogic();
  computeSupports(design);
}

Status settleFunctions(Design& design) {
  if (!options().lossless) return Status::Ok;
  for (const auto& signal : design.signals()) {
    // The mark of a column that isn't written means nothing to the readers.
    Equation* logic = signal->slot(SlotLogic);
    const bool isWritten = logic == nullptr || !logic->isEmpty();
    if (isWritten || logic->polarity != Polarity::Inverted) continue;
    if (options().ffBeforeInverter) {
      note({signal->name, " is not written, and neither is its mark"});
    }
    logic->polarity = Polarity::None;
  }
  std::unordered_set<const Signal*> nodes;
  for (const auto& signal : design.signals()) {
    if (signal->isNode && signal->isCombinatorial()) nodes.insert(signal.get());
  }
  const ColumnSet read = columnsThatMatter(design, std::move(nodes));
  Status status = Status::Ok;
  for (Signal* signal : design.logic()) {
    if (settle(*signal, readsAny(read, *signal)) != Status::Ok) status = Status::Failed;
  }
  return status;
}

}  // namespace ostrel
