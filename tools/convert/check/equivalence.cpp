// One miter for each function: both netlists as graphs over the same variables.
//
// Idea. Inputs, pins that can be off and registers are variables, by name; what a function drives
// is replaced by the function, each in front of its readers. Every net has two literals, where it
// is 1 and where it is 0; neither is a don't-care. Functions that both sides name are variables
// too, and compared, where there is a loop, which leaves no order, and where they are open.
//
// Example. The source has c = a b, q.D = c ^ d, and in the file c was folded. Both give q.D as a
// function of a, b and d; the question is whether they can differ.
//
// Cost. One question to the solver for each function that is not the same literal anyway.
#include "convert/check/equivalence.h"

#include <map>
#include <unordered_map>
#include <unordered_set>

#include "verify/proof/prover.h"

namespace ostrel::convert {

namespace {

using verify::Graph;
using verify::Literal;

struct Rails {
  Literal on = verify::falseLiteral;
  Literal off = verify::trueLiteral;

  Rails operator!() const { return {off, on}; }
};

using Variables = std::map<std::string, Literal>;
using Names = std::unordered_set<std::string>;

class Side {
 public:
  Side(Graph& graph, const Netlist& netlist, Variables& variables, const Names& cuts)
      : graph_(graph), netlist_(netlist), values_(netlist.nets.size()) {
    isFree_.assign(netlist.nets.size(), false);
    for (std::size_t i = 0; i < netlist.nets.size(); ++i) {
      const NetRecord& record = netlist.nets[i];
      byName_.emplace(record.name, static_cast<Net>(i));
      if (std::holds_alternative<Function>(record.driver) && !cuts.contains(record.name)) continue;
      auto [place, isNew] = variables.try_emplace(record.name);
      if (isNew) place->second = graph.variable();
      values_[i] = {place->second, !place->second};
      isFree_[i] = true;
    }
    for (const Net net : combinationalOrder(netlist, isFree_, loop_)) {
      values_[net] = value(std::get<Function>(netlist.nets[net].driver));
    }
  }

  /// A net of a loop that the cuts leave.
  const NetRecord* loop() const { return loop_ ? &netlist_.nets[*loop_] : nullptr; }

  const NetRecord* find(const std::string& name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : &netlist_.nets[found->second];
  }

  Rails value(const Function& function) {
    Rails result;
    for (const Sum& sum : function.operands) result = exclusiveOr(result, value(function, sum));
    return result;
  }

  /// A control that is not there is off.
  Rails control(const std::optional<Function>& function) {
    return function ? value(*function) : Rails{};
  }
  /// What a clock gives a flip-flop: its data, or with the enable off its own value.
  Rails next(const NetRecord& record, const Register& reg) {
    const Rails own = values_[byName_.at(record.name)];
    const Rails given = value(reg.data);
    const Rails data = reg.toggles ? exclusiveOr(given, own) : given;
    if (!reg.enable) return data;
    const Rails enable = value(*reg.enable);
    return either(both(enable, data), both(!enable, own));
  }

  /// Where the set acts: reset wins.
  Rails wins(const std::optional<Function>& set, const std::optional<Function>& reset) {
    return both(control(set), !control(reset));
  }

  /// Where a latch, or a register of set and reset, is being given the value.
  Rails turnsTo(bool value, const Register& reg) {
    const Rails reset = control(reg.reset);
    const Rails set = control(reg.set);
    const Rails data = reg.kind == RegisterKind::Latch ? Side::value(reg.data) : Rails{};
    const Rails open = both(control(reg.clock), value ? data : !data);
    const Rails one = both(!reset, either(set, open));
    return value ? one : either(reset, both(!set, open));
  }

 private:
  Rails both(Rails a, Rails b) { return {graph_.both(a.on, b.on), graph_.either(a.off, b.off)}; }
  Rails either(Rails a, Rails b) { return !both(!a, !b); }

  Rails exclusiveOr(Rails a, Rails b) {
    const Literal on = graph_.either(graph_.both(a.on, b.off), graph_.both(a.off, b.on));
    const bool isComplete = a.off == !a.on && b.off == !b.on;
    return {on,
            isComplete ? !on : graph_.either(graph_.both(a.on, b.on), graph_.both(a.off, b.off))};
  }

  Rails value(const Function& function, const CubeList& cubes) {
    std::vector<Literal> ones;
    std::vector<Literal> zeros;
    for (const Cube& cube : cubes) {
      std::vector<Literal> all;
      std::vector<Literal> any;
      cube.forEachLiteral([&](std::size_t column, char sense) {
        const Rails v = values_[function.inputs[column]];
        all.push_back(sense == '1' ? v.on : v.off);
        any.push_back(sense == '1' ? v.off : v.on);
      });
      ones.push_back(graph_.conjunction(std::move(all)));
      zeros.push_back(graph_.disjunction(std::move(any)));
    }
    return {graph_.disjunction(std::move(ones)), graph_.conjunction(std::move(zeros))};
  }

  Rails value(const Function& function, const Sum& sum) {
    const Rails on = value(function, sum.on);
    Rails result = on;
    if (!sum.isComplete()) {
      const Rails second = value(function, sum.second);
      const bool isZero = sum.secondIs == Second::Zero;
      if (isZero) result.on = graph_.both(on.on, second.off);
      result.off = graph_.both(on.off, isZero ? second.on : second.off);
    }
    return sum.inverted ? !result : result;
  }

  Graph& graph_;
  const Netlist& netlist_;
  std::vector<Rails> values_;  // by net
  std::unordered_map<std::string, Net> byName_;
  std::vector<bool> isFree_;  // by net
  std::optional<Net> loop_;
};

bool hasLoop(const Netlist& netlist) {
  std::optional<Net> loop;
  combinationalOrder(netlist, std::vector<bool>(netlist.nets.size(), false), loop);
  return loop.has_value();
}

// Functions of both sides at which both are cut: all of them where there is a loop, and otherwise
// those that leave something open, so that what reads one agrees for each value that it can have.
Names cutsOf(const Netlist& source, const Netlist& written) {
  Names names;
  Names result;
  const bool cutsAll = hasLoop(source) || hasLoop(written);
  for (const NetRecord& record : written.nets) {
    if (std::holds_alternative<Function>(record.driver)) names.insert(record.name);
  }
  for (const NetRecord& record : source.nets) {
    const auto* function = std::get_if<Function>(&record.driver);
    if (function == nullptr || !names.contains(record.name)) continue;
    if (cutsAll || !function->isComplete()) result.insert(record.name);
  }
  return result;
}

class Checker {
 public:
  Checker(const Netlist& source, const Netlist& written, std::int64_t effort, Report& report)
      : source_(source),
        written_(written),
        cuts_(cutsOf(source, written)),
        left_(graph_, source, variables_, cuts_),
        right_(graph_, written, variables_, cuts_),
        work_{effort, verify::QuestionFiles("")},
        report_(report) {}

  void run() {
    for (const Side* side : {&left_, &right_}) {
      if (side->loop() == nullptr) continue;
      report_.problems.push_back(side->loop()->name +
                                 ": a loop that can't be proven; --no-check leaves the proof out");
      return;
    }
    comparePorts();
    std::vector<bool> isPort(source_.nets.size(), false);
    for (const Port& port : source_.ports) {
      for (const Net net : port.bits) isPort[net] = true;
    }
    for (std::size_t i = 0; i < source_.nets.size(); ++i) {
      const NetRecord& record = source_.nets[i];
      const NetRecord* other = right_.find(record.name);
      const bool isNode = !isPort[i] && std::holds_alternative<Function>(record.driver);
      const bool isNothing = std::holds_alternative<Undriven>(record.driver);
      if (isNothing || (isNode && !cuts_.contains(record.name))) continue;
      if (other == nullptr || record.driver.index() != other->driver.index()) {
        report_.problems.push_back(record.name + ": the file lost it");
      } else {
        compare(record, *other);
      }
    }
  }

 private:
  void comparePorts() {
    std::unordered_map<std::string_view, Direction> directions;
    for (const Port& port : written_.ports) {
      for (const Net net : port.bits) directions.emplace(written_.nets[net].name, port.direction);
    }
    for (const Port& port : source_.ports) {
      for (const Net net : port.bits) {
        const auto found = directions.find(source_.nets[net].name);
        if (found != directions.end() && found->second == port.direction) continue;
        report_.problems.push_back(source_.nets[net].name + ": the file lost this port");
      }
    }
  }

  void compare(const NetRecord& a, const NetRecord& b) {
    if (const auto* function = std::get_if<Function>(&a.driver)) {
      ask(a, "logic", left_.value(*function), right_.value(std::get<Function>(b.driver)));
    } else if (const auto* buffer = std::get_if<Buffer>(&a.driver)) {
      const auto& other = std::get<Buffer>(b.driver);
      Rails data = left_.value(buffer->data);
      const Rails enable = left_.value(buffer->enable);
      data = {graph_.both(data.on, enable.on), graph_.both(data.off, enable.on)};
      ask(a, "logic", data, right_.value(other.data));
      ask(a, "output enable", enable, right_.value(other.enable));
    } else if (std::holds_alternative<Register>(a.driver)) {
      compareRegisters(a, b);
    }
  }

  void compareRegisters(const NetRecord& a, const NetRecord& b) {
    const auto& x = std::get<Register>(a.driver);
    const auto& y = std::get<Register>(b.driver);
    const bool isFlop = x.kind == RegisterKind::Flop;
    if (isFlop != (y.kind == RegisterKind::Flop)) {
      report_.problems.push_back(a.name + ": the file changed its kind");
    } else if (isFlop) {
      compareFlops(a, x, b, y);
    } else {
      for (const bool value : {false, true}) {
        ask(a, value ? "way to 1" : "way to 0", left_.turnsTo(value, x), right_.turnsTo(value, y));
      }
    }
  }

  void compareFlops(const NetRecord& a, const Register& x, const NetRecord& b, const Register& y) {
    ask(a, "next value", left_.next(a, x), right_.next(b, y));
    ask(a, "clock", left_.control(x.clock), right_.control(y.clock));
    ask(a, "reset", left_.control(x.reset), right_.control(y.reset));
    ask(a, "set", left_.wins(x.set, x.reset), right_.wins(y.set, y.reset));
  }

  void ask(const NetRecord& record, std::string_view role, Rails wanted, Rails found) {
    const Literal conflict =
        graph_.either(graph_.both(wanted.on, !found.on), graph_.both(wanted.off, !found.off));
    std::vector<Literal> assignment;
    const verify::Proof proof = prover_.find(conflict, assignment);
    if (proof == verify::Proof::Never) return;
    std::string line = record.name + ": its " + std::string(role);
    line += proof == verify::Proof::Found
                ? " in the file differs from the source" + describe(assignment)
                : " can't be proven within the effort; --no-check leaves the proof out";
    report_.problems.push_back(std::move(line));
  }

  std::string describe(const std::vector<Literal>& assignment) const {
    std::string text;
    for (const auto& [name, variable] : variables_) {
      for (const Literal literal : assignment) {
        if (literal.node() != variable.node()) continue;
        text += " " + name + (literal == variable ? "=1" : "=0");
      }
    }
    return text.empty() ? text : ", with" + text;
  }

  const Netlist& source_;
  const Netlist& written_;
  Graph graph_;
  Variables variables_;
  Names cuts_;
  Side left_;
  Side right_;
  verify::Simulation simulation_{graph_};
  verify::SolverWork work_;
  verify::Prover prover_{graph_, simulation_, work_};
  Report& report_;
};

}  // namespace

void checkEquivalence(const Netlist& source, const Netlist& written, std::int64_t effort,
                      Report& report) {
  Checker(source, written, effort, report).run();
}

}  // namespace ostrel::convert
