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
  bool declaredInverted = false;  ///< the declared name ends in '-'
  bool columnInverted = false;    ///< a column of it ends in '-'
  bool inColumn = false;          ///< some input or output column names it
  RegisterType declaredType = RegisterType::None;
  RegisterType type = RegisterType::None;  ///< after all columns, in the order of the file
  std::array<int, slotCount> slots{none, none, none, none, none, none, none, none};

  int slot(Slot s) const { return slots[static_cast<std::size_t>(s)]; }
  bool has(Slot s) const { return slot(s) != none; }
  bool hasControl() const;
  /// A pair counts if both halves have a column, and then hides the plain function.
  DataShape shape() const;
  /// How many of the two kinds of marks of the name invert.
  int inversionCount() const { return (declaredInverted ? 1 : 0) + (columnInverted ? 1 : 0); }
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

  /// Everything that the rows leave unsaid is OFF. A file that changes its type between rows can
  /// hold rows with 0 in a column of type f: such a column is read as in fr.
  bool isListedOn(const Function& f) const {
    return (type == PlaType::f || type == PlaType::fd) && f.off.empty();
  }

  /// One term without literals on one side and nothing on the other. The value is after the mark.
  std::optional<bool> obviousConstant(const Function& f) const;

  /// The marks of the value's own columns add up to an inversion.
  bool isInverted(const Signal& signal) const;
};

Network readNetwork(const PlaFile& file);

/// The type that the visible columns give, whatever their order, on top of a declared one.
RegisterType visibleType(const Network& network, const Signal& signal, RegisterType declared);

bool isRegistered(RegisterType type);

}  // namespace ostrel::verify
