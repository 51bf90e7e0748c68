// Splitting: terms move into buried nodes until every Equation is as narrow as the device wants.
//
// Control functions and left exclusive-or operands come down to one literal each. Then groups of
// terms that several Equations have in common get a node that all of them read, and what is still
// too wide is cut into nodes of its own.
//
// Example for cutting: 40 terms under a limit of 16, with clusters of 5, give 15 terms to a node
// and read it, which leaves 26, and once more, which leaves 12.
//
// Candidates are served in the order of logicList, terms in that of their chain. A cut costs one
// walk over the chain.
#include <algorithm>
#include <unordered_set>

#include "design/design.h"
#include "design/term_sharing.h"
#include "run/heart.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The first `count` distinct terms of the chain.
TermChain firstTerms(const TermChain& chain, std::size_t count) {
  TermChain group;
  std::unordered_set<std::uint32_t> taken;
  for (const Term term : chain) {
    if (group.size() == count) break;
    if (taken.insert(term.index).second) group.push_back(term);
  }
  return group;
}

/// How many terms a node takes: whole clusters, as many as fit the limit.
int groupSize(int limit) {
  const int cluster = std::max(options().clusterSize, 1);
  const int whole = limit / cluster * cluster;
  return whole == 0 ? limit : whole;
}

}  // namespace

void Design::splitControlEquations() {
  EquationList candidates;
  for (Signal* signal : logicList_) signal->checkControlSplit(candidates);
  if (!candidates.empty()) applyControlNodes(candidates);
}

/// One node serves all candidates that have exactly its terms.
void Design::applyControlNodes(const EquationList& candidates) {
  std::vector<bool> isServed(candidates.size(), false);
  for (std::size_t n = 0; n < candidates.size(); ++n) {
    heartMsg();
    Equation& equation = *candidates[n];
    if (isServed[n]) continue;
    const bool hadRepeated = equation.dropRepeatedTerms();
    const TermChain list = equation.onSet();
    if (list.size() > 1) {
      Signal* node = findEquivalent(equation);
      if (node == nullptr) node = &createNodeFrom(list, equation.name);
      const std::size_t column = controlColumn(*node);
      const Polarity polarity =
          columns_[column].signal->inversionCount() == 1 ? Polarity::Inverted : Polarity::None;
      for (std::size_t m = n; m < candidates.size(); ++m) {
        if (candidates[m] == node->slot(SlotLogic)) continue;
        if (candidates[m]->substituteNode(list, column, polarity, true)) isServed[m] = true;
      }
    }
    // What is left can be a constant, which doesn't count as logic.
    if (hadRepeated) logicListIsCurrent_ = false;
  }
  logMessage(toLog, "\n");
}

/// The column through which a control function reads a node: the internal value where there is one.
std::size_t Design::controlColumn(Signal& node) {
  if (node.feedbackColumn >= 0) return static_cast<std::size_t>(node.feedbackColumn);
  if (node.pinColumn >= 0) return static_cast<std::size_t>(node.pinColumn);
  return addInputColumn(node);
}

void Design::splitEquations() {
  if (options().splitMax < 2) return;
  const bool logicOnly = options().speed;
  int passes = options().speed ? 0 : shareTerms();
  passes += cutWideEquations();
  if (passes == 0) return;
  refreshFanout(logicOnly);
  for (Signal* signal : logicList_) signal->reduce();
}

/// Gives the number of passes: a search that finds nothing counts too.
int Design::shareTerms() {
  TermSharing sharing(*this, options().clusterSize);
  int passes = 0;
  bool found = true;
  while (found) {
    heartMsg();
    if (sharing.candidateCount() == 0) break;
    ++passes;
    found = sharing.shareOneGroup();
  }
  return passes;
}

int Design::cutWideEquations() {
  int passes = 0;
  bool changed = true;
  while (changed) {
    heartMsg();
    EquationList candidates;
    for (Signal* signal : logicList_) {
      signal->checkSplit(candidates, options().splitMax, passes == 0);
    }
    if (candidates.empty()) break;
    refreshFanout(options().speed);
    changed = splitWide(candidates);
    ++passes;
  }
  return passes;
}

/// Cuts every candidate down to its limit, terms that read the same columns together. False if no
/// node was made: with a limit of 1 each cut would put a literal in the place of a term.
bool Design::splitWide(const EquationList& candidates) {
  bool changed = false;
  for (Equation* candidate : candidates) {
    Equation& equation = *candidate;
    equation.owner->reduced = false;
    equation.owner->xorTried = false;
    equation.orderTerms();
    const int limit = options().splitMax - (equation.xorRole == XorHalf::Right ? 1 : 0);
    while (limit > 1 && equation.onCount() > limit) {
      const auto size = static_cast<std::size_t>(groupSize(limit));
      const TermChain group = firstTerms(equation.onSet(), size);
      const Signal& node = createNodeFrom(group, equation.name);
      equation.substituteNode(group, node.columns.front(), Polarity::None, false);
      changed = true;
    }
  }
  return changed;
}

}  // namespace ostrel
