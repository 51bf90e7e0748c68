// What a PLA file says: Signals, the functions that its output columns give them, and its rows.
//
// This is the verifier's own reading of the format, shared with the optimizer in nothing but the
// file reader and its tables of words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "fil/pla_file.h"
#include "fil/text.h"

namespace ostrel::verify {

/// What a function does for its Signal.
enum class Slot : std::uint8_t {
  Logic,
  XorLeft,
  XorRight,
  Clock,
  ClockEnable,
  Reset,
  Set,
  OutputEnable
};
inline constexpr std::size_t slotCount = 8;

/// One output column. The numbers are rows of the file, in order.
struct Function {
  Extension extension = Extension::None;
  bool inverted = false;
  std::vector<std::uint32_t> on;    ///< rows with 1
  std::vector<std::uint32_t> off;   ///< rows with 0
  std::vector<std::uint32_t> open;  ///< rows with '-'
};

/// How the value of a Signal is given.
enum class DataShape { None, Logic, Pair, LoneHalf };

struct Signal {
  static constexpr int none = -1;

  std::string name;
  bool isNode = false;
  int pin = 0;                             ///< 0 for none
  bool declaredInverted = false;           ///< the declared name ends in '-'
  bool inColumn = false;                   ///< some input or output column names it
  RegisterType type = RegisterType::None;  ///< the declared one, then each column in its order
  std::array<int, slotCount> slots{none, none, none, none, none, none, none, none};

  int slot(Slot s) const { return slots[static_cast<std::size_t>(s)]; }
  bool has(Slot s) const { return slot(s) != none; }
  bool hasControl() const;
  /// A pair counts if both halves have a column, and then hides the plain function.
  DataShape shape() const;
  /// The columns that give the value, which is their exclusive OR: none, one or the two halves.
  std::vector<Slot> valueSlots() const;
  /// Whether it has the function; Slot::Logic stands for the value.
  bool gives(Slot s) const { return s == Slot::Logic ? shape() != DataShape::None : has(s); }
};

/// One input column.
struct Column {
  std::size_t signal = 0;
  Extension extension = Extension::None;
  std::string text;  ///< the name with its extension

  /// It reads the Signal itself and not what stands on its pin.
  bool readsInside() const { return extension != Extension::None && extension != Extension::PIN; }
};

struct RowLiteral {
  std::uint32_t column;
  bool positive;

  friend bool operator==(const RowLiteral&, const RowLiteral&) = default;
};

struct Network {
  PlaType type = PlaType::f;
  std::vector<Signal> signals;
  std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> byName;
  std::vector<Function> functions;
  std::vector<Column> columns;
  std::vector<std::vector<RowLiteral>> rows;
  std::vector<std::string> faults;  ///< what makes the file unusable as a design

  std::optional<std::size_t> find(const std::string& name) const;

  /// The function in a slot, which is filled.
  const Function& function(const Signal& signal, Slot slot) const {
    return functions[static_cast<std::size_t>(signal.slot(slot))];
  }

  /// Whether rows say something of the function in a slot.
  bool hasRows(const Signal& signal, Slot slot) const {
    return signal.has(slot) &&
           !(function(signal, slot).on.empty() && function(signal, slot).off.empty());
  }

  /// Everything that the rows leave unsaid is OFF. A file that changes its type between rows can
  /// hold rows with 0 in a column of type f: such a column is read as in fr.
  bool isListedOn(const Function& f) const {
    return (type == PlaType::f || type == PlaType::fd) && f.off.empty();
  }

  /// The marks of the value's own columns add up to an inversion.
  bool isInverted(const Signal& signal) const;
};

Network readNetwork(const PlaFile& file);

/// The input columns that a function reads, or the value for Slot::Logic; in order.
std::vector<std::size_t> columnsOf(const Network& network, const Signal& signal, Slot slot);

bool isRegistered(RegisterType type);

}  // namespace ostrel::verify
