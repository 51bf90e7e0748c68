#include "convert/read/cells.h"

#include <algorithm>
#include <array>
#include <utility>

#include "minimizer/sum_of_products.h"

namespace ostrel::convert {

namespace {

struct Gate {
  std::string_view type;
  std::string_view pins;
  std::string_view values;
};

constexpr std::array gates = {
    Gate{"$_BUF_", "A", "01"},
    Gate{"$_NOT_", "A", "10"},
    Gate{"$_AND_", "AB", "0001"},
    Gate{"$_NAND_", "AB", "1110"},
    Gate{"$_OR_", "AB", "0111"},
    Gate{"$_NOR_", "AB", "1000"},
    Gate{"$_XOR_", "AB", "0110"},
    Gate{"$_XNOR_", "AB", "1001"},
    Gate{"$_ANDNOT_", "AB", "0100"},
    Gate{"$_ORNOT_", "AB", "1101"},
    Gate{"$_MUX_", "ABS", "01010011"},
    Gate{"$_NMUX_", "ABS", "10101100"},
    Gate{"$_AOI3_", "ABC", "11100000"},
    Gate{"$_OAI3_", "ABC", "11111000"},
    Gate{"$_AOI4_", "ABCD", "1110111011100000"},
    Gate{"$_OAI4_", "ABCD", "1111100010001000"},
};

// The letters behind the family name: a pin with its sense, P or N, or `v` for the value that R
// gives, 0 or 1.
struct Family {
  std::string_view name;
  std::string_view letters;
  RegisterKind kind;
};

constexpr std::array families = {
    Family{"DFF", "C", RegisterKind::Flop},         Family{"DFF", "CRv", RegisterKind::Flop},
    Family{"DFFE", "CE", RegisterKind::Flop},       Family{"DFFE", "CRvE", RegisterKind::Flop},
    Family{"DFFSR", "CSR", RegisterKind::Flop},     Family{"DFFSRE", "CSRE", RegisterKind::Flop},
    Family{"DLATCH", "E", RegisterKind::Latch},     Family{"DLATCH", "ERv", RegisterKind::Latch},
    Family{"DLATCHSR", "ESR", RegisterKind::Latch}, Family{"SR", "SR", RegisterKind::SetReset},
};

bool fits(std::string_view letters, std::string_view senses) {
  if (letters.size() != senses.size()) return false;
  for (std::size_t i = 0; i < letters.size(); ++i) {
    const std::string_view allowed = letters[i] == 'v' ? "01" : "PN";
    if (allowed.find(senses[i]) == std::string_view::npos) return false;
  }
  return true;
}

Register registerOf(const Family& family, std::string_view senses,
                    const std::function<Bit(std::string_view)>& bitOf) {
  Register reg;
  reg.kind = family.kind;
  if (reg.kind != RegisterKind::SetReset) reg.data = bitFunction(bitOf("D"));
  for (std::size_t i = 0; i < senses.size(); ++i) {
    const char pin = family.letters[i];
    if (pin == 'v') {
      if (senses[i] == '1') std::swap(reg.reset, reg.set);
      continue;
    }
    Function control = bitFunction(bitOf(std::string(1, pin)), senses[i] == 'P');
    const bool isClock = pin == 'C' || (pin == 'E' && reg.kind == RegisterKind::Latch);
    (isClock      ? reg.clock
     : pin == 'E' ? reg.enable
     : pin == 'R' ? reg.reset
                  : reg.set) = std::move(control);
  }
  return reg;
}

// The cubes of some points of a table, merged and expanded.
CubeList cubesOf(std::string_view table, char wanted, std::size_t width) {
  CubeList cubes;
  for (std::size_t point = 0; point < table.size(); ++point) {
    if (table[point] != wanted) continue;
    Cube& cube = cubes.emplace_back();
    for (std::size_t i = 0; i < width; ++i) cube.set(i, ((point >> i) & 1U) != 0 ? '1' : '0');
  }
  Effort unbounded;
  ListAlgebra<Cube>(width, unbounded).simplify(cubes);
  return cubes;
}

// The value under an assignment of the nets: of all that the unknown inputs leave possible.
char valueAt(std::string_view values, std::size_t known, std::size_t unknown) {
  char result = 0;
  for (std::size_t i = unknown;; i = (i - 1) & unknown) {
    const char value = values[known | i];
    result = result == 0 || result == value ? value : 'x';
    if (i == 0) return result;
  }
}

}  // namespace

Function bitFunction(Bit bit, bool positive) {
  if (bit.net) return literalFunction(*bit.net, positive);
  if (bit.constant == 'x') {
    Function open = constantFunction(false);
    open.operands[0].secondIs = Second::Zero;
    return open;
  }
  return constantFunction((bit.constant == '1') == positive);
}

Function tableFunction(const std::vector<Bit>& inputs, std::string_view values) {
  std::vector<Net> nets;
  std::vector<std::size_t> placeOf(inputs.size(), 0);
  std::size_t ones = 0;
  std::size_t unknown = 0;
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const std::size_t bit = std::size_t{1} << i;
    if (!inputs[i].net) {
      if (inputs[i].constant == '1') ones |= bit;
      if (inputs[i].constant == 'x') unknown |= bit;
      continue;
    }
    const auto found = std::ranges::find(nets, *inputs[i].net);
    placeOf[i] = static_cast<std::size_t>(found - nets.begin());
    if (found == nets.end()) nets.push_back(*inputs[i].net);
  }
  std::string table;
  for (std::size_t point = 0; point < std::size_t{1} << nets.size(); ++point) {
    std::size_t index = ones;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      if (inputs[i].net && ((point >> placeOf[i]) & 1U) != 0) index |= std::size_t{1} << i;
    }
    table += valueAt(values, index, unknown);
  }
  TwoRail rails{std::move(nets), {}, {}, table.find('x') == std::string::npos};
  rails.on = cubesOf(table, '1', rails.inputs.size());
  rails.off = cubesOf(table, '0', rails.inputs.size());
  return fromTwoRail(std::move(rails), false);
}

std::optional<Driver> simpleCell(std::string_view type,
                                 const std::function<Bit(std::string_view)>& bitOf) {
  if (type == "$_TBUF_") return Buffer{bitFunction(bitOf("A")), bitFunction(bitOf("E"))};
  const auto gate = std::ranges::find(gates, type, &Gate::type);
  if (gate != gates.end()) {
    std::vector<Bit> inputs;
    for (const char pin : gate->pins) inputs.push_back(bitOf(std::string(1, pin)));
    return tableFunction(inputs, gate->values);
  }
  if (!type.starts_with("$_") || !type.ends_with('_')) return std::nullopt;
  const std::string_view word = type.substr(2, type.size() - 3);
  const std::size_t split = std::min(word.find('_'), word.size());
  const std::string_view senses = word.substr(std::min(split + 1, word.size()));
  for (const Family& family : families) {
    if (family.name == word.substr(0, split) && fits(family.letters, senses)) {
      return registerOf(family, senses, bitOf);
    }
  }
  return std::nullopt;
}

RegisterCell cellOf(const Register& reg) {
  RegisterCell cell;
  const bool isLatch = reg.kind == RegisterKind::Latch;
  if (reg.kind == RegisterKind::SetReset)
    return {"$_SR_PP_", {{'S', &*reg.set}, {'R', &*reg.reset}}};
  std::string family = isLatch ? "DLATCH" : "DFF";
  std::string senses = "P";
  cell.pins = {{'D', &reg.data}, {isLatch ? 'E' : 'C', &*reg.clock}};
  if (reg.reset && reg.set) {
    family += "SR";
    senses += "PP";
    cell.pins.insert(cell.pins.end(), {{'S', &*reg.set}, {'R', &*reg.reset}});
  } else if (reg.reset || reg.set) {
    senses += reg.reset ? "P0" : "P1";
    cell.pins.emplace_back('R', reg.reset ? &*reg.reset : &*reg.set);
  }
  if (reg.enable) {
    family += "E";
    senses += "P";
    cell.pins.emplace_back('E', &*reg.enable);
  }
  cell.type = "$_" + family + "_" + senses + "_";
  return cell;
}

}  // namespace ostrel::convert
