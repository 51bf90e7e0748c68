// Splitting: terms move into buried nodes until every Equation is as narrow as the device wants.
//
// Control functions and left exclusive-or operands come down to one literal each. Then groups of
// terms that several Equations have in common get a node that all of them read, and what is still
// too wide is cut into nodes of its own.
#include <algorithm>

#include "design/design.h"
#include "design/term_sharing.h"
#include "run/heart.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {

void Design::splitControlEquations() {
  EquationList candidates;
  for (Signal* signal : logicList_) signal->checkControlSplit(candidates);
  if (!candidates.isEmpty()) applyControlNodes(candidates);
}

/// One node serves all candidates that have exactly its terms. Failed, with the rest unserved, at
/// a candidate without ON terms.
Status Design::applyControlNodes(EquationList& candidates) {
  auto& entries = candidates.entries();
  for (std::size_t n = 0; n < entries.size(); ++n) {
    heartMsg();
    if (entries[n].done) continue;
    Equation& equation = *entries[n].equation;
    equation.dropRepeatedCovers();
    const CoverChain covers = equation.onSet();
    Signal* node = findEquivalent(equation);
    if (node == nullptr && !covers.empty()) node = &createNodeFrom(covers, equation.name);
    const auto column = node == nullptr ? std::size_t{0} : controlColumn(*node);
    if (covers.empty()) return Status::Failed;
    const Polarity polarity =
        columns_[column].signal->inversionCount() == 1 ? Polarity::Inverted : Polarity::None;
    for (std::size_t m = n; m < entries.size(); ++m) {
      Equation& reader = *entries[m].equation;
      if (&reader != node->slot(SlotLogic) &&
          reader.substituteNode(covers, column, polarity, true)) {
        entries[m].done = true;
      }
    }
  }
  logMessage(toLog, "\n");
  return Status::Ok;
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
  while (found && sharing.candidateCount() > 0) {
    heartMsg();
    ++passes;
    logMessage(toNowhere, "<Note> %s:  splitting %d equations in iteration %d...\n", toolTag,
               sharing.candidateCount(), passes);
    found = sharing.shareTerms();
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
    if (candidates.isEmpty()) break;
    refreshFanout(options().speed);
    changed = splitWide(candidates);
    ++passes;
  }
  return passes;
}

namespace {

/// The first `count` distinct terms of the chain.
CoverChain firstTerms(const CoverChain& chain, std::size_t count) {
  CoverList group;
  for (const Cover cover : chain) {
    if (group.covers().size() == count) break;
    if (!group.contains(cover)) group.add(cover);
  }
  return {group.covers().begin(), group.covers().end()};
}

/// How many terms a node takes: whole clusters, as many as fit the limit.
int groupSize(int limit) {
  const int cluster = std::max(options().clusterSize, 1);
  const int whole = limit / cluster * cluster;
  return whole == 0 ? limit : whole;
}

}  // namespace

/// Cuts every candidate down to its limit, terms that read the same columns together. False if no
/// node was made: with a limit of 1 each cut would put a literal in the place of a term.
bool Design::splitWide(const EquationList& candidates) {
  bool changed = false;
  for (const EquationList::Entry& entry : candidates.entries()) {
    Equation& equation = *entry.equation;
    equation.owner->reduced = false;
    equation.owner->xorTried = false;
    equation.orderCovers();
    const int limit = options().splitMax - (equation.xorRole == XorHalf::Right ? 1 : 0);
    while (limit > 1 && equation.onCount() > limit) {
      const auto size = static_cast<std::size_t>(groupSize(limit));
      const CoverChain group = firstTerms(equation.onSet(), size);
      const Signal& node = createNodeFrom(group, equation.name);
      equation.substituteNode(group, node.columns.front(), Polarity::None, false);
      changed = true;
    }
  }
  return changed;
}

}  // namespace ostrel
