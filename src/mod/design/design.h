// The whole design in memory, between the reading and the writing of a PLA file.
//
// A Design is built from a PlaFile, goes through its passes in one fixed order, and fills a second
// PlaFile at the end. The order of its Signals, columns and terms is visible in the output: the
// chain gives the order of the declarations, logicList that of the output columns and rows, and no
// pass sorts any of them.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "equation/equation_list.h"
#include "fil/pla_file.h"
#include "fil/status.h"
#include "fil/text.h"
#include "logic/input_column.h"
#include "logic/signal.h"
#include "logic/signal_list.h"
#include "logic/term_table.h"

namespace ostrel {

class Design {
 public:
  /// An empty design over a file that was read; the file outlives the design.
  explicit Design(const PlaFile& source);

  // ---- construction ----

  /// Fills the design from the file. Not Ok, with a message, at the first fault.
  Status build();

  /// Asks every Signal whether its control functions have a function to control; each one that
  /// hasn't earns a message. Fatal if there was one.
  Status checkLogic();

  // ---- clean-up and feedback ----

  /// Drops, with a warning, what is declared but stands in no column of the file.
  void removeUnusedSignals();

  /// Lays out the XOR pairs that the file gave.
  void orderXorPairs();

  /// Offers Signals to XOR synthesis: in pass 1 all, in pass 2 those whose logic is new since.
  void synthesizeXor(int pass);

  /// Counts anew who is read how often; with `logicOnly` control functions don't count as readers.
  void refreshFanout(bool logicOnly);

  /// Gives a Signal that only repeats an XOR node the logic of that node. True if one changed.
  bool collapseFeedback();

  /// Drops, with a warning, the combinatorial nodes that nothing read at the last refresh.
  void removeDeadNodes();

  // ---- splitting ----

  /// Gives each left XOR operand and control Equation with too many terms a node of its own.
  void splitControlEquations();

  /// Brings the logic Equations down to the terms that the options allow.
  void splitEquations();

  // ---- polarity and final form ----

  /// Makes every Equation keep one set. From here on the design is of type f.
  void choosePolarity();
  void normalizePolarity();

  /// Moves the one-term operand of each XOR pair, which stood on the left, to the right.
  void swapXorPairs();

  /// Settles with which extension a driven pin is read back.
  void assignFeedbackExtensions();

  /// Moves inversions of nodes and internal feedbacks into their readers, where the flip-flop
  /// stands before the inverter.
  void absorbInversions();

  /// Fills targetPla.
  void exportTo();

  PlaFile targetPla;

  // ---- lookups and nodes, which the splitting uses ----

  const SignalList& logicList() const { return logicList_; }  ///< Signals with logic
  std::span<const InputColumn> columns() const { return columns_; }
  TermTable& terms() { return terms_; }

  /// The Signal of a name, case ignored, or null.
  Signal* findSignal(std::string_view name) const;

  /// The first combinatorial Signal of logicList whose SlotLogic has the function, or null.
  Signal* findEquivalent(const Equation& equation) const {
    return logicList_.findEquivalent(equation);
  }

  /// The column through which a Signal is read: its first one, or a new one if it has none.
  std::size_t columnFor(Signal& signal);

  /// A new column at the end of the table that reads the Signal; no term reads it yet.
  std::size_t addInputColumn(Signal& signal);

  /// A new node with the terms as its ON set and a column at the end of the table. It is named
  /// after `baseName` and stands behind all older Signals. The terms are not empty.
  Signal& createNodeFrom(std::span<const Term> group, std::string_view baseName);

 private:
  Signal* declareSignal(const PlaName& record, bool isNode);
  Status readFunctions();
  Status readInputColumns();
  bool acceptInputExtension(Signal& signal, int column, Extension extension);
  void classifySignals();
  void removeSignals(std::span<Signal* const> gone);
  void deleteColumns(const ColumnSet& gone);

  Signal& createBuriedNode(std::string_view baseName);
  std::string makeNodeName(std::string_view baseName);
  void applyControlNodes(const EquationList& candidates);
  std::size_t controlColumn(Signal& node);
  int shareTerms();
  int cutWideEquations();
  bool splitWide(const EquationList& candidates);

  const PlaFile& sourcePla_;
  PlaType plaType_;
  TermTable terms_;
  std::vector<std::unique_ptr<Signal>> signals_;  // the chain, in the order of creation
  std::unordered_map<std::string_view, Signal*, NoCaseHash, NoCaseEqual> names_;
  SignalList logicList_;
  bool logicListIsCurrent_ = false;  // nothing has emptied an Equation since it was made
  std::vector<InputColumn> columns_;
  std::unordered_map<std::string, int, NoCaseHash, NoCaseEqual> nextNodeNumber_;  // by base name
};

}  // namespace ostrel
