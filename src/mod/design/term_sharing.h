// The search for groups of terms that several Equations share.
//
// Idea. A group grows term by term, greedily. At each level the Equation that shares the most is
// asked for its most shared term; the term joins the group, and the search goes on among the
// Equations that hold it. When the group can't grow any further, it gets a node if it is worth one:
// at least shareMin Equations, at least 2 terms, and more terms times Equations than a cluster
// holds. Every Equation of the level then reads the node with one literal in place of the terms.
// In the literature: greedy extraction of common divisors, a divisor being some terms of a sum.
//
// Example. The Equations A + B + C and A + B + D, with a cluster of 3, share A first (used twice,
// and the first Equation wins the tie), then B; C has one holder only. 2 terms in 2 Equations are
// more than 3, so a node A + B is made.
//
// Cost. Use counts and scores follow each change, so that a step of the search costs what it
// changes, not what the design holds.
//
// Order. Ties go to the Equation that stands first among the candidates and to the term that stands
// first in its chain. The candidates are what a fresh walk over the logic would find, in that
// order: their terms only become fewer, so a candidate can leave but never come back, and a new
// node stands behind all others.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "logic/split_limits.h"
#include "minimizer/term_table.h"

namespace ostrel {

class Design;

class TermSharing {
 public:
  /// Gathers the candidates of the design, which have more terms than the limit. The design
  /// outlives the search, and only the search changes its logic in the meantime.
  TermSharing(Design& design, int candidateLimit);

  /// Equations that are still wide enough to take part.
  int candidateCount() const { return activeCount_; }

  /// Finds one group and gives it a node, or a Signal that computes it already. False, with
  /// nothing changed, if there is no group that is worth it.
  bool shareOneGroup();

 private:
  using CandidateId = std::uint32_t;  // in the order of the candidates

  void enterCandidates(Signal& signal);
  void addNode(Signal& node);
  bool isStillWide(const Candidate& candidate) const;
  void dropNarrow(std::span<const CandidateId> ids);

  Term mostShared(const Equation& equation) const;
  std::vector<CandidateId> holdersOf(Term term) const;
  void growGroup(std::vector<CandidateId>& level, std::vector<Term>& group);
  void countLevel(std::span<const CandidateId> level, std::span<const Term> group);
  std::vector<Term> byUses(const Equation& equation) const;
  std::optional<Term> bestOfLevel(std::span<const CandidateId> level);
  void takeTerm(Term term, std::span<const CandidateId> level);
  bool isWorthNode(std::size_t equations, std::size_t terms) const;
  void extractShared(std::span<const CandidateId> level, std::span<const Term> group);

  void addUses(Term term, std::span<const CandidateId> ids);
  void dropUses(Term term, std::span<const CandidateId> ids);
  std::vector<CandidateId>& holders(Term term);

  Design& design_;
  int candidateLimit_;
  std::vector<Candidate> candidates_;
  std::vector<std::int64_t>
      scores_;  // by candidate: use counts of its terms added up, -1 if it left
  int activeCount_ = 0;
  std::vector<std::vector<CandidateId>> holders_;  // by term: one entry for each use, ascending

  /// What is known of an Equation of the present level.
  struct Member {
    std::int64_t score = 0;   // uses of its terms in the level, added up
    std::vector<Term> terms;  // those with the most uses first; empty until it is the best
    std::size_t next = 0;     // terms before this place have been taken
  };
  std::vector<std::int64_t> levelUses_;  // by term, for the present level
  std::vector<Member> members_;          // in the order of the level
};

}  // namespace ostrel
