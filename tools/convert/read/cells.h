// The cells of a mapped netlist: simple gates, tables, registers, latches, tri-state buffers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/model/netlist.h"

namespace ostrel::convert {

/// What a pin of a cell is connected to: a net, or a constant '0', '1' or 'x'.
struct Bit {
  std::optional<Net> net;
  char constant = 'x';
};

/// A function that is a bit or its complement; open everywhere for 'x'.
Function bitFunction(Bit bit, bool positive = true);

/// A function by its values, '0', '1' or 'x', first that of all inputs 0; the first input counts
/// least. Inputs that are constant or equal become fewer columns. At most `widestTable` inputs.
Function tableFunction(const std::vector<Bit>& inputs, std::string_view values);
inline constexpr std::size_t widestTable = 10;

/// The driver that a cell is for its output, which is the pin "Y" or "Q". `bitOf` gives the
/// connection of a pin, and is asked for those that the cell type has and no others. None for a
/// type that is no gate, register or buffer of simple cells, such as `$_NAND_` or `$_DFFE_PN0P_`.
std::optional<Driver> simpleCell(std::string_view type,
                                 const std::function<Bit(std::string_view pin)>& bitOf);

/// The type of a cell that is such a register, with all pins at their positive sense, and its pins
/// with the functions on them. A register that toggles has no such cell.
struct RegisterCell {
  std::string type;
  std::vector<std::pair<char, const Function*>> pins;
};
RegisterCell cellOf(const Register& reg);

}  // namespace ostrel::convert
