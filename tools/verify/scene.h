// Both files over the same free variables.
//
// The free variables are the values of INPUT's Signals. How far the two views look behind them is
// a recipe: the first comparison takes every Signal that both files have as a free variable, the
// second replaces the combinational ones on both sides. A loop is cut at one of these, on both
// sides at once, and that Signal stays free.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "verify/order.h"
#include "verify/pairing.h"
#include "verify/prover.h"
#include "verify/view.h"

namespace ostrel::verify {

enum class Recipe : unsigned char {
  SharedFree,      ///< only what one file alone has is replaced
  SharedReplaced,  ///< combinational Signals of both files too
  PinsInside,      ///< likewise, and a pin that can be off is taken for its own value
  UnreadIgnored    ///< as SharedReplaced, without literals of lost nodes that only rows of 0 read
};

inline constexpr std::size_t recipeCount = 4;

struct Views {
  View in;
  View out;
};

class Scene {
 public:
  /// `flipFlopFirst`: a `.D`, `.Q` or `.FB` column of a pin in OUTPUT reads in front of the mark.
  Scene(const Pairing& pairing, bool flipFlopFirst, int effort);
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const Pairing& pairing() const { return pairing_; }
  Graph& graph() { return graph_; }
  Prover& prover() { return prover_; }
  const Simulation& simulation() const { return simulation_; }
  const Values& leaves() const { return leaves_; }  ///< by Signal of INPUT

  /// `leaves` are the free values, by Signal of INPUT; a true sense says that OUTPUT's node of
  /// that Signal holds the complement.
  Views build(Recipe recipe, Values leaves, const std::vector<Literal>& senses);

  /// The Signals of INPUT at which a recipe cuts loops.
  std::vector<std::size_t> cuts(Recipe recipe) const;

  /// Which Signal closes a loop of nodes that only this file has.
  const std::optional<std::size_t>& cycleOfInput() const { return plans_[0].in.cycle; }
  const std::optional<std::size_t>& cycleOfOutput() const { return plans_[0].out.cycle; }

  /// What INPUT leaves open in a node that OUTPUT lacks; any choice would do.
  bool isOpenChoice(Literal variable) const { return openChoices_.contains(variable.node()); }

  /// The assignment in names of columns.
  std::string describe(const std::vector<Literal>& assignment) const;

 private:
  struct Plan {
    Order in;
    Order out;
  };

  Plan makePlan(Recipe recipe) const;
  void seedVectors();
  void nameLeaves();

  const Pairing& pairing_;
  Graph graph_;
  Simulation simulation_{graph_};
  Prover prover_;
  Values leaves_;
  std::array<Plan, recipeCount> plans_;
  std::vector<bool> readsInverted_;  // by input column of OUTPUT
  std::unordered_map<std::size_t, std::string> names_;
  std::unordered_set<std::size_t> openChoices_;
};

}  // namespace ostrel::verify
