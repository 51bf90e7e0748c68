// Control functions and left exclusive-or operands come down to one literal each, which reads a
// node with their terms.
//
// Idea. The device has one product term for each of them. A Signal that computes the function
// already serves as the node, otherwise one is made; it serves all candidates with its terms.
//
// Example. Q.AR and R.AR are both a + b. A node Q_0 = a + b is made, and both read it. If a pin Y
// is a + b, both read Y and no node is made.
//
// Cost. One walk over the candidates for each node.
//
// Order. Candidates are served in the order of logic(), the slots of a Signal in their own; the
// first one of a group names the node.
#include <cassert>

#include "design/passes.h"
#include "logic/split_limits.h"
#include "run/heart.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The column through which a control function reads a node: the internal value where there is one.
int controlColumn(const Signal& node) {
  return node.feedbackColumn >= 0 ? node.feedbackColumn : node.pinColumn;
}

/// Gives all candidates that have exactly the terms of the first one a node.
void serve(Design& design, std::span<const Candidate> candidates) {
  const auto& [signal, equation] = candidates.front();
  const TermChain list = equation.onSet();
  Signal* node = design.findEquivalent(equation, controlColumn);
  if (node == nullptr) node = &design.createNodeFrom(list, signal.name);
  const int known = controlColumn(*node);
  const auto column = known >= 0 ? static_cast<std::size_t>(known) : design.addReadingColumn(*node);
  const Polarity told = node->inversionCount() == 1 ? Polarity::Inverted : Polarity::None;
  // The marks on the names needn't say in which sense the node has the function.
  const Polarity own = options().lossless ? node->slot(SlotLogic)->polarity : told;
  bool isOwnTaken = false;
  for (const Candidate& candidate : candidates) {
    const Polarity polarity = candidate.equation.isFree ? told : own;
    const bool isTaken = candidate.equation.substituteNode(list, column, polarity, true);
    isOwnTaken |= isTaken && polarity != told;
  }
  if (isOwnTaken) note({node->name, " is read in the sense of its function"});
  assert(equation.onCount() == 1);
}

}  // namespace

void splitControlEquations(Design& design) {
  std::vector<Candidate> candidates;
  for (Signal* signal : design.logic()) addWideControls(*signal, candidates);
  if (candidates.empty()) return;
  for (std::size_t n = 0; n < candidates.size(); ++n) {
    heartMsg();
    const bool hadRepeated = candidates[n].equation.dropRepeatedTerms();
    if (candidates[n].equation.onCount() > 1) serve(design, std::span(candidates).subspan(n));
    // What is left can be a constant, which doesn't count as logic.
    if (hadRepeated) design.noteEmptiedLogic();
  }
  logText(toLog, "\n");
}

}  // namespace ostrel
