#include "design/term_sharing.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

#include "design/design.h"
#include "run/options.h"

namespace ostrel {

TermSharing::TermSharing(Design& design, int candidateLimit)
    : design_(design), candidateLimit_(candidateLimit) {
  for (Signal* signal : design.logic()) {
    if (!signal->factored) enterCandidates(*signal);
  }
  for (std::size_t id = 0; id < candidates_.size(); ++id) {
    for (const Term term : candidates_[id].equation.onSet()) {
      scores_[id] += static_cast<std::int64_t>(holders_[term.index].size());
    }
  }
}

/// Enters the Equations of the Signal that are wide enough, behind all older candidates, and their
/// uses. Their scores are still to be worked out.
void TermSharing::enterCandidates(Signal& signal) {
  auto id = static_cast<CandidateId>(candidates_.size());
  addWideLogic(signal, candidateLimit_, Announce::No, candidates_);
  for (; id < candidates_.size(); ++id) {
    scores_.push_back(0);
    ++activeCount_;
    for (const Term term : candidates_[id].equation.onSet()) holders(term).push_back(id);
  }
}

/// Enters a node that was made in the course of the search; its terms have one use more each.
void TermSharing::addNode(Signal& node) {
  const std::size_t id = candidates_.size();
  enterCandidates(node);
  if (id == candidates_.size()) return;
  for (const Term term : candidates_[id].equation.onSet()) {
    const std::vector<CandidateId>& uses = holders(term);
    for (const CandidateId holder : uses) scores_[holder] += holder == id ? 0 : 1;
    scores_[id] += static_cast<std::int64_t>(uses.size());
  }
}

bool TermSharing::isStillWide(const Candidate& candidate) const {
  std::vector<Candidate> wide;
  addWideLogic(candidate.signal, candidateLimit_, Announce::No, wide);
  return std::ranges::any_of(
      wide, [&](const Candidate& other) { return &other.equation == &candidate.equation; });
}

void TermSharing::dropNarrow(std::span<const CandidateId> ids) {
  for (const CandidateId id : ids) {
    if (isStillWide(candidates_[id])) continue;
    for (const Term term : candidates_[id].equation.onSet()) dropUses(term, {&id, 1});
    scores_[id] = -1;
    --activeCount_;
  }
}

// ---- use counts and scores ----

std::vector<TermSharing::CandidateId>& TermSharing::holders(Term term) {
  if (term.index >= holders_.size()) holders_.resize(design_.terms().size());
  return holders_[term.index];
}

/// Each of the candidates, in ascending order, has one more use of the term.
void TermSharing::addUses(Term term, std::span<const CandidateId> ids) {
  std::vector<CandidateId>& uses = holders(term);
  for (const CandidateId id : uses) scores_[id] += static_cast<std::int64_t>(ids.size());
  const auto middle = static_cast<std::ptrdiff_t>(uses.size());
  uses.insert(uses.end(), ids.begin(), ids.end());
  std::inplace_merge(uses.begin(), uses.begin() + middle, uses.end());
  assert(std::is_sorted(uses.begin(), uses.end()));
  for (const CandidateId id : ids) scores_[id] += static_cast<std::int64_t>(uses.size());
}

/// Each of the candidates, in ascending order, has one use of the term less.
void TermSharing::dropUses(Term term, std::span<const CandidateId> ids) {
  std::vector<CandidateId>& uses = holders(term);
  for (const CandidateId id : ids) scores_[id] -= static_cast<std::int64_t>(uses.size());
  std::vector<CandidateId> left;
  std::set_difference(uses.begin(), uses.end(), ids.begin(), ids.end(), std::back_inserter(left));
  assert(left.size() + ids.size() == uses.size());  // each of them had a use
  uses = std::move(left);
  for (const CandidateId id : uses) scores_[id] -= static_cast<std::int64_t>(ids.size());
}

// ---- the search ----

bool TermSharing::isWorthNode(std::size_t equations, std::size_t terms) const {
  const Options& opts = options();
  return equations >= static_cast<std::size_t>(std::max(opts.shareMin, 0)) && terms >= 2 &&
         terms * equations > static_cast<std::size_t>(std::max(opts.clusterSize, 0));
}

/// The term of the Equation that most candidates use; the Equation has one.
Term TermSharing::mostShared(const Equation& equation) const {
  const TermChain& chain = equation.onSet();
  return *std::max_element(chain.begin(), chain.end(), [this](Term a, Term b) {
    return holders_[a.index].size() < holders_[b.index].size();
  });
}

/// The candidates that hold the term, each once, in order.
std::vector<TermSharing::CandidateId> TermSharing::holdersOf(Term term) const {
  std::vector<CandidateId> ids = holders_[term.index];
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

/// Counts how often the Equations of a level use each term; terms of the group count as absent.
void TermSharing::countLevel(std::span<const CandidateId> level, std::span<const Term> group) {
  for (const CandidateId id : level) {
    for (const Term term : candidates_[id].equation.onSet()) levelUses_[term.index] = 0;
  }
  for (const CandidateId id : level) {
    for (const Term term : candidates_[id].equation.onSet()) ++levelUses_[term.index];
  }
  for (const Term term : group) levelUses_[term.index] = 0;
  members_.clear();
  for (const CandidateId id : level) {
    Member& member = members_.emplace_back();
    for (const Term term : candidates_[id].equation.onSet()) member.score += levelUses_[term.index];
  }
}

/// The terms of the Equation, those with the most uses in the level first.
std::vector<Term> TermSharing::byUses(const Equation& equation) const {
  std::vector<Term> terms = equation.onSet();
  std::stable_sort(terms.begin(), terms.end(),
                   [this](Term a, Term b) { return levelUses_[a.index] > levelUses_[b.index]; });
  return terms;
}

/// The most shared term of the Equation that shares the most, if any term is left. Until the next
/// count a term can only be taken, so what was passed over once is never looked at again.
std::optional<Term> TermSharing::bestOfLevel(std::span<const CandidateId> level) {
  const auto fewer = [](const Member& a, const Member& b) { return a.score < b.score; };
  const auto best = std::max_element(members_.begin(), members_.end(), fewer);
  if (best->terms.empty()) {
    best->terms =
        byUses(candidates_[level[static_cast<std::size_t>(best - members_.begin())]].equation);
  }
  while (best->next < best->terms.size()) {
    const Term term = best->terms[best->next];
    if (levelUses_[term.index] > 0) return term;
    ++best->next;
  }
  return std::nullopt;
}

/// The term joins the group; every Equation of the level holds it.
void TermSharing::takeTerm(Term term, std::span<const CandidateId> level) {
  const std::vector<CandidateId>& uses = holders_[term.index];
  for (std::size_t i = 0; i < level.size(); ++i) {
    const auto [first, last] = std::equal_range(uses.begin(), uses.end(), level[i]);
    members_[i].score -= (last - first) * levelUses_[term.index];
  }
  levelUses_[term.index] = 0;
}

/// Adds the best term of the level to the group, again and again, and leaves in the level the
/// Equations that hold the group, as long as there are two.
void TermSharing::growGroup(std::vector<CandidateId>& level, std::vector<Term>& group) {
  levelUses_.resize(design_.terms().size());
  countLevel(level, group);
  while (const std::optional<Term> term = bestOfLevel(level)) {
    const std::vector<CandidateId> all = holdersOf(*term);
    std::vector<CandidateId> left;
    std::set_intersection(level.begin(), level.end(), all.begin(), all.end(),
                          std::back_inserter(left));
    if (left.size() < 2) return;
    group.push_back(*term);
    if (left.size() == level.size()) {
      takeTerm(*term, level);  // all other counts stay
    } else {
      level = std::move(left);
      countLevel(level, group);
    }
  }
}

bool TermSharing::shareOneGroup() {
  if (activeCount_ < 2) return false;
  const auto best = std::max_element(scores_.begin(), scores_.end()) - scores_.begin();
  const Equation& equation = candidates_[static_cast<std::size_t>(best)].equation;
  if (equation.onSet().empty()) return false;
  std::vector<Term> group = {mostShared(equation)};
  std::vector<CandidateId> level = holdersOf(group.front());
  if (level.size() < 2) return false;
  growGroup(level, group);
  if (!isWorthNode(level.size(), group.size())) return false;
  extractShared(level, group);
  return true;
}

/// Gives the group a node, or takes a Signal that computes it already, and rewrites the Equations.
void TermSharing::extractShared(std::span<const CandidateId> level, std::span<const Term> group) {
  Equation shared(design_.terms());
  for (const Term term : group) shared.addOnTerm(term);
  const auto firstColumn = [](const Signal& signal) {
    return signal.columns.empty() ? -1 : static_cast<int>(signal.columns.front());
  };
  Signal* node = design_.findEquivalent(shared, firstColumn);
  const bool isNew = node == nullptr;
  if (isNew) node = &design_.createNodeFrom(group, "com");
  const std::size_t column =
      node->columns.empty() ? design_.addReadingColumn(*node) : node->columns.front();
  const Equation& nodeLogic = *node->slot(SlotLogic);

  std::vector<CandidateId> rewritten;
  for (const CandidateId id : level) {
    candidates_[id].signal.noteNewLogic();
    if (&candidates_[id].equation != &nodeLogic) rewritten.push_back(id);
  }
  for (const Term term : group) dropUses(term, rewritten);
  for (const CandidateId id : rewritten) {
    candidates_[id].equation.substituteNode(group, column, nodeLogic.polarity, false);
  }
  if (!rewritten.empty()) {
    addUses(candidates_[rewritten.front()].equation.onSet().back(), rewritten);
  }
  if (isNew) addNode(*node);
  dropNarrow(rewritten);
}

}  // namespace ostrel
