// Cells by their tables.
#include "convert/read/cells.h"

#include <gtest/gtest.h>
#include <tuple>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, GatesAreTheirTables) {
  using Value = bool (*)(bool a, bool b, bool c, bool d);
  const std::vector<std::tuple<std::string, std::string, Value>> gates = {
      {"$_NOT_", "A", [](bool a, bool, bool, bool) { return !a; }},
      {"$_NAND_", "AB", [](bool a, bool b, bool, bool) { return !(a && b); }},
      {"$_NOR_", "AB", [](bool a, bool b, bool, bool) { return !(a || b); }},
      {"$_XNOR_", "AB", [](bool a, bool b, bool, bool) { return a == b; }},
      {"$_ANDNOT_", "AB", [](bool a, bool b, bool, bool) { return a && !b; }},
      {"$_ORNOT_", "AB", [](bool a, bool b, bool, bool) { return a || !b; }},
      {"$_MUX_", "ABS", [](bool a, bool b, bool s, bool) { return s ? b : a; }},
      {"$_NMUX_", "ABS", [](bool a, bool b, bool s, bool) { return !(s ? b : a); }},
      {"$_AOI3_", "ABC", [](bool a, bool b, bool c, bool) { return !((a && b) || c); }},
      {"$_OAI3_", "ABC", [](bool a, bool b, bool c, bool) { return !((a || b) && c); }},
      {"$_AOI4_", "ABCD", [](bool a, bool b, bool c, bool d) { return !((a && b) || (c && d)); }},
      {"$_OAI4_", "ABCD", [](bool a, bool b, bool c, bool d) { return !((a || b) && (c || d)); }}};
  for (const auto& [type, pins, value] : gates) {
    const std::string ports = "input a=2;input b=3;input c=4;input d=5;output y=6";
    std::string connections;
    std::string bits;
    for (std::size_t i = 0; i < pins.size(); ++i) {
      connections += std::string(" ") + pins[i] + "=" + std::to_string(2 + i);
      bits += (i == 0 ? "" : ",") + std::to_string(2 + i);
    }
    std::string table;
    for (unsigned p = 0; p < 1U << pins.size(); ++p) {
      table.insert(0, value((p & 1) != 0, (p & 2) != 0, (p & 4) != 0, (p & 8) != 0) ? "1" : "0");
    }
    const Netlist gate = fromJson(jsonText(ports, type + connections + " Y=6"));
    const Netlist lut = fromJson(jsonText(ports, "$lut:" + table + " A=" + bits + " Y=6"));
    EXPECT_EQ(differences(gate, lut), "") << type;
    table[0] = table[0] == '0' ? '1' : '0';
    EXPECT_NE(differences(gate, fromJson(jsonText(ports, "$lut:" + table + " A=" + bits + " Y=6"))),
              "");
  }
}

}  // namespace
}  // namespace ostrel::convert
