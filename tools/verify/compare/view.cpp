#include "verify/compare/view.h"

#include <utility>

namespace ostrel::verify {

namespace {

Meaning exclusiveOr(Graph& graph, const Meaning& a, const Meaning& b) {
  if (a.isComplete() && b.isComplete()) {
    const Literal value = graph.exclusiveOr(a.on, b.on);
    return {value, !value};
  }
  return {graph.either(graph.both(a.on, b.off), graph.both(a.off, b.on)),
          graph.either(graph.both(a.on, b.on), graph.both(a.off, b.off))};
}

}  // namespace

Literal View::column(std::size_t c) const {
  const Column& column = network_->columns[c];
  const std::vector<Literal>& values = column.readsInside() ? values_.own : values_.pin;
  return values[column.signal] ^ readsInverted_[c];
}

Literal View::row(std::uint32_t row) {
  std::optional<Literal>& known = rows_[row];
  if (!known) {
    std::vector<Literal> literals;
    for (const RowLiteral l : network_->rows[row]) {
      literals.push_back(column(l.column) ^ !l.positive);
    }
    known = graph_->conjunction(std::move(literals));
  }
  return *known;
}

Literal View::anyOf(const std::vector<std::uint32_t>& rows) {
  std::vector<Literal> terms;
  for (const std::uint32_t r : rows) terms.push_back(row(r));
  return graph_->disjunction(std::move(terms));
}

Meaning View::meaning(const Function& function) {
  const Literal ones = anyOf(function.on);
  Meaning result;
  if (network_->isListedOn(function)) {
    result = {ones, graph_->both(!ones, !anyOf(function.open))};
  } else {
    const Literal zeros = anyOf(function.off);
    result = {graph_->both(ones, !zeros), graph_->both(zeros, !ones)};
  }
  if (function.inverted) std::swap(result.on, result.off);
  return result;
}

Meaning View::meaning(const Signal& signal, Slot slot) {
  if (slot != Slot::Logic) return meaning(network_->function(signal, slot));
  Meaning value{falseLiteral, trueLiteral};
  for (const Slot s : signal.valueSlots()) {
    value = exclusiveOr(*graph_, value, meaning(network_->function(signal, s)));
  }
  return value;
}

void View::substitute(std::size_t signal, Literal open, bool pinToo) {
  const Literal value = settle(*graph_, meaning(network_->signals[signal], Slot::Logic), open);
  values_.own[signal] = value;
  if (pinToo) values_.pin[signal] = value;
}

Literal settle(Graph& graph, const Meaning& meaning, Literal open) {
  if (meaning.isComplete()) return meaning.on;
  return graph.either(meaning.on, graph.both(!meaning.off, open));
}

Literal conflict(Graph& graph, const Meaning& wanted, Literal value) {
  if (wanted.isComplete()) return graph.exclusiveOr(wanted.on, value);
  return graph.either(graph.both(wanted.on, !value), graph.both(wanted.off, value));
}

}  // namespace ostrel::verify
