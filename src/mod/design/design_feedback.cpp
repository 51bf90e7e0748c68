// Who reads whom, exclusive-or synthesis Signal by Signal, and the folding of Signals that only
// repeat an exclusive-or node.
#include <algorithm>

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
  for (SignalList& readers : columnReaders_) readers.clear();
  std::unordered_map<const Signal*, std::size_t> place;  // in the chain
  for (const auto& signal : signals_) {
    signal->fanoutList.clear();
    signal->faninList.clear();
    if (!signal->columns.empty()) signal->fanoutCount = 0;
    place.emplace(signal.get(), place.size());
  }
  for (Signal* reader : logicList_) {
    ColumnSet read;
    reader->collectColumns(read, logicOnly);
    std::vector<Signal*> sources;
    read.forEach([&](std::size_t column) {
      Signal& source = *columns_[column].signal;
      ++source.fanoutCount;
      // A third or later column of a Signal counts, but reaches no list.
      const auto rank = std::find(source.columns.begin(), source.columns.end(), column);
      if (rank - source.columns.begin() >= 2) return;
      source.fanoutList.addOnce(*reader);
      columnReaders_[column].add(*reader);
      sources.push_back(&source);
    });
    // Sources stand in chain order, whatever the order of their columns.
    std::sort(sources.begin(), sources.end(),
              [&](const Signal* a, const Signal* b) { return place.at(a) < place.at(b); });
    for (Signal* source : sources) reader->faninList.addOnce(*source);
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
    reader->faninList.remove(*source);
    source->fanoutList.remove(*reader);
    changed = true;
  }
  if (changed) listsAreCurrent_ = false;
  return changed;
}

}  // namespace ostrel
