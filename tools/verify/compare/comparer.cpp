// Idea. INPUT says where each function must be 1 and where 0; OUTPUT's function is a single value.
// The question is always whether OUTPUT can break INPUT's meaning. Its cheap form takes the Signals
// of both files as cut points; where that fails, the combinational ones are replaced on both sides
// and only a conflict that is still there counts. Each function compared with the others free
// proves the whole design equal, one Signal after the other in the order of INPUT.
//
// Example. INPUT says Y = A&B, OUTPUT has a node N = A&B that INPUT has too and says Y = N. With N
// free Y fails; with N replaced both are A&B.
//
// Loops. A Signal on a loop stays free, and then has values that it never shows at rest. A function
// that fails is asked again where the loops of INPUT or those of OUTPUT are at rest: a state that
// one file has and the other hasn't is a difference, for the Signal of the loop itself fails there.
//
// Open points. A node that OUTPUT lacks may be open in INPUT; there its value is a choice, the same
// for all its readers. So those that fail are asked together: is there an assignment under which,
// whatever is chosen, one of them fails?
//
// Cost. Two questions for each function; a third one together and one for each that fails it.

#include "verify/compare/comparer.h"

#include <algorithm>

#include "verify/compare/phases.h"

namespace ostrel::verify {

namespace {

std::string_view slotName(Slot slot) {
  switch (slot) {
    case Slot::Clock:
      return "clock";
    case Slot::ClockEnable:
      return "clock enable";
    case Slot::Reset:
      return "reset";
    case Slot::Set:
      return "set";
    case Slot::OutputEnable:
      return "output enable";
    default:
      return "logic";
  }
}

Extension twin(Extension e) {
  using enum Extension;
  static constexpr std::pair<Extension, Extension> pairs[] = {
      {RE, PR}, {AR, AP}, {SR, SP}, {S, R}, {ASYNC, SYNC}, {SET, CLR}, {ASET, ACLR}};
  for (const auto& [a, b] : pairs) {
    if (e == a) return b;
    if (e == b) return a;
  }
  return e;
}

class Comparer {
 public:
  Comparer(Miter& miter, bool ffBeforeInverter) : miter_(miter), c_(miter.correspondence()) {
    phases_.values.assign(c_.in.signals.size(), falseLiteral);
    if (ffBeforeInverter) phases_ = findPhases(miter);
    shared_.emplace(miter.build(CutPoints::Shared, miter.leaves(), phases_.values));
    for (std::size_t i = 0; i < c_.in.signals.size(); ++i) {
      const bool isTurned = phases_.values[i] == trueLiteral;
      const bool exchanged = ffBeforeInverter && exchangesSetReset(c_, i, isTurned);
      for (const Task& task : tasksOf(c_, i, exchanged)) compare(task);
    }
    askTogether();
  }

  std::vector<Finding> run() && { return std::move(findings_); }

 private:
  struct Open {
    Task task;
    std::size_t finding;
    Literal conflict;
    Literal value;  // of OUTPUT
  };

  const Signal& in(const Task& task) const { return c_.in.signals[task.signal]; }
  const Signal& out(const Task& task) const { return *c_.partner(task.signal); }

  void add(const Task& task, Outcome outcome, std::string detail = "", Kind kind = Kind::Value) {
    findings_.push_back({outcome,
                         in(task).name + ", " + std::string(slotName(task.slot)),
                         std::move(detail),
                         kind,
                         task.signal,
                         task.slot,
                         {},
                         {}});
  }

  void compare(const Task& task) {
    const bool given = in(task).gives(task.slot);
    const bool kept = out(task).gives(task.outSlot);
    if (given && saysNothing(task, kept)) return;
    if (given && kept) {
      compareBoth(task);
    } else if ((given || kept) && isAlwaysOn(task)) {
      add(task, Outcome::Proven);
    } else if (given) {
      add(task, Outcome::Different, "OUTPUT has no such function", Kind::Missing);
    } else if (kept) {
      add(task, Outcome::Different, "INPUT has no such function");
    }
  }

  static bool isOpen(const Meaning& m) { return m.on == falseLiteral && m.off == falseLiteral; }

  // A function without a point where its value is wanted; likewise an output enable that never
  // enables a pin without anything to put out.
  bool saysNothing(const Task& task, bool kept) {
    const Meaning m = shared_->in.meaning(in(task), task.slot);
    // Rows that contradict each other everywhere leave a control open, but not away.
    if (isOpen(m)) return kept || task.slot == Slot::Logic || !c_.in.hasRows(in(task), task.slot);
    return task.slot == Slot::OutputEnable && m.off == trueLiteral &&
           (!in(task).gives(Slot::Logic) || isOpen(shared_->in.meaning(in(task), Slot::Logic))) &&
           !out(task).has(Slot::OutputEnable) && !out(task).gives(Slot::Logic);
  }

  // A pin without an output enable puts out its value always.
  bool isAlwaysOn(const Task& task) {
    if (task.slot != Slot::OutputEnable || !in(task).gives(Slot::Logic)) return false;
    const Literal off = in(task).has(Slot::OutputEnable)
                            ? shared_->in.meaning(in(task), Slot::OutputEnable).off
                            : !shared_->out.meaning(out(task), Slot::OutputEnable).on;
    return miter_.prover().isNever(off);
  }

  // The word of a control function may only change to its twin, when it moved to the twin's slot.
  bool hasSameExtension(const Task& task) const {
    if (task.slot == Slot::Logic) return true;
    const Extension before = c_.in.function(in(task), task.slot).extension;
    const Extension after = c_.out.function(out(task), task.outSlot).extension;
    if (before == after || task.slot == task.outSlot) return before == after;
    if (twin(before) == after) return true;
    return in(task).has(task.outSlot) &&  // with both there, each word stays in its slot
           c_.in.function(in(task), task.outSlot).extension == after;
  }

  void compareBoth(const Task& task) {
    Prover& prover = miter_.prover();
    add(task, Outcome::Proven);
    Finding& finding = findings_.back();
    prover.setTitle(finding.subject + ": can INPUT and OUTPUT differ?");
    if (!hasSameExtension(task)) {
      finding.outcome = Outcome::Different;
      finding.detail = "the extension has changed";
      return;
    }
    if (prover.isNever(miter_.conflict(task, *shared_, phases_.values))) return;
    const Literal conflict = miter_.conflict(task, replaced(), phases_.values);
    const Literal value = replaced().out.meaning(out(task), task.outSlot).on;
    std::vector<Literal> assignment;
    const Proof proof = prover.find(conflict, assignment, value);
    if (proof == Proof::Never) return;
    if (proof == Proof::GaveUp || !phases_.settled) return giveUp(finding);
    if (!miter_.hasLoops() && miter_.openChoices().empty())
      return refute(task, finding, assignment);
    open_.push_back({task, findings_.size() - 1, conflict, value});
  }

  static void giveUp(Finding& finding) {
    finding.outcome = Outcome::Undecided;
    finding.detail = "the effort was not enough";
  }

  void refute(const Task& task, Finding& finding, const std::vector<Literal>& assignment) {
    finding.outcome = Outcome::Different;
    finding.detail = explain(task, assignment);
  }

  Views& replaced() {
    if (!replaced_) {
      replaced_.emplace(miter_.build(CutPoints::Loops, miter_.leaves(), phases_.values));
    }
    return *replaced_;
  }

  // Where some file is at rest and the conflict holds.
  Literal atRest(Literal conflict) {
    Graph& graph = miter_.graph();
    return graph.conjunction(
        {conflict, miter_.restOfLostNodes(replaced()),
         graph.either(miter_.restInInput(replaced(), miter_.leaves(), phases_.values),
                      miter_.restInOutput(replaced(), miter_.leaves(), phases_.values))});
  }

  // Where OUTPUT is at rest and no state of the loops that it lacks agrees with it.
  Literal notReached(Literal conflict) {
    Graph& graph = miter_.graph();
    const Literal agrees = graph.both(miter_.restOfLostNodes(replaced()), !conflict);
    return graph.both(miter_.restInOutput(replaced(), miter_.leaves(), phases_.values), !agrees);
  }

  Proof askBothWays(Literal conflict, Literal value, std::vector<Literal>& assignment) {
    const Literal goal = atRest(conflict);
    std::vector<Literal> choices = miter_.openChoices();
    const Proof proof =
        miter_.prover().findForAll(miter_.graph(), goal, choices, assignment, value);
    const std::vector<Literal> lost = miter_.lostLoopValues();
    const std::vector<std::size_t> cone = miter_.graph().cone({conflict});
    const bool readsLost = std::ranges::any_of(
        lost, [&](Literal l) { return std::ranges::binary_search(cone, l.node()); });
    if (proof != Proof::Never || !readsLost) return proof;
    choices.insert(choices.end(), lost.begin(), lost.end());
    return miter_.prover().findForAll(miter_.graph(), notReached(conflict), choices, assignment);
  }

  void askTogether() {
    if (open_.empty()) return;
    std::vector<Literal> conflicts;
    for (const Open& open : open_) conflicts.push_back(open.conflict);
    miter_.prover().setTitle("can INPUT and OUTPUT differ where loops are at rest?");
    std::vector<Literal> assignment;
    const Proof together =
        askBothWays(miter_.graph().disjunction(std::move(conflicts)), trueLiteral, assignment);
    if (together == Proof::Never) return;
    bool isNamed = false;
    for (const Open& open : open_) {
      Finding& finding = findings_[open.finding];
      std::vector<Literal> own;
      miter_.prover().setTitle(finding.subject + ": can it differ where loops are at rest?");
      const Proof proof = askBothWays(open.conflict, open.value, own);
      if (proof == Proof::GaveUp) giveUp(finding);
      if (proof == Proof::Found) refute(open.task, finding, own);
      isNamed = isNamed || proof != Proof::Never;
    }
    if (isNamed) return;
    Finding& first = findings_[open_.front().finding];
    if (together == Proof::GaveUp) return giveUp(first);
    first.outcome = Outcome::Different;
    first.detail = miter_.describe(assignment) + ": what INPUT leaves open suits either it or " +
                   findings_[open_.back().finding].subject;
  }

  std::string explain(const Task& task, const std::vector<Literal>& assignment) {
    View& view = replaced().out;
    const Literal value = miter_.graph().exclusiveOr(
        view.meaning(out(task), task.outSlot).on,
        task.slot == Slot::Logic ? phases_.values[task.signal] : falseLiteral);
    const std::optional<bool> one = miter_.prover().evaluate(value, assignment);
    const std::string text = miter_.describe(assignment) + computed(task, view, assignment);
    if (!one) return text + ": the two files differ, whatever INPUT leaves open";
    return text + ": INPUT says " + (*one ? "0" : "1") + ", OUTPUT says " + (*one ? "1" : "0");
  }

  // The values that OUTPUT's function reads and that are not free themselves.
  std::string computed(const Task& task, const View& view, const std::vector<Literal>& assignment) {
    constexpr std::size_t most = 8;
    std::vector<std::string> values;
    for (const std::size_t c : columnsOf(c_.out, out(task), task.outSlot)) {
      const Literal literal = view.column(c);
      if (miter_.graph().isVariable(literal.node()) && !literal.isComplement()) continue;
      const std::optional<bool> value = miter_.prover().evaluate(literal, assignment);
      if (!value || values.size() == most) continue;
      values.push_back(" " + c_.out.columns[c].text + (*value ? "=1" : "=0"));
    }
    std::string text;
    for (const std::string& value : values) text += value;
    return text.empty() ? text : ", so OUTPUT reads" + text;
  }

  Miter& miter_;
  const Correspondence& c_;
  Phases phases_;
  std::optional<Views> shared_;
  std::optional<Views> replaced_;
  std::vector<Finding> findings_;
  std::vector<Open> open_;
};

}  // namespace

std::vector<Finding> compareFunctions(Miter& miter, bool ffBeforeInverter) {
  return Comparer(miter, ffBeforeInverter).run();
}

}  // namespace ostrel::verify
