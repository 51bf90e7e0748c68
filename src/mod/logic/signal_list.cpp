#include "logic/signal_list.h"

#include <algorithm>

#include "logic/signal.h"

namespace ostrel {

Signal* SignalList::findEquivalent(const Equation& equation) const {
  const auto found = std::find_if(begin(), end(), [&](const Signal* signal) {
    const Equation* logic = signal->slot(SlotLogic);
    return signal->isCombinatorial() && logic != nullptr && logic->sameFunction(equation);
  });
  return found == end() ? nullptr : *found;
}

}  // namespace ostrel
