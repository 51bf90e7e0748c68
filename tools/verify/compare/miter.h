// Both files over the same free variables.
//
// The free variables are the values of INPUT's Signals. Two depths of looking behind them serve the
// questions: with every Signal that both files have as a cut point, or with the combinational ones
// replaced by their logic on both sides. A loop is cut at one of these, on both sides at once, and
// that Signal stays free; what is asked then is asked where it is at rest.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "verify/compare/view.h"
#include "verify/model/correspondence.h"
#include "verify/model/order.h"
#include "verify/proof/prover.h"

namespace ostrel::verify {

/// One function of INPUT and the slot that holds it in OUTPUT. Slot::Logic stands for the value.
struct Task {
  std::size_t signal;  ///< of INPUT; OUTPUT has it too
  Slot slot;
  Slot outSlot;
};

enum class CutPoints : unsigned char { Shared, Loops };

struct Views {
  View in;
  View out;
};

class Miter {
 public:
  /// `flipFlopFirst`: a `.D`, `.Q` or `.FB` column of a pin in OUTPUT reads in front of the mark.
  Miter(const Correspondence& correspondence, bool flipFlopFirst, SolverWork& work);
  Miter(const Miter&) = delete;
  Miter& operator=(const Miter&) = delete;

  const Correspondence& correspondence() const { return correspondence_; }
  Graph& graph() { return graph_; }
  Prover& prover() { return prover_; }
  const Simulation& simulation() const { return simulation_; }
  const Values& leaves() const { return leaves_; }  ///< by Signal of INPUT

  /// `leaves` are the free values, by Signal of INPUT; a true phase says that OUTPUT's node of
  /// that Signal holds the complement.
  Views build(CutPoints cutPoints, const Values& leaves, const std::vector<Literal>& phases);

  /// Where OUTPUT's function breaks INPUT's. Both must be given.
  Literal conflict(const Task& task, Views& views, const std::vector<Literal>& phases);

  /// Where all loops of INPUT alone, of both files in INPUT, or of both files in OUTPUT are at
  /// rest, under the cut points Loops.
  Literal restOfLostNodes(Views& views);
  Literal restInInput(Views& views, const Values& leaves, const std::vector<Literal>& phases);
  Literal restInOutput(Views& views, const Values& leaves, const std::vector<Literal>& phases);

  /// Which Signal closes a loop of nodes that only OUTPUT has.
  const std::optional<std::size_t>& cycleOfOutput() const { return plans_[0].out.cycle; }
  bool hasLoops() const { return !cutSignals_.empty() || !lostLoops_.empty(); }

  /// What INPUT leaves open in nodes that OUTPUT lacks: one choice for all that read them.
  const std::vector<Literal>& openChoices() const { return openChoices_; }
  /// The next views get open choices of their own.
  void renewOpenChoices() {
    openValues_.clear();
    openChoices_.clear();
  }
  /// The values at which loops of nodes that only INPUT has are cut.
  std::vector<Literal> lostLoopValues() const;

  /// The assignment in names of columns.
  std::string describe(const std::vector<Literal>& assignment) const;

 private:
  struct Plan {
    Order in;
    Order out;
  };

  Plan makePlan(CutPoints cutPoints) const;
  Literal openValue(std::size_t inSignal);
  void seedVectors();
  void nameLeaves();

  const Correspondence& correspondence_;
  Graph graph_;
  Simulation simulation_{graph_};
  Prover prover_;
  Values leaves_;
  std::array<Plan, 2> plans_;
  std::vector<std::size_t> cutSignals_;  // of INPUT, shared, where Loops cuts
  std::vector<std::size_t> lostLoops_;   // of INPUT, without partner, where loops are cut
  std::vector<bool> readsInverted_;      // by input column of OUTPUT
  std::unordered_map<std::size_t, std::string> names_;
  std::unordered_map<std::size_t, Literal> openValues_;  // by Signal of INPUT
  std::vector<Literal> openChoices_;
};

}  // namespace ostrel::verify
