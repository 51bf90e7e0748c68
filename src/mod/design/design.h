// The model: the whole design in memory, between the reading and the writing of a PLA file.
//
// A Design is its Signals, its input columns, its terms and its names, and the few operations that
// keep the four in step. The passes over it are free functions (passes.h), and their order is the
// pipeline's (run/pipeline).
//
// The order of Signals, columns and terms is visible in the output: the chain gives the order of
// the declarations, logic() that of the output columns and rows, and nothing sorts any of them.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "fil/pla_file.h"
#include "fil/text.h"
#include "logic/signal.h"
#include "minimizer/term_table.h"

namespace ostrel {

class Design {
 public:
  /// An empty design over a file that was read; the file outlives the design.
  explicit Design(const PlaFile& source) : type(source.type), source_(source) {}

  const PlaFile& source() const { return source_; }
  PlaType type;  ///< what the sets of the Equations say; f from the choice of polarity on

  // ---- Signals ----

  /// All of them, in the order of creation.
  std::span<const std::unique_ptr<Signal>> signals() const { return signals_; }

  /// Those with logic, in the order of creation. A Signal whose logic was emptied since stays in
  /// the list until a Signal is created or removed.
  std::span<Signal* const> logic() const { return logic_; }

  /// The Signal of a name, case ignored, or null.
  Signal* find(std::string_view name) const;

  /// Which column a reader of a Signal would take, or -1 for a new one.
  using ColumnChoice = int (*)(const Signal&);

  /// The first combinatorial Signal of logic() whose SlotLogic has the function, or null; with
  /// --lossless none whose value needn't stand in the column that is read.
  Signal* findEquivalent(const Equation& equation, ColumnChoice columnOf) const;

  /// A new Signal at the end, without logic; null if its name is taken.
  Signal* declare(const PlaName& record, bool isNode);

  /// A new node with the terms as its ON set and a column at the end of the table. It is named
  /// after `baseName` and stands behind all older Signals. The terms are not empty.
  Signal& createNodeFrom(std::span<const Term> group, std::string_view baseName);

  /// Takes the Signals and their columns out, all in one sweep.
  void remove(std::span<Signal* const> gone);

  /// Makes logic() anew.
  void listLogic();

  /// To be called where an Equation may have lost its last term: logic() is then made anew when the
  /// next Signal is created.
  void noteEmptiedLogic() { logicIsCurrent_ = false; }

  // ---- columns and terms ----

  std::span<InputColumn> columns() { return columns_; }
  std::span<const InputColumn> columns() const { return columns_; }

  /// A new column at the end of the table that reads the Signal; no term reads it yet.
  std::size_t addColumn(Signal& signal, Extension extension);

  /// A new column that reads what the Signal drives: the value of a function, a register's output.
  std::size_t addReadingColumn(Signal& signal);

  TermTable& terms() { return terms_; }
  const TermTable& terms() const { return terms_; }

 private:
  void deleteColumns(const ColumnSet& gone);
  std::string makeNodeName(std::string_view baseName);

  const PlaFile& source_;
  TermTable terms_;
  std::vector<std::unique_ptr<Signal>> signals_;
  std::unordered_map<std::string_view, Signal*, NoCaseHash, NoCaseEqual> names_;
  std::vector<Signal*> logic_;
  bool logicIsCurrent_ = false;  // nothing has emptied an Equation since the list was made
  std::vector<InputColumn> columns_;
  std::unordered_map<std::string, int, NoCaseHash, NoCaseEqual> nextNodeNumber_;  // by base name
};

}  // namespace ostrel
