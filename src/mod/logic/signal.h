// One named signal of the design: a device pin or a buried node, with its logic.
//
// A Signal owns up to eight Equations, one in each slot: the main function, the two operands of an
// exclusive-or pair that stands in its place, and five control functions. The passes over the
// design ask each Signal for a decision; what the decisions work on are the Equations.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "equation/equation.h"
#include "equation/equation_list.h"
#include "fil/pla_file.h"
#include "logic/row_merger.h"

namespace ostrel {

struct InputColumn;

enum Slot : unsigned char {
  SlotLogic,     ///< the combinatorial function, or the D, T or L input of the register
  SlotXorLeft,   ///< left operand of an exclusive-or pair; a single term until the very end
  SlotXorRight,  ///< right operand
  SlotClock,     ///< clock or latch enable
  SlotClockEnable,
  SlotReset,
  SlotSet,
  SlotOutputEnable,
};
inline constexpr std::size_t slotCount = 8;
inline constexpr std::array<Slot, slotCount> allSlots = {SlotLogic, SlotXorLeft,     SlotXorRight,
                                                         SlotClock, SlotClockEnable, SlotReset,
                                                         SlotSet,   SlotOutputEnable};
inline constexpr std::span<const Slot> controlSlots = std::span(allSlots).subspan(SlotClock);

class Signal {
 public:
  /// A Signal without logic, from its declaration; `terms` outlives it.
  Signal(TermTable& terms, const PlaName& declaration, bool node);

  /// A copy would leave the Equations with the name and owner of the original.
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;
  ~Signal() = default;

  const std::string name;
  const int pinNumber;        ///< 0 or less for none
  const bool isNode;          ///< a buried node, otherwise a pin
  RegisterType registerType;  ///< from the declaration, then by the output columns
  Polarity polarity;  ///< of the declared name; Positive also marks two inversions that cancel
  Polarity columnPolarity = Polarity::None;  ///< Inverted once a column was read with "-"
  std::vector<std::size_t> columns;  ///< the design's columns that read this Signal, ascending
  int pinColumn = -1;                ///< column that reads the pin, -1 for none
  int feedbackColumn = -1;           ///< column that reads the internal feedback, -1 for none
  int fanoutCount = 0;    ///< readers, counted once for each column, from the last refresh
  bool reduced = true;    ///< cleared when splitting builds or changes the logic
  bool xorTried = false;  ///< XOR synthesis has looked at the present logic

  // ---- slots ----

  /// Puts output column `column` of the file, named `columnName`, into the slot that its extension
  /// selects, and settles the register type. Failed if the column's register type conflicts with
  /// the present one, Fatal if it is not supported or the slot is filled; each with a message.
  Status addEquation(const PlaFile& file, int column, const PlaName& columnName, ColumnSets sets);

  Equation* slot(Slot index) const { return slots_[index].get(); }
  bool slotHasLogic(Slot index) const { return slot(index) != nullptr && !slot(index)->isEmpty(); }
  void deleteSlot(Slot index) { slots_[index].reset(); }
  bool hasXorPair() const { return slot(SlotXorLeft) != nullptr && slot(SlotXorRight) != nullptr; }

  /// Adds the columns that the logic reads to `target`, and unless `logicOnly` those that the
  /// control functions read. A full XOR pair hides SlotLogic.
  void collectColumns(ColumnSet& target, bool logicOnly);

  // ---- queries ----

  bool isCombinatorial() const {
    return registerType == RegisterType::None || registerType == RegisterType::COM;
  }

  /// True if no slot holds a term; an output enable that is constantly 0 counts as none.
  bool hasNoLogic() const;

  /// A pin with logic.
  bool isOutputPin() const { return !isNode && !hasNoLogic(); }

  /// Fatal, with a message, if there is a clock or an output enable and no function to control. An
  /// output enable that is constantly 0 is dropped in that case.
  Status checkLogic();

  /// The number of terms of the set that stands for SlotLogic: ON, or OFF if there is no ON term.
  int logicTermCount() const;

  /// How many of the polarities of declaration and columns invert: 0, 1 or 2.
  int inversionCount() const {
    return (polarity == Polarity::Inverted ? 1 : 0) +
           (columnPolarity == Polarity::Inverted ? 1 : 0);
  }

  /// The size of the function, by the smaller sets, for the decision to copy it into a reader.
  int bestTermCount() const;

  /// The column that SlotLogic repeats in the same sense, if that is all it does. `columns` is the
  /// design's column table.
  std::optional<std::size_t> singleLiteral(std::span<const InputColumn> table) const;

  // ---- decisions on the logic ----

  /// Replaces SlotLogic by an XOR pair if the pair has fewer terms. A function of fewer than three
  /// terms is left alone, and so is a Signal declared inverted. True if there is a pair afterwards,
  /// one that was there before included.
  bool synthesizeXor();

  /// Chooses the sets of an XOR pair and which operand stands on the left.
  void orderXorPair();

  /// Exchanges the contents of two slots; extension and XOR role stay with the slot. An Equation
  /// that moves to an empty slot takes the twin of its extension.
  void swapSlots(Slot a, Slot b);

  /// Minimises the logic. Logic that splitting has changed also chooses its set anew.
  void reduce();

  /// Makes every Equation keep one set, as the options say.
  void choosePolarity();

  void normalizePolarity();

  /// Takes over the logic of another Signal, of which this one was a plain copy.
  void copyLogicFrom(const Signal& other);

  /// Makes the terms the ON set of SlotLogic, which is not filled yet.
  void fillFromTerms(std::span<const Term> group);

  // ---- splitting ----

  /// Adds the logic Equations with more terms than the limit to the candidates; with `announce`,
  /// notes those that pass the maximum of the options. The limit is raised to what is worth
  /// sharing, and lowered by the gate's own term for a right XOR operand.
  void checkSplit(EquationList& candidates, int limit, bool announce);

  /// Adds the left XOR operand and the control Equations that are wider than one may be, with a
  /// note for each.
  void checkControlSplit(EquationList& candidates);

  // ---- columns ----

  /// Follows a deletion of columns: new terms by old index, new columns by old column (-1: gone).
  void followDeletion(const std::vector<Term>& renumbered, std::span<const int> newColumn);

  // ---- export ----

  /// The Signal's record in the list of pins or nodes.
  PlaName exportDeclaration() const;

  /// Fills in the names of the output columns from `column` on, which the file was prepared for,
  /// and moves it on behind them.
  void exportColumns(PlaFile& file, int& column) const;

  /// Writes the terms of the same columns, in the same order.
  void exportRows(RowMerger& rows, int& column) const;

  int outputColumnCount() const { return static_cast<int>(exportedEquations().size()); }

  /// The most rows that exportRows adds.
  std::size_t exportedTermCount() const;

 private:
  Equation& makeEquation(Slot index);
  SetSelector logicSelector() const;
  std::vector<const Equation*> exportedEquations() const;
  PlaName fillColumnName(const Equation& equation, bool percentAllowed) const;

  TermTable* terms_;
  std::array<std::unique_ptr<Equation>, slotCount> slots_;
};

}  // namespace ostrel
