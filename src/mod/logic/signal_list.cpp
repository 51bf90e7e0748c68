#include "logic/signal_list.h"

#include <algorithm>

#include "logic/signal.h"

namespace ostrel {

bool SignalList::contains(const Signal& signal) const {
  return std::find(begin(), end(), &signal) != end();
}

Signal* SignalList::findEquivalent(const Equation& equation) const {
  const auto found = std::find_if(begin(), end(), [&](const Signal* signal) {
    const Equation* logic = signal->slot(SlotLogic);
    return signal->isCombinatorial() && logic != nullptr && logic->sameFunction(equation);
  });
  return found == end() ? nullptr : *found;
}

bool SignalList::remove(const Signal& signal) {
  const auto found = std::find(signals_.begin(), signals_.end(), &signal);
  if (found == signals_.end()) return false;
  signals_.erase(found);
  return true;
}

}  // namespace ostrel
