// Who is read how often, exclusive-or synthesis Signal by Signal, and the folding of Signals that
// only repeat an exclusive-or node.
#include "design/design.h"
#include "run/heart.h"
#include "run/options.h"

namespace ostrel {

void Design::orderXorPairs() {
  for (Signal* signal : logicList_) {
    if (signal->slot(SlotLogic) == nullptr) signal->orderXorPair();
  }
}

void Design::synthesizeXor(int pass) {
  const Options& set = options();
  if (!set.xorSynthesis || !set.reduce) return;
  for (Signal* signal : logicList_) {
    if (signal->registerType == RegisterType::REG_T && set.noXorOnT) continue;
    if (signal->hasXorPair() || (pass == 2 && signal->xorTried)) continue;
    signal->xorTried = true;
    signal->synthesizeXor();
  }
}

void Design::refreshFanout(bool logicOnly) {
  heartMsg();
  for (const InputColumn& column : columns_) column.signal->fanoutCount = 0;
  for (Signal* reader : logicList_) {
    ColumnSet read;
    reader->collectColumns(read, logicOnly);
    read.forEach([this](std::size_t column) { ++columns_[column].signal->fanoutCount; });
  }
}

bool Design::collapseFeedback() {
  // The most terms of a node that is copied into several readers.
  const int limit = options().clusterSize == 1 ? 5 : options().clusterSize;
  bool changed = false;
  for (Signal* reader : logicList_) {
    const auto column = reader->singleLiteral(columns_);
    if (!column) continue;
    Signal* source = columns_[*column].signal;
    if (source->slot(SlotXorLeft) == nullptr || !source->isNode || !source->isCombinatorial() ||
        source == reader) {
      continue;
    }
    if (source->fanoutCount > 1 && source->bestTermCount() > limit) continue;
    reader->copyLogicFrom(*source);
    changed = true;
  }
  if (changed) logicListIsCurrent_ = false;
  return changed;
}

}  // namespace ostrel
