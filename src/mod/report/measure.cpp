// Idea. The columns of the written functions are walked in the order in which a file has them, and
// their terms get the numbers of its rows. The depths follow in topological order (Kahn): a
// function is due when all that it reads are done, and what is never due stands behind a loop.
//
// Example. Y = a·N with N = b + c is of depth 2, and so is Y = a·Q with Q = Y', unless Q is a
// register, where it is of depth 1.
//
// Cost. One look at each literal of each function.
//
// Order. Rows are numbered as an export of the design at this moment would write them.
#include "report/measure.h"

#include <algorithm>
#include <utility>

#include "logic/export.h"

namespace ostrel {
namespace {

using Numbers = std::unordered_map<const Signal*, std::size_t>;

class Walk {
 public:
  Walk(const Design& design, Measure& result)
      : design_(design), result_(result), rowOf_(design.terms().size()) {}

  void run() {
    for (const auto& signal : design_.signals()) {
      numbers_.emplace(signal.get(), result_.signals.size());
      result_.signals.push_back({signal->name, signal->isNode, {}});
      isDriven_.push_back(!exportedEquations(*signal).empty());
    }
    for (const InputColumn& column : design_.columns()) {
      result_.inputs.push_back(inputName(column).format(NameFormat::WithoutPin));
    }
    for (const Signal* signal : design_.logic()) numberRows(*signal);
    for (const auto& signal : design_.signals()) measureFunctions(*signal);
    findDepths();
  }

 private:
  void numberRows(const Signal& signal) {
    for (const Equation* equation : exportedEquations(signal)) {
      for (const TermChain* set : {&equation->onSet(), &equation->offSet()}) {
        for (const Term term : *set) {
          std::size_t& row = rowOf_[term.index];
          if (row == 0) row = addRow(design_.terms().cube(term));
        }
      }
    }
  }

  std::size_t addRow(const Cube& cube) {
    std::vector<long>& row = result_.rows.emplace_back();
    cube.forEachLiteral([&](std::size_t column, char literal) {
      const auto number = static_cast<long>(column) + 1;
      row.push_back(literal == '1' ? number : -number);
    });
    return result_.rows.size();
  }

  void measureFunctions(const Signal& signal) {
    MeasuredSignal& measured = result_.signals[numbers_.at(&signal)];
    for (std::size_t i = 0; i < roleCount; ++i) {
      const Role role = static_cast<Role>(i);
      const FunctionState state = stateOf(signal, role);
      if (!state.isWritten) continue;
      measured.functions[i] = measureFunction(signal, role);
      measured.functions[i]->state = state;
    }
  }

  MeasuredFunction measureFunction(const Signal& signal, Role role) {
    MeasuredFunction function;
    ColumnSet support;
    for (const Equation* equation : equationsOf(signal, role)) {
      const PlaName name = outputName(signal, *equation);
      MeasuredColumn column{name.format(NameFormat::WithoutPin) + (name.percent ? "%" : ""), {}};
      const bool hasOn = equation->onCount() > 0;
      for (const Term term : hasOn ? equation->onSet() : equation->offSet()) {
        const Cube& cube = design_.terms().cube(term);
        function.literals += cube.literalCount();
        cube.addSupportTo(support);
        column.rows.push_back(rowOf_[term.index]);
      }
      if (!hasOn && equation->isConstant(Constant::Either)) column.rows.clear();
      function.columns.push_back(std::move(column));
    }
    function.support = support.size();
    readColumns(support, signal, role, function);
    return function;
  }

  /// Names the Signals that the columns read, and remembers the ways that the depths go.
  void readColumns(const ColumnSet& support, const Signal& reader, Role role,
                   MeasuredFunction& function) {
    const std::size_t here = numbers_.at(&reader) * roleCount + static_cast<std::size_t>(role);
    ColumnSet seen;
    support.forEach([&](std::size_t column) {
      const Signal& read = *design_.columns()[column].signal;
      const std::size_t number = numbers_.at(&read);
      if (!isDriven_[number] || seen.contains(number)) return;
      seen.insert(number);
      function.reads.push_back(read.name);
      const bool passes = read.isCombinatorial() && stateOf(read, Role::Main).isWritten;
      if (passes) edges_.emplace_back(number * roleCount, here);
    });
  }

  void findDepths() {
    std::sort(edges_.begin(), edges_.end());
    std::vector<std::size_t> open(result_.signals.size() * roleCount);
    std::vector<std::size_t> longest(open.size());
    for (const auto& [from, to] : edges_) ++open[to];
    std::vector<std::size_t> due;
    for (std::size_t i = 0; i < open.size(); ++i) {
      if (open[i] == 0) due.push_back(i);
    }
    for (std::size_t next = 0; next < due.size(); ++next) {
      const std::size_t at = due[next];
      auto& function = result_.signals[at / roleCount].functions[at % roleCount];
      if (!function) continue;
      function->depth = longest[at] + (function->support == 0 ? 0 : 1);
      auto edge = std::lower_bound(edges_.begin(), edges_.end(), std::pair(at, std::size_t{0}));
      for (; edge != edges_.end() && edge->first == at; ++edge) {
        longest[edge->second] = std::max(longest[edge->second], *function->depth);
        if (--open[edge->second] == 0) due.push_back(edge->second);
      }
    }
  }

  const Design& design_;
  Measure& result_;
  std::vector<std::size_t> rowOf_;  // by term; 0 for none yet
  Numbers numbers_;
  std::vector<bool> isDriven_;                              // the Signal has functions
  std::vector<std::pair<std::size_t, std::size_t>> edges_;  // function to function
};

}  // namespace

Measure measure(const Design& design) {
  Measure result;
  Walk(design, result).run();
  return result;
}

MeasureIndex::MeasureIndex(const Measure& measure) {
  for (const MeasuredSignal& signal : measure.signals) signals_.emplace(signal.name, &signal);
}

const MeasuredFunction* MeasureIndex::find(std::string_view signal, std::size_t role) const {
  const auto place = signals_.find(signal);
  if (place == signals_.end() || !place->second->functions[role]) return nullptr;
  return &*place->second->functions[role];
}

Totals totalsOf(const Measure& measure) {
  Totals totals;
  totals.rows = measure.rows.size();
  for (const MeasuredSignal& signal : measure.signals) {
    ++(signal.isNode ? totals.nodes : totals.pins);
    for (const std::optional<MeasuredFunction>& function : signal.functions) {
      if (!function) continue;
      const auto terms = static_cast<std::size_t>(function->state.terms());
      ++totals.functions;
      totals.pairs += function->state.isPair ? 1U : 0U;
      totals.terms += terms;
      totals.literals += function->literals;
      totals.widest = std::max(totals.widest, terms);
      totals.depth = std::max(totals.depth, function->depth.value_or(0));
    }
  }
  return totals;
}

}  // namespace ostrel
