// Splitting: terms move into buried nodes until every Equation is as narrow as the device wants.
//
// Idea. Groups of terms that several Equations have in common get a node that all of them read
// (term_sharing.h), and what is still too wide is cut into nodes of its own.
//
// Example for cutting: 40 terms under a limit of 16, with clusters of 5, give 15 terms to a node
// and read it, which leaves 26, and once more, which leaves 12.
//
// Cost. A cut costs one walk over the chain.
//
// Order. Candidates are served in the order of logic(), terms in that of their chain, which is
// rearranged once before the first cut.
#include <algorithm>
#include <cassert>
#include <unordered_set>

#include "design/passes.h"
#include "design/term_sharing.h"
#include "logic/polarity.h"
#include "logic/split_limits.h"
#include "run/heart.h"
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
  assert(group.size() <= count);
  return group;
}

/// How many terms a node takes: whole clusters, as many as fit the limit.
int groupSize(int limit) {
  const int cluster = std::max(options().clusterSize, 1);
  const int whole = limit / cluster * cluster;
  return whole == 0 ? limit : whole;
}

/// Gives the number of passes: a search that finds nothing counts too.
int shareTerms(Design& design) {
  TermSharing sharing(design, options().clusterSize);
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

/// Cuts an Equation down to its limit, terms that read the same columns together. False if no node
/// was made: with a limit of 1 each cut would put a literal in the place of a term.
bool cut(Design& design, const Candidate& candidate) {
  auto& [signal, equation] = candidate;
  signal.noteNewLogic();
  equation.orderTerms();
  const int limit = options().splitMax - (equation.xorRole == XorHalf::Right ? 1 : 0);
  if (limit <= 1) return false;
  bool changed = false;
  while (equation.onCount() > limit) {
    const auto size = static_cast<std::size_t>(groupSize(limit));
    const TermChain group = firstTerms(equation.onSet(), size);
    const Signal& node = design.createNodeFrom(group, signal.name);
    equation.substituteNode(group, node.columns.front(), Polarity::None, false);
    changed = true;
  }
  assert(equation.onCount() <= limit);
  return changed;
}

/// Cuts all candidates, and then what became one by that. Gives the number of passes.
int cutWideEquations(Design& design) {
  int passes = 0;
  bool changed = true;
  while (changed) {
    heartMsg();
    std::vector<Candidate> candidates;
    const Announce announce = passes == 0 ? Announce::Yes : Announce::No;
    for (Signal* signal : design.logic()) {
      addWideLogic(*signal, options().splitMax, announce, candidates);
    }
    if (candidates.empty()) break;
    heartMsg();
    computeSupports(design);
    changed = false;
    for (const Candidate& candidate : candidates) changed |= cut(design, candidate);
    ++passes;
  }
  return passes;
}

}  // namespace

void splitEquations(Design& design) {
  if (options().splitMax < 2) return;
  int passes = options().speed ? 0 : shareTerms(design);
  passes += cutWideEquations(design);
  if (passes == 0) return;
  heartMsg();
  computeSupports(design);
  for (Signal* signal : design.logic()) reduce(*signal);
}

}  // namespace ostrel
