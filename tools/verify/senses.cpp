// Two questions take turns. Under fixed free values every function's conflict depends on the senses
// alone; a solver guesses senses that no example so far contradicts. Under the guessed senses the
// conflicts are asked of the prover; an assignment that makes one true is the next example. A
// function that no guess can satisfy is left out, and fails its own comparison later.
//
// Example: a register N that toggles, read by an output Y = N. After the exchange OUTPUT has N
// toggling too and Y = !N. The example N = 1 shows that Y conflicts unless N holds the complement.
//
// Cost: one build of both views and one question a function in each turn; each turn rules out at
// least the guess that it started with, and few are needed since an example speaks of all
// functions at once.

#include "verify/senses.h"

#include <algorithm>

#include "verify/cnf.h"

namespace ostrel::verify {

namespace {

// Enough for designs of hundreds of registers, where examples rule out most guesses at once.
constexpr int maxTurns = 64;
constexpr std::size_t firstExamples = 4;

class Search {
 public:
  Search(Scene& scene, const std::vector<std::size_t>& candidates, const ConflictsOf& conflictsOf)
      : scene_(scene), candidates_(candidates), conflictsOf_(conflictsOf), guesses_(scene.graph()) {
    const std::size_t n = scene.pairing().in.signals.size();
    variables_.assign(n, falseLiteral);
    senses_.values.assign(n, falseLiteral);
    for (const std::size_t c : candidates_) variables_[c] = scene_.graph().variable();
  }

  Senses run() {
    addExamples();
    preferFalse();
    for (int turn = 0; turn < maxTurns; ++turn) {
      if (!guess()) break;
      std::vector<Literal> assignment;
      const Proof proof = refute(assignment);
      if (proof == Proof::Never) return senses_;
      if (proof == Proof::GaveUp) break;
      addExample(valuesOf(assignment));
    }
    senses_.settled = false;
    return senses_;
  }

 private:
  Values map(const std::function<bool(Literal)>& valueOf) const {
    const auto fixed = [&](Literal v) { return valueOf(v) ? trueLiteral : falseLiteral; };
    Values values = scene_.leaves();
    std::ranges::transform(values.own, values.own.begin(), fixed);
    std::ranges::transform(values.pin, values.pin.begin(), fixed);
    return values;
  }

  Values valuesOf(const std::vector<Literal>& assignment) const {
    return map([&](Literal v) { return std::ranges::find(assignment, v) != assignment.end(); });
  }

  void addExamples() {
    for (std::size_t k = 0; k < firstExamples; ++k) {
      addExample(map([&](Literal v) { return scene_.simulation().value(v, k); }));
    }
  }

  // Where both senses would do, no exchange is the better guess.
  void preferFalse() {
    for (const std::size_t c : candidates_) {
      if (guesses_.mentions(variables_[c])) guesses_.solver.phase(-guesses_.literal(variables_[c]));
    }
  }

  void addExample(const Values& values) {
    const std::vector<Literal> conflicts = conflictsOf_(values, variables_);
    while (kept_.size() < conflicts.size()) kept_.push_back(guesses_.newVariable());
    for (std::size_t f = 0; f < conflicts.size(); ++f) {
      if (conflicts[f] == falseLiteral || kept_[f] == 0) continue;
      guesses_.clause({-kept_[f], -guesses_.literal(conflicts[f])});
    }
  }

  // Takes functions out, the last ones first, until some senses satisfy the rest.
  bool guess() {
    for (;;) {
      for (const int k : kept_) {
        if (k != 0) guesses_.solver.assume(k);
      }
      const int status = guesses_.solver.solve();
      if (status == 10) break;
      const auto failed = std::find_if(kept_.rbegin(), kept_.rend(),
                                       [&](int k) { return k != 0 && guesses_.solver.failed(k); });
      if (status != 20 || failed == kept_.rend()) return false;
      *failed = 0;
      ++senses_.failing;
    }
    for (const std::size_t c : candidates_) {
      senses_.values[c] = falseLiteral ^ guesses_.value(variables_[c]);
    }
    return true;
  }

  Proof refute(std::vector<Literal>& assignment) {
    const std::vector<Literal> conflicts = conflictsOf_(scene_.leaves(), senses_.values);
    Proof result = Proof::Never;
    for (std::size_t f = 0; f < conflicts.size(); ++f) {
      if (kept_[f] == 0) continue;
      const Proof proof = scene_.prover().find(conflicts[f], assignment);
      if (proof == Proof::Found) return proof;
      if (proof == Proof::GaveUp) result = proof;
    }
    return result;
  }

  Scene& scene_;
  const std::vector<std::size_t>& candidates_;
  const ConflictsOf& conflictsOf_;
  Cnf guesses_;
  std::vector<Literal> variables_;  // by Signal of INPUT
  std::vector<int> kept_;           // by function: its switch in the solver, 0 once taken out
  Senses senses_;
};

}  // namespace

Senses findSenses(Scene& scene, const std::vector<std::size_t>& candidates,
                  const ConflictsOf& conflictsOf) {
  return Search(scene, candidates, conflictsOf).run();
}

}  // namespace ostrel::verify
