// One named signal of the design: a device pin or a buried node, with its logic.
//
// A Signal owns up to eight Equations, one in each slot: the main function, the two operands of an
// exclusive-or pair that stands in its place, and five control functions. What is decided about a
// Signal stands in the files of the decisions (polarity, collapse, xor_operands, split_limits,
// columns, export); here is what it holds.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "equation/equation.h"
#include "fil/pla_file.h"

namespace ostrel {

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

  // ---- as it was declared ----

  const std::string name;
  const int pinNumber;  ///< 0 or less for none
  const bool isNode;    ///< a buried node, otherwise a pin

  // ---- what the output columns make of the declaration ----

  RegisterType registerType;
  Polarity polarity;  ///< of the declared name; Positive also marks two inversions that cancel
  Polarity columnPolarity = Polarity::None;  ///< Inverted once a column was read with "-"

  // ---- the design's input columns that read it ----

  std::vector<std::size_t> columns;  ///< all of them, ascending
  int pinColumn = -1;                ///< the one that reads the pin, -1 for none
  int feedbackColumn = -1;           ///< the one that reads the internal feedback, -1 for none

  // ---- what was done to the present logic ----

  bool reduced = true;    ///< false for logic that splitting built or changed
  bool xorTried = false;  ///< XOR synthesis has looked at it
  bool factored = false;  ///< --factor has laid the logic out, so that it shares no terms
  void noteNewLogic() { reduced = xorTried = false; }
  bool initSwapped = false;     ///< set and reset have changed places, an odd number of times
  bool controlsFirst = false;   ///< the columns of the controls stand in front of the others
  bool setsChosen = false;      ///< each Equation has been told once which set it keeps
  bool enableMayGo = false;     ///< --lossless found that the pin may as well be on always
  bool keepsSense = false;      ///< --lossless found that set and reset can't follow an inversion
  bool startsInverted = false;  ///< the sense in which --lossless found the data

  // ---- slots ----

  Equation* slot(Slot index) const { return slots_[index].get(); }
  bool slotHasLogic(Slot index) const { return slot(index) != nullptr && !slot(index)->isEmpty(); }
  bool pairHasLogic() const { return slotHasLogic(SlotXorLeft) && slotHasLogic(SlotXorRight); }
  void deleteSlot(Slot index) { slots_[index].reset(); }

  /// Fills a slot with an Equation without terms, or with the given one.
  Equation& makeEquation(Slot index) { return setSlot(index, Equation(*terms_)); }
  Equation& setSlot(Slot index, Equation equation);

  /// Exchanges the contents of two slots; extension and XOR role stay with the slot. An Equation
  /// that moves to an empty slot takes the twin of its extension.
  void swapSlots(Slot a, Slot b);

  /// The operands of a full XOR pair, otherwise SlotLogic if it is filled.
  std::vector<Equation*> mainEquations() const;

  // ---- queries ----

  bool hasXorPair() const { return slot(SlotXorLeft) != nullptr && slot(SlotXorRight) != nullptr; }

  bool isCombinatorial() const {
    return registerType == RegisterType::None || registerType == RegisterType::COM;
  }

  /// True if no slot holds a term; an output enable that is constantly 0 counts as none.
  bool hasNoLogic() const;

  /// A pin with logic.
  bool isOutputPin() const { return !isNode && !hasNoLogic(); }

  /// How many of the polarities of declaration and columns invert: 0, 1 or 2.
  int inversionCount() const {
    return (polarity == Polarity::Inverted ? 1 : 0) +
           (columnPolarity == Polarity::Inverted ? 1 : 0);
  }

  // ---- columns ----

  /// Follows a deletion of columns: new terms by old index, new columns by old column (-1: gone).
  void followDeletion(const std::vector<Term>& renumbered, std::span<const int> newColumn);

 private:
  TermTable* terms_;
  std::array<std::unique_ptr<Equation>, slotCount> slots_;
};

/// One input column of the design.
struct InputColumn {
  Signal* signal = nullptr;  ///< what the column reads; not owned
  Extension extension = Extension::None;
};

}  // namespace ostrel
