// How two files are compared.
//
// A function of INPUT says where it must be 1 and where 0; OUTPUT's function is a single value. The
// question is always whether OUTPUT can break INPUT's meaning. The cheap form of it takes the
// Signals of both files as free; where that fails, the combinational ones are replaced on both
// sides and only a conflict that is still there counts. Each function compared with the others
// free proves the whole design equal, one Signal after the other in the order of INPUT.
//
// Example: INPUT says Y = A&B, OUTPUT has a node N = A&B that INPUT has too and says Y = N. With N
// free Y fails; with N replaced both are A&B.

#include "verify/judge.h"

#include <algorithm>
#include <optional>

#include "verify/excuses.h"
#include "verify/form.h"
#include "verify/turned_nodes.h"

namespace ostrel::verify {

namespace {

using enum Slot;

std::string_view slotName(Slot slot) {
  switch (slot) {
    case Clock:
      return "clock";
    case ClockEnable:
      return "clock enable";
    case Reset:
      return "reset";
    case Set:
      return "set";
    case OutputEnable:
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

class Judge {
 public:
  Judge(const Pairing& pairing, const RunOptions& options, int effort)
      : pairing_(pairing),
        options_(options),
        excuses_(pairing, options),
        comparer_(pairing, options.ffBeforeInverter, effort),
        isRead_(readSignals(pairing.in)) {}

  std::vector<Finding> run() {
    reportForm();
    if (options_.ffBeforeInverter) {
      comparer_.setSenses(findTurnedNodes(comparer_, pairing_, options_, excuses_));
    }
    reportLostMarks();
    for (std::size_t i = 0; i < pairing_.in.signals.size(); ++i) {
      if (!pairing_.toOut[i]) continue;
      if (hasChangedType(pairing_, i)) reportType(i);
      judge({i, Logic, Logic});
      judge({i, Clock, Clock});
      judge({i, ClockEnable, ClockEnable});
      judgeSetReset(i);
      judge({i, OutputEnable, OutputEnable});
    }
    return std::move(findings_);
  }

 private:
  const Signal& in(std::size_t i) const { return comparer_.in(i); }
  const Signal& out(std::size_t i) const { return comparer_.out(i); }

  void add(Outcome outcome, std::string subject, std::string detail) {
    findings_.push_back({outcome, std::move(subject), std::move(detail)});
  }

  Finding finding(const Task& task, Outcome outcome, std::string detail) const {
    return {outcome, in(task.signal).name + ", " + std::string(slotName(task.slot)),
            std::move(detail)};
  }

  void reportForm() {
    const auto split = [this](const std::string& text) {
      const std::size_t colon = text.find(": ");
      add(Outcome::Different, text.substr(0, colon), text.substr(colon + 2));
    };
    for (const std::string& text : structuralDifferences(pairing_)) split(text);
    for (const std::string& text : tooWide(pairing_, options_, excuses_)) split(text);
    if (comparer_.scene().cycleOfOutput()) {
      add(Outcome::Different, pairing_.out.signals[*comparer_.scene().cycleOfOutput()].name,
          "new nodes of OUTPUT form a loop");
    }
    if (comparer_.scene().cycleOfInput()) {
      add(Outcome::NotComparable, in(*comparer_.scene().cycleOfInput()).name,
          "nodes that only INPUT has form a loop");
    }
  }

  // A type can hang on a control function that the options told the run to drop.
  void reportType(std::size_t i) {
    for (const Slot slot : {Clock, ClockEnable, Reset, Set}) {
      if (!in(i).has(slot) || out(i).has(slot)) continue;
      std::optional<std::string> reason = excuses_.forMissing(i, slot, slot);
      if (!reason && saysNothing({i, slot, slot})) {
        reason = "its " + std::string(slotName(slot)) + " says nothing in INPUT";
      }
      if (reason) {
        add(Outcome::NotComparable, in(i).name, "the register type has changed: " + *reason);
        return;
      }
    }
    add(Outcome::Different, in(i).name, "the register type has changed");
  }

  void judge(const Task& task) {
    std::optional<Finding> f = compare(task);
    if (!f) return;
    const Signal& signal = in(task.signal);
    // The run takes out a node that nothing reads, and may give its name to a new one.
    if (f->outcome == Outcome::Different && signal.isNode && !isRead_[task.signal] &&
        !isRegistered(signal.type)) {
      f->outcome = Outcome::NotComparable;
      f->detail = "nothing reads it in INPUT, so the node of its name in OUTPUT is a new one";
    }
    findings_.push_back(std::move(*f));
  }

  // None if there is nothing to compare.
  std::optional<Finding> compare(const Task& task) {
    const bool given = isGiven(in(task.signal), task.slot);
    const bool kept = isGiven(out(task.signal), task.outSlot);
    if (!given && !kept) return std::nullopt;
    if (!given) return finding(task, Outcome::Different, "INPUT has no such function");
    if (saysNothing(task)) return std::nullopt;
    if (task.slot == Logic && in(task.signal).shape() == DataShape::LoneHalf) {
      return finding(task, Outcome::NotComparable, "INPUT gives only one half of an XOR pair");
    }
    return kept ? compareBoth(task) : missing(task);
  }

  // A function without a point where its value is wanted; likewise an output enable that never
  // enables a pin without anything to put out.
  bool saysNothing(const Task& task) {
    const Signal& signal = in(task.signal);
    const Meaning m = comparer_.wanted(task);
    if (m.on == falseLiteral && m.off == falseLiteral) return true;
    return task.slot == OutputEnable && m.off == trueLiteral &&
           !isGiven(out(task.signal), OutputEnable) &&
           (!isGiven(signal, Logic) || saysNothing({task.signal, Logic, Logic}));
  }

  Finding missing(const Task& task) {
    if (task.slot == OutputEnable && out(task.signal).shape() == DataShape::None &&
        comparer_.isNeverOn(task)) {
      return finding(task, Outcome::NotComparable,
                     "an output enable that is never on goes with the function that it enables");
    }
    std::optional<std::string> reason = excuses_.forMissing(task.signal, task.slot, task.outSlot);
    if (!reason && task.slot == Logic && comparer_.isNeverOn(task)) {
      reason = excuses_.forMissingZero(task.signal);
    }
    if (reason) {
      return finding(task, Outcome::NotComparable, *reason);
    }
    return finding(task, Outcome::Different, "OUTPUT has no such function");
  }

  Finding compareBoth(const Task& task) {
    if (!hasSameExtension(task)) {
      return finding(task, Outcome::Different, "the extension has changed");
    }
    const Answer answer = comparer_.ask(task);
    const bool lostHalf = task.slot == Logic && out(task.signal).shape() == DataShape::LoneHalf;
    if (answer.proof == Proof::Never && lostHalf) {
      return finding(task, Outcome::Different, "only one half of an XOR pair is left");
    }
    if (answer.proof == Proof::Never) return finding(task, Outcome::Equivalent, "");
    if (answer.proof == Proof::GaveUp) {
      return finding(task, Outcome::NotComparable, "the effort was not enough");
    }
    if (const auto reason = excuse(task, answer)) {
      return finding(task, Outcome::NotComparable, *reason);
    }
    return finding(task, Outcome::Different, comparer_.explain(task, answer));
  }

  // The word of a control function may only change to its twin, when it moved to the twin's slot.
  bool hasSameExtension(const Task& task) const {
    if (task.slot == Logic) return true;
    const Extension before = pairing_.in.function(in(task.signal), task.slot).extension;
    const Extension after = pairing_.out.function(out(task.signal), task.outSlot).extension;
    if (before == after || task.slot == task.outSlot) return before == after;
    if (twin(before) == after) return true;
    const Signal& signal = in(task.signal);  // with both there, each word stays in its slot
    return signal.has(task.outSlot) &&
           pairing_.in.function(signal, task.outSlot).extension == after;
  }

  std::optional<std::string> excuse(const Task& task, const Answer& answer) {
    if (answer.dependsOnChoice) return "INPUT leaves a node open that OUTPUT lacks";
    if (const auto i = unresolvedNode(answer.assignment)) {
      return in(*i).name + ", a node that only INPUT has, reads itself through a loop";
    }
    if (!comparer_.senses().settled) return "it was not found which nodes hold their complement";
    const std::vector<std::size_t> cuts = comparer_.scene().cuts(Recipe::SharedReplaced);
    if (!cuts.empty() && comparer_.holdsAtRest(task, Recipe::SharedReplaced, false)) {
      return "it differs only where the loop through " + in(cuts.front()).name + " is not at rest";
    }
    const auto turned = excuses_.forComplement(task.signal, task.slot, task.outSlot);
    if (turned && comparer_.holdsAtRest(task, Recipe::SharedReplaced, true)) return turned;
    const auto holds = [&](Recipe recipe) {
      return comparer_.holdsAtRest(task, recipe, false) ||
             (turned && comparer_.holdsAtRest(task, recipe, true));
    };
    if (const auto reason = excuses_.forUnreadNode(task.signal, task.slot)) {
      if (holds(Recipe::UnreadIgnored)) return reason;
    }
    for (std::size_t i = 0; i < pairing_.in.signals.size(); ++i) {
      if (!pairing_.twoValued[i]) continue;
      const auto reason = excuses_.forPinRead(task.signal, task.slot, i);
      if (reason && holds(Recipe::PinsInside)) return reason;
    }
    return std::nullopt;
  }

  // A node of INPUT alone that was not replaced: a loop had to be cut there.
  std::optional<std::size_t> unresolvedNode(const std::vector<Literal>& assignment) const {
    for (std::size_t i = 0; i < pairing_.in.signals.size(); ++i) {
      const bool replaceable =
          !pairing_.toOut[i] && isGiven(in(i), Logic) && !pairing_.registered[i];
      if (replaceable && mentions(assignment, i)) return i;
    }
    return std::nullopt;
  }

  bool mentions(const std::vector<Literal>& assignment, std::size_t pin) const {
    return std::ranges::any_of(assignment, [&](Literal l) {
      return l.node() == comparer_.scene().leaves().pin[pin].node();
    });
  }

  // Under -ff_inv the flip-flop stands in front of the inversion, so that a change of polarity
  // turns a reset of the pin into a set.
  bool exchangesSetReset(std::size_t i) const {
    const bool hasData = isGiven(in(i), Logic) && isGiven(out(i), Logic);
    if (!options_.ffBeforeInverter || !hasData) return false;
    const bool before = pairing_.in.isInverted(in(i));
    return before != (pairing_.out.isInverted(out(i)) != comparer_.isTurned(i));
  }

  void judgeSetReset(std::size_t i) {
    const bool exchange = exchangesSetReset(i);
    std::vector<Finding> told = compareSetReset(i, exchange);
    const bool failed =
        std::ranges::any_of(told, [](const Finding& f) { return f.outcome == Outcome::Different; });
    const std::optional<std::string> reason = excuses_.forSetReset(i, exchange);
    if (failed && reason) {
      std::vector<Finding> other = compareSetReset(i, !exchange);
      const bool holdsThere = std::ranges::none_of(
          other, [](const Finding& f) { return f.outcome == Outcome::Different; });
      if (holdsThere || isWordsOfOneSlot(i)) told = excused(std::move(told), *reason);
    }
    std::ranges::move(told, std::back_inserter(findings_));
  }

  // A reset whose word became the other of .ASYNC and .SYNC, both of which are resets.
  bool isWordsOfOneSlot(std::size_t i) {
    if (!in(i).has(Reset) || in(i).has(Set) || !out(i).has(Reset) || out(i).has(Set)) return false;
    const Extension before = pairing_.in.function(in(i), Reset).extension;
    const Extension after = pairing_.out.function(out(i), Reset).extension;
    if (twin(before) != after) return false;
    const Task task{i, Reset, Reset};
    const Answer answer = comparer_.ask(task);
    return answer.proof == Proof::Never || excuse(task, answer).has_value();
  }

  static std::vector<Finding> excused(std::vector<Finding> findings, const std::string& reason) {
    for (Finding& f : findings) {
      if (f.outcome == Outcome::Different) f = {Outcome::NotComparable, f.subject, reason};
    }
    return findings;
  }

  std::vector<Finding> compareSetReset(std::size_t i, bool exchanged) {
    std::vector<Finding> found;
    for (const Task& task :
         {Task{i, Reset, exchanged ? Set : Reset}, Task{i, Set, exchanged ? Reset : Set}}) {
      if (std::optional<Finding> f = compare(task)) found.push_back(std::move(*f));
    }
    return found;
  }

  // A mark that moved into the readers although nothing is left that it could belong to.
  void reportLostMarks() {
    for (std::size_t i = 0; i < pairing_.in.signals.size(); ++i) {
      if (!comparer_.isTurned(i) || out(i).shape() != DataShape::None) continue;
      add(Outcome::NotComparable, in(i).name,
          "its readers took over its inversion, but it has lost its function");
    }
  }

  const Pairing& pairing_;
  RunOptions options_;
  Excuses excuses_;
  Comparer comparer_;
  std::vector<bool> isRead_;  // by Signal of INPUT
  std::vector<Finding> findings_;
};

Verdict faulty(const Network& out) {
  Verdict verdict;
  for (const std::string& f : out.faults) {
    verdict.findings.push_back({Outcome::Different, "OUTPUT", f});
  }
  return verdict;
}

}  // namespace

std::size_t Verdict::count(Outcome outcome) const {
  return static_cast<std::size_t>(
      std::ranges::count_if(findings, [&](const Finding& f) { return f.outcome == outcome; }));
}

Verdict verify(const PlaFile& input, const PlaFile& output, const RunOptions& options, int effort) {
  const Network in = readNetwork(input);
  // OUTPUT may have lost its last pin: the run takes out what stands in no column.
  if (input.count(NameKind::Pin) == 0) return {{}, {"no pins are declared"}};
  if (!in.faults.empty()) return {{}, in.faults};
  const Network out = readNetwork(output);
  if (!out.faults.empty()) return faulty(out);
  const Pairing pairing = pairUp(in, out, effort);
  Verdict verdict{Judge(pairing, options, effort).run(), {}};
  if (output.termCapacity != output.termCount) {
    verdict.findings.insert(verdict.findings.begin(),
                            {Outcome::Different, "OUTPUT",
                             "it announces " + std::to_string(output.termCapacity) +
                                 " rows and has " + std::to_string(output.termCount)});
  }
  return verdict;
}

}  // namespace ostrel::verify
