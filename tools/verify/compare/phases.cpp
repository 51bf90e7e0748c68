// Two questions take turns. Under fixed free values every function's conflict depends on the phases
// alone; a solver guesses phases that no example so far contradicts. Under the guessed phases the
// conflicts are asked of the prover; an assignment that makes one true is the next example.
//
// Example: a register N that toggles, read by an output Y = N. After the exchange OUTPUT has N
// toggling too and Y = !N. The example N = 1 shows that Y conflicts unless N holds the complement.
//
// Cost: one build of both views and two questions in each turn; each turn rules out at least the
// guess that it started with, and few are needed since an example speaks of all functions at once.

#include "verify/compare/phases.h"

#include <algorithm>

namespace ostrel::verify {

namespace {

// Enough for designs of hundreds of registers, where examples rule out most guesses at once.
constexpr int maxTurns = 1000;
constexpr std::size_t firstExamples = 4;

// A node that OUTPUT gives by a plain column can have got its mark there and lost it to the
// readers.
bool canTurn(const Correspondence& c, std::size_t i) {
  const Signal& in = c.in.signals[i];
  const Signal* out = c.partner(i);
  return out != nullptr && in.isNode && in.gives(Slot::Logic) && out->shape() == DataShape::Logic;
}

bool isInitialization(const Task& task) {
  return task.slot == Slot::Set || task.slot == Slot::Reset;
}

class Search {
 public:
  explicit Search(Miter& miter) : miter_(miter), c_(miter.correspondence()) {
    phases_.values.assign(c_.in.signals.size(), falseLiteral);
    variables_ = phases_.values;
    fitting_.assign(variables_.size(), trueLiteral);
    isLeftOut_.assign(variables_.size(), false);
    for (std::size_t i = 0; i < variables_.size(); ++i) {
      if (!canTurn(c_, i)) continue;
      variables_[i] = miter_.graph().variable();
      candidates_.push_back(i);
    }
  }

  Phases run() {
    if (candidates_.empty()) return phases_;
    for (std::size_t k = 0; k < firstExamples; ++k) {
      addExample([&](Literal v) { return miter_.simulation().value(v, k); });
    }
    for (int turn = 0; turn < maxTurns; ++turn) {
      std::vector<Literal> example;
      const Proof proof = guess() == Proof::Found ? refute(example) : Proof::GaveUp;
      if (proof == Proof::Never) return phases_;
      if (proof == Proof::GaveUp) break;
      addExample([&](Literal v) { return std::ranges::find(example, v) != example.end(); });
    }
    phases_.settled = false;
    return phases_;
  }

 private:
  // By Signal, where its functions disagree; where no loop is at rest they may.
  std::vector<Literal> disagreements(const Values& leaves, const std::vector<Literal>& phases) {
    Graph& graph = miter_.graph();
    Views views = miter_.build(CutPoints::Loops, leaves, phases);
    const Literal atRest = graph.both(miter_.restOfLostNodes(views),
                                      graph.either(miter_.restInInput(views, leaves, phases),
                                                   miter_.restInOutput(views, leaves, phases)));
    std::vector<Literal> result;
    for (std::size_t i = 0; i < c_.in.signals.size(); ++i) {
      const Literal straight = conflictOf(i, false, views, phases);
      const Literal crossed = conflictOf(i, true, views, phases);
      const bool marked = exchangesSetReset(c_, i, false);
      const bool canExchange = marked != exchangesSetReset(c_, i, true);
      const Literal exchange = canExchange ? phases[i] ^ marked : falseLiteral;
      // Where a loop is never at rest, set and reset still have to be there.
      const Literal lost = graph.either(graph.both(exchange, losesInitialization(i, true)),
                                        graph.both(!exchange, losesInitialization(i, false)));
      const Literal conflict =
          graph.either(graph.both(exchange, crossed), graph.both(!exchange, straight));
      result.push_back(graph.either(lost, graph.both(atRest, conflict)));
    }
    return result;
  }

  // A column of INPUT without rows says nothing that OUTPUT would have to keep; one of OUTPUT is a
  // constant 0.
  Literal losesInitialization(std::size_t i, bool exchanged) {
    const bool isLost = std::ranges::any_of(tasksOf(c_, i, exchanged), [&](const Task& task) {
      if (!isInitialization(task)) return false;
      const Signal& out = *c_.partner(i);
      return c_.in.hasRows(c_.in.signals[i], task.slot) ? !out.has(task.outSlot)
                                                        : c_.out.hasRows(out, task.outSlot);
    });
    return isLost ? trueLiteral : falseLiteral;
  }

  Literal conflictOf(std::size_t i, bool exchanged, Views& views,
                     const std::vector<Literal>& phases) {
    std::vector<Literal> conflicts;
    for (const Task& task : tasksOf(c_, i, exchanged)) {
      const Signal& in = c_.in.signals[i];
      if (in.gives(task.slot) && c_.partner(i)->gives(task.outSlot)) {
        conflicts.push_back(miter_.conflict(task, views, phases));
      } else if (in.gives(task.slot) && isInitialization(task)) {
        const Meaning lost = views.in.meaning(in, task.slot);
        conflicts.push_back(miter_.graph().either(lost.on, lost.off));
      } else if (c_.partner(i)->gives(task.outSlot) && isInitialization(task)) {
        conflicts.push_back(trueLiteral);
      }
    }
    return miter_.graph().disjunction(std::move(conflicts));
  }

  template <typename ValueOf>
  void addExample(ValueOf valueOf) {
    Values values = miter_.leaves();
    const auto fix = [&](Literal v) { return valueOf(v) ? trueLiteral : falseLiteral; };
    std::ranges::transform(values.own, values.own.begin(), fix);
    std::ranges::transform(values.pin, values.pin.begin(), fix);
    miter_.renewOpenChoices();  // each example may choose anew
    const std::vector<Literal> disagree = disagreements(values, variables_);
    for (std::size_t i = 0; i < fitting_.size(); ++i) {
      fitting_[i] = miter_.graph().both(fitting_[i], !disagree[i]);
    }
  }

  Proof fit(const std::vector<Literal>& goals, std::vector<Literal>& found) {
    miter_.prover().setTitle("are there phases that fit the examples?");
    return miter_.prover().find(miter_.graph().conjunction(goals), found);
  }

  // Where both phases would do, the node was not turned.
  Proof guess() {
    std::vector<Literal> found;
    Proof proof = fit(fitting_, found);
    if (proof == Proof::Never) {
      leaveOutMisfits();
      proof = fit(fitting_, found);
    }
    for (const std::size_t i : candidates_) {
      const bool isTurned = std::ranges::find(found, variables_[i]) != found.end();
      phases_.values[i] = falseLiteral ^ isTurned;
    }
    return proof;
  }

  // Signals that no phases suit together with those in front of them differ in any case.
  void leaveOutMisfits() {
    std::vector<Literal> goals;
    for (std::size_t i = 0; i < fitting_.size(); ++i) {
      std::vector<Literal> found;
      goals.push_back(fitting_[i]);
      if (fit(goals, found) == Proof::Found) continue;
      goals.pop_back();
      fitting_[i] = trueLiteral;
      isLeftOut_[i] = true;
    }
  }

  Proof refute(std::vector<Literal>& example) {
    std::vector<Literal> goals = disagreements(miter_.leaves(), phases_.values);
    for (std::size_t i = 0; i < goals.size(); ++i) {
      if (isLeftOut_[i]) goals[i] = falseLiteral;
    }
    miter_.prover().setTitle("can the files differ under these phases?");
    return miter_.prover().findForAll(miter_.graph(), miter_.graph().disjunction(std::move(goals)),
                                      miter_.openChoices(), example);
  }

  Miter& miter_;
  const Correspondence& c_;
  Phases phases_;
  std::vector<std::size_t> candidates_;
  std::vector<Literal> variables_;  // by Signal of INPUT
  std::vector<Literal> fitting_;    // by Signal: no example contradicts its functions
  std::vector<bool> isLeftOut_;     // by Signal
};

}  // namespace

std::vector<Task> tasksOf(const Correspondence& correspondence, std::size_t signal,
                          bool exchanged) {
  using enum Slot;
  if (!correspondence.toOut[signal]) return {};
  return {{signal, Logic, Logic},
          {signal, Clock, Clock},
          {signal, ClockEnable, ClockEnable},
          {signal, Reset, exchanged ? Set : Reset},
          {signal, Set, exchanged ? Reset : Set},
          {signal, OutputEnable, OutputEnable}};
}

bool exchangesSetReset(const Correspondence& c, std::size_t signal, bool isTurned) {
  const Signal& in = c.in.signals[signal];
  const Signal* out = c.partner(signal);
  if (out == nullptr || !in.gives(Slot::Logic) || !out->gives(Slot::Logic)) return false;
  return c.in.isInverted(in) != (c.out.isInverted(*out) != isTurned);
}

Phases findPhases(Miter& miter) {
  Phases phases = Search(miter).run();
  miter.renewOpenChoices();
  return phases;
}

}  // namespace ostrel::verify
