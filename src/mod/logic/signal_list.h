// A list of Signals, which it doesn't own, in order.
#pragma once

#include <vector>

namespace ostrel {

class Equation;
class Signal;

class SignalList {
 public:
  bool isEmpty() const { return signals_.empty(); }
  std::size_t size() const { return signals_.size(); }
  void clear() { signals_.clear(); }

  /// Adds the Signal at the end, whether or not it stands in the list.
  void add(Signal& signal) { signals_.push_back(&signal); }

  /// Adds the Signal at the end unless it stands there. For lists that are filled in such an order
  /// that all entries of one Signal follow each other.
  void addOnce(Signal& signal) {
    if (signals_.empty() || signals_.back() != &signal) signals_.push_back(&signal);
  }

  bool contains(const Signal& signal) const;

  /// The first entry that is combinatorial and whose SlotLogic has the same function, or null.
  Signal* findEquivalent(const Equation& equation) const;

  /// Takes the first entry of the Signal out; false if there is none.
  bool remove(const Signal& signal);

  /// Takes out every entry for which isGone(signal) is true.
  template <class Test>
  void removeIf(Test isGone) {
    std::erase_if(signals_, isGone);
  }

  auto begin() const { return signals_.begin(); }
  auto end() const { return signals_.end(); }

 private:
  std::vector<Signal*> signals_;
};

}  // namespace ostrel
