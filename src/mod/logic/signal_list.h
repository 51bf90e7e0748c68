// A list of Signals, which it doesn't own, in order.
#pragma once

#include <cstddef>
#include <vector>

namespace ostrel {

class Equation;
class Signal;

class SignalList {
 public:
  void clear() { signals_.clear(); }
  void add(Signal& signal) { signals_.push_back(&signal); }

  /// The first entry that is combinatorial and whose SlotLogic has the same function, or null.
  Signal* findEquivalent(const Equation& equation) const;

  auto begin() const { return signals_.begin(); }
  auto end() const { return signals_.end(); }

 private:
  std::vector<Signal*> signals_;
};

}  // namespace ostrel
