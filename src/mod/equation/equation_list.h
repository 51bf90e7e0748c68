// The plain list of Equations that are candidates for splitting.
#pragma once

#include <vector>

namespace ostrel {

class Equation;

/// Candidates in the order in which they were found; the Equations belong to their Signals.
class EquationList {
 public:
  struct Entry {
    Equation* equation;
    bool done = false;  ///< a node serves this Equation already
  };

  bool isEmpty() const { return entries_.empty(); }
  void add(Equation& equation) { entries_.push_back({&equation}); }

  std::vector<Entry>& entries() { return entries_; }
  const std::vector<Entry>& entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

}  // namespace ostrel
