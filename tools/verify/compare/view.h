// One file seen as functions of free variables.
//
// Each Signal has two values: its own, and what stands on its pin; they differ only where a pin can
// be turned off or where the caller says so. A view starts with given values for all Signals, and
// then some of the combinational ones are replaced, one by one, by what their columns say.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "verify/model/network.h"
#include "verify/proof/graph.h"

namespace ostrel::verify {

/// Where a function must be 1 and where it must be 0; what is neither is open.
struct Meaning {
  Literal on = falseLiteral;
  Literal off = trueLiteral;

  bool isComplete() const { return off == !on; }
};

/// By Signal of the file.
struct Values {
  std::vector<Literal> own;
  std::vector<Literal> pin;
};

class View {
 public:
  /// By column: whether it reads the complement of its Signal's value.
  View(Graph& graph, const Network& network, Values values, std::vector<bool> readsInverted)
      : graph_(&graph),
        network_(&network),
        values_(std::move(values)),
        readsInverted_(std::move(readsInverted)),
        rows_(network.rows.size()) {}

  const Values& values() const { return values_; }
  Literal column(std::size_t column) const;

  /// A function after its mark, where no row says 1 and 0 at once; that is open too.
  Meaning meaning(const Function& function);

  /// A control function of a Signal, or for Slot::Logic its value: the plain column or the
  /// exclusive OR of the pair. A lone half counts as the value. It must be given.
  Meaning meaning(const Signal& signal, Slot slot);

  /// Replaces the own value of a Signal with data, and its pin value if asked. `open` stands where
  /// the data says nothing. What the data reads must have its final value by now.
  void substitute(std::size_t signal, Literal open, bool pinToo);

 private:
  Literal row(std::uint32_t row);
  Literal anyOf(const std::vector<std::uint32_t>& rows);

  Graph* graph_;
  const Network* network_;
  Values values_;
  std::vector<bool> readsInverted_;
  std::vector<std::optional<Literal>> rows_;
};

/// The meaning as one literal, with another one standing where it is open.
Literal settle(Graph& graph, const Meaning& meaning, Literal open);

/// True where a value breaks the meaning.
Literal conflict(Graph& graph, const Meaning& wanted, Literal value);

}  // namespace ostrel::verify
