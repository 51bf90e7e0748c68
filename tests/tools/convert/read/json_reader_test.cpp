// What a netlist becomes, and the faults of one.
#include "convert/read/json_reader.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

TEST(Convert, NetlistBecomesSignals) {
  // A flip-flop with enable and reset at 0 behind a pin that can be off, read at the pin.
  const std::string text = jsonText(
      "input c=2;input n=3;input e=4;input d=5,6;inout y=7;output z=8;output w=8;output k=1",
      "$_DFFE_PN0P_ C=2 D=9 E=4 R=3 Q=10;$_AND_ A=5 B=6 Y=9;$_TBUF_ A=10 E=4 Y=7;$_XOR_ A=7 B=10 "
      "Y=8",
      R"("c":{"bits":[2],"attributes":{"LOC":"P7"}},"d":{"bits":[5,6],"attributes":{"pin":"12 11"}},)"
      R"("h.q":{"bits":[10],"attributes":{}})");
  EXPECT_EQ(converted(text, Format::Json, Format::Tt2),
            "#$ MODULE m\n"
            "#$ PROPERTY convert port input c\n"
            "#$ PROPERTY convert port input n\n"
            "#$ PROPERTY convert port input e\n"
            "#$ PROPERTY convert port input d 1 0\n"
            "#$ PROPERTY convert port inout y\n"
            "#$ PROPERTY convert port output z\n"
            "#$ PROPERTY convert port output w\n"
            "#$ PROPERTY convert port output k\n"
            "#$ PROPERTY convert name y.Q h.q\n"
            "#$ PINS 9 c:7 n e d[0]:11 d[1]:12 y z w k\n"
            ".type f\n.i 8\n.o 8\n"
            ".ilb c n e d[0] d[1] y.PIN z y.Q\n"
            ".ob y.D y.C y.CE y.AR y.OE z w k-\n"
            ".phase 11111111\n.p 7\n"
            "---11--- 10000000\n1------- 01000000\n--1----- 00101000\n-0------ 00010000\n"
            "-----0-1 00000100\n-----1-0 00000100\n------1- 00000010\n.end\n");
}

TEST(Convert, BadNetlistsAreFaultsWithTheirPath) {
  const std::string ports = "input a=2;output y=3";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"{\n\n oops", "in:3: this is no JSON\n"},
      {"[1e999]", "in: a number is beyond every range\n"},
      {"[]", "in: modules is missing\n"},
      {R"({"modules":{}})", "in: modules: it needs one module, or one marked as top\n"},
      {R"({"modules":{"m":{"ports":[],"cells":{}}}})",
       "in: modules.m.ports: an object should stand here\n"},
      {jsonText("sideways a=2", ""), "in: modules.m.ports.a: sideways is no direction\n"},
      {jsonText("input a=2;input b=2", ""), "in: modules.m.ports.b: two ports share a net\n"},
      {jsonText("input a=1", ""), "in: modules.m.ports.a: a constant stands for an input\n"},
      {jsonText(ports, "$_AND_ A=2 Y=3"), "in: modules.m.cells.c0.connections: B is missing\n"},
      {jsonText(ports, "$_NOT_ A=2,2 Y=3"),
       "in: modules.m.cells.c0.connections.A: one bit should stand here\n"},
      {jsonText(ports, "$lut:10 A=2,2 Y=3"),
       "in: modules.m.cells.c0.parameters.LUT: 4 bits should stand here\n"},
      {jsonText(ports, "$_FOO_ A=2 Y=3;$_DFF_Q_ Q=3"),
       "modules.m.cells.c0: no way to say a cell of type $_FOO_\n"
       "modules.m.cells.c1: no way to say a cell of type $_DFF_Q_\n"},
      {jsonText(ports, "$_NOT_ A=2 Y=3;$_NOT_ A=2 Y=3"),
       "modules.m.cells.c1.connections.Y: y is driven a second time\n"},
      {jsonText(ports, "$_NOT_ A=2 Y=2"),
       "modules.m.cells.c0.connections.Y: a is driven a second time\n"},
      {jsonText(ports, ""), "y: this output has no logic\n"},
      {jsonText(ports, "$_NOT_ A=9 Y=3"), "n9: it is read and nothing drives it\n"},
      {jsonText(ports, "$_DFF_P_ C=2 D=2 Q=3", R"("y":{"bits":[3],"attributes":{"init":"1"}})"),
       "modules.m.netnames.y: y begins at 1, which a device does not (yosys: dfflegalize)\n"}};
  for (const auto& [text, words] : cases) {
    EXPECT_EQ(converted(text, Format::Json, Format::Tt2), words) << text;
  }
}

}  // namespace
}  // namespace ostrel::convert
