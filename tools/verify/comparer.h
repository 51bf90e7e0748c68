// The questions that a judgement asks about one function at a time.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "verify/scene.h"
#include "verify/senses.h"

namespace ostrel::verify {

/// One function of INPUT and the slot that holds it in OUTPUT. Slot::Logic stands for the value,
/// pair or not.
struct Task {
  std::size_t signal;  ///< of INPUT; OUTPUT has it too
  Slot slot;
  Slot outSlot;
};

struct Answer {
  Proof proof = Proof::Never;
  std::vector<Literal> assignment;  ///< under which OUTPUT breaks INPUT's meaning
  Recipe recipe = Recipe::SharedFree;
  bool dependsOnChoice = false;  ///< INPUT leaves something open, and another choice would do
};

/// Whether a Signal has the function.
bool isGiven(const Signal& signal, Slot slot);

class Comparer {
 public:
  Comparer(const Pairing& pairing, bool flipFlopFirst, int effort);

  Scene& scene() { return scene_; }
  const Scene& scene() const { return scene_; }
  const Signal& in(std::size_t i) const { return pairing_.in.signals[i]; }
  const Signal& out(std::size_t i) const { return *pairing_.partner(i); }

  /// By Signal of INPUT; all false at first. To be set in front of the first question.
  void setSenses(Senses senses) { senses_ = std::move(senses); }
  const Senses& senses() const { return senses_; }
  bool isTurned(std::size_t i) const { return senses_.values[i] == trueLiteral; }

  /// The function in INPUT, with the Signals of both files free. It must be given.
  Meaning wanted(const Task& task);

  /// Where OUTPUT's function breaks what is wanted. Both must be given.
  Literal conflict(const Task& task, Views& views, const std::vector<Literal>& senses,
                   bool complemented = false);

  /// Can OUTPUT break INPUT's meaning? With the Signals of both files free at first, and with the
  /// combinational ones replaced where that fails.
  Answer ask(const Task& task);

  /// Whether the function, or its complement, holds wherever the loops that were cut are at rest:
  /// a free value in a loop can be one that INPUT never shows at rest. What INPUT leaves open may
  /// be chosen.
  bool holdsAtRest(const Task& task, Recipe recipe, bool complemented);

  /// Whether the function is never 1.
  bool isNeverOn(const Task& task);

  /// The assignment of an answer, what OUTPUT makes of it, and what the two files say.
  std::string explain(const Task& task, const Answer& answer);

 private:
  Views& views(Recipe recipe);
  Answer ask(const Task& task, Recipe recipe);
  std::optional<Literal> forAllChoices(Literal goal);
  std::string computed(const Task& task, View& view, const std::vector<Literal>& assignment);

  const Pairing& pairing_;
  Scene scene_;
  Senses senses_;
  std::array<std::optional<Views>, recipeCount> views_;
};

/// The function of one file as a view shows it; none if it is not given.
std::optional<Meaning> meaningOf(View& view, const Network& network, const Signal& signal,
                                 Slot slot);

}  // namespace ostrel::verify
