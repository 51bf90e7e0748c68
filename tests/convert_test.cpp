// The converter: what the readers make of their input, what the writers make of that, which faults
// the proof finds, and what is said where nothing can be written.
#include "convert/convert.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "convert/check/equivalence.h"
#include "convert/check/read_back.h"
#include "convert/command.h"
#include "convert/model/names.h"
#include "convert/read/espresso_reader.h"
#include "convert/read/json_reader.h"
#include "convert/read/tt2_reader.h"

namespace ostrel::convert {
namespace {

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

std::string complaints(const Report& report) {
  return joined(report.faults) + joined(report.problems);
}

/// The result without its date, or what was said against it.
std::string converted(const std::string& text, Format from, Format to, Folding folding = {}) {
  Report report;
  const std::string result = convert(text, "in", {from, to, folding, true}, report);
  if (!report.isClean()) return complaints(report);
  const std::size_t date = result.find("#$ DATE");
  if (date == std::string::npos) return result;
  return result.substr(0, date) + result.substr(result.find('\n', date) + 1);
}

/// A module: cells as `type pin=bits ...` with a `;` between two, bits as numbers or 0, 1, x with a
/// comma between two, ports likewise as `direction name=bits`.
std::string jsonText(const std::string& ports, const std::string& cells,
                     const std::string& netnames = "") {
  const auto bits = [](const std::string& list) {
    std::string text;
    std::istringstream stream(list);
    for (std::string bit; std::getline(stream, bit, ',');) {
      text += (text.empty() ? "" : ",") +
              (bit == "x" || bit == "0" || bit == "1" ? '"' + bit + '"' : bit);
    }
    return "[" + text + "]";
  };
  const auto items = [](const std::string& list) {
    std::vector<std::string> result;
    std::istringstream stream(list);
    for (std::string item; std::getline(stream, item, ';');) result.push_back(item);
    return result;
  };
  std::string text = R"({"modules":{"m":{"ports":{)";
  for (const std::string& item : items(ports)) {
    const std::vector<std::string> words = splitWords(item);
    const std::size_t equals = words[1].find('=');
    text += (text.back() == '{' ? "\"" : ",\"") + words[1].substr(0, equals) +
            R"(":{"direction":")" + words[0] + R"(","bits":)" + bits(words[1].substr(equals + 1)) +
            "}";
  }
  text += R"(},"cells":{)";
  int number = 0;
  for (const std::string& item : items(cells)) {
    const std::vector<std::string> words = splitWords(item);
    const std::size_t colon = words[0].find(':');  // of a table
    std::string pins;
    std::size_t width = 0;
    for (std::size_t i = 1; i < words.size(); ++i) {
      const std::string list = bits(words[i].substr(2));
      pins += std::string(i == 1 ? "\"" : ",\"") + words[i][0] + "\":" + list;
      if (words[i][0] == 'A') width = 1 + static_cast<std::size_t>(std::ranges::count(list, ','));
    }
    text += (number == 0 ? "\"c" : ",\"c") + std::to_string(number) + R"(":{"type":")" +
            words[0].substr(0, colon) + R"(","connections":{)" + pins + "}";
    if (colon != std::string::npos) {
      text += R"(,"parameters":{"WIDTH":)" + std::to_string(width) + R"(,"LUT":")" +
              words[0].substr(colon + 1) + "\"}";
    }
    text += "}";
    ++number;
  }
  return text + R"(},"netnames":{)" + netnames + "}}}}";
}

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

/// What a netlist is in the eyes of the proof, against another one.
std::string differences(const Netlist& source, const Netlist& other) {
  Report report;
  checkEquivalence(source, other, checkEffort, report);
  return joined(report.problems);
}

Netlist fromJson(const std::string& text) {
  Report report;
  Netlist netlist = readJson(text, "in", report);
  EXPECT_EQ(complaints(report), "");
  return netlist;
}

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

TEST(Convert, RegistersBecomeAlwaysBlocks) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"$_DFF_N_ C=2 D=3 Q=9", "  always @(negedge c)\n    q <= d;\n"},
      {"$_DFFE_PN_ C=2 D=3 E=4 Q=9", "  always @(posedge c)\n    if (~e) q <= d;\n"},
      {"$_DFF_PP1_ C=2 D=3 R=5 Q=9",
       "  always @(posedge c or posedge r)\n    if (r) q <= 1'b1;\n    else q <= d;\n"},
      {"$_DFFSRE_PNPP_ C=2 D=3 E=4 R=5 S=6 Q=9",
       "  always @(posedge c or posedge r or negedge s)\n    if (r) q <= 1'b0;\n"
       "    else if (~s) q <= 1'b1;\n    else if (e) q <= d;\n"},
      {"$_DLATCH_PN0_ D=3 E=4 R=5 Q=9",
       "  always @(*)\n    if (~r) q <= 1'b0;\n    else if (e) q <= d;\n"},
      {"$_SR_PN_ S=6 R=5 Q=9",
       "  always @(*)\n    if (~r) q <= 1'b0;\n    else if (s) q <= 1'b1;\n"}};
  const std::string ports = "input c=2;input d=3;input e=4;input r=5;input s=6;output q=9";
  for (const auto& [cell, block] : cases) {
    const std::string text = converted(jsonText(ports, cell), Format::Json, Format::Verilog);
    EXPECT_NE(text.find("  initial q = 0;\n" + block), std::string::npos) << cell << "\n" << text;
    EXPECT_EQ(converted(jsonText(ports, cell), Format::Json, Format::Blif).find(".model m\n"), 0U)
        << cell;
  }
}

// yosys takes a register that nothing reads away unless it is told, and one whose power-up value it
// doesn't know for whatever it likes.
TEST(Convert, RegisteredNodesStayAndComeUpAsZero) {
  const std::string text =
      jsonText("input c=2;input d=3;output y=4", "$_NOT_ A=3 Y=4;$_DFF_P_ C=2 D=3 Q=5");
  EXPECT_NE(converted(text, Format::Json, Format::Verilog).find("  (* keep *) reg n5 = 0;\n"),
            std::string::npos);
  EXPECT_NE(converted(text, Format::Json, Format::Blif).find(".latch d n5 re c 0\n.attr keep 1\n"),
            std::string::npos);
}

// yosys cuts loops where it likes. A port, or a wire that says keep, carries the state all the
// same.
TEST(Convert, LoopsKeepTheNamesOfTheirStates) {
  const std::string loop = "$_NOT_ A=9 Y=4;$lut:11101000 A=2,9,8 Y=9;$_OR_ A=3 B=9 Y=8";
  EXPECT_NE(converted(jsonText("input a=2;input b=3;output y=4", loop), Format::Json, Format::Tt2)
                .find(".ilb a b y\n.ob y\n.phase 1\n.p 2\n0-1 1\n-01 1\n"),
            std::string::npos)
      << converted(jsonText("input a=2;input b=3;output y=4", loop), Format::Json, Format::Tt2);
  const std::string inner =
      converted(jsonText("input a=2;input b=3;output y=7", loop + ";$_AND_ A=2 B=4 Y=7",
                         R"("mine":{"bits":[4],"attributes":{}})"),
                Format::Json, Format::Verilog);
  EXPECT_NE(inner.find("  (* keep *) wire mine;\n"), std::string::npos) << inner;
}

/// Pairs, marks, nodes, every register and control, pins that can be off and read inside.
const std::vector<std::string> designs = {
    "#$ PINS 9 a b c e Q T L Y Z\n#$ NODES 2 N R:REG_D\n.type f\n.i 11\n.o 18\n"
    ".ilb a b c e Q.Q T.Q L Y.PIN Y.COM N R.Q\n"
    ".ob Q.D.X1- Q.D.X2 Q.C Q.CE Q.AR Q.AP Q.OE T.T T.C L.L L.LE Y- Y.OE Z% N.X1 N.X2 R.D R.C\n"
    ".p 8\n"
    "11--------- 100000010010000000\n"
    "--1-------- 001000001000000001\n"
    "-0-1----1-- 010100000101000010\n"
    "0---1-----1 000010000000000110\n"
    "-----10---- 000001100000100000\n"
    "---0----01- 100000010010011100\n"
    "1------1--- 000000000001010000\n"
    "---------0- 000000100100000000\n.end\n",
    "#$ PINS 5 a b S Y Z\n.type fdr\n.i 3\n.o 4\n.ilb a b S.Q\n.ob S.S S.R Y Z-\n.p 4\n"
    "1-- 1~1~\n-1- 01~1\n00- ~~00\n--1 ~~~~\n.end\n"};

TEST(Convert, DesignsSurviveEveryFormat) {
  for (const std::string& design : designs) {
    for (const Format to : {Format::Tt2, Format::Pla, Format::Verilog, Format::Blif}) {
      Report report;
      const std::string text = convert(design, "in", {Format::Tt2, to, {}, true}, report);
      EXPECT_EQ(complaints(report), "") << static_cast<int>(to) << "\n" << text;
      if (to != Format::Pla) continue;
      EXPECT_EQ(text.find("X1-"), std::string::npos) << "a mark in\n" << text;
      EXPECT_EQ(text.find("\n "), std::string::npos) << "a line that goes on in\n" << text;
      EXPECT_TRUE(converted(text, Format::Pla, Format::Tt2).starts_with("#$ "));
    }
  }
}

// In every function of every net: a literal turned, the whole inverted.
TEST(Convert, ProofFindsPlantedFaults) {
  Report report;
  const Netlist source = readTt2(designs[0], "in", report);
  ASSERT_EQ(complaints(report), "");
  EXPECT_EQ(differences(source, source), "");
  int faults = 0;
  for (std::size_t net = 0; net < source.nets.size(); ++net) {
    std::size_t count = 0;
    forEachFunctionOf(source.nets[net], [&](const Function&, std::string_view) { ++count; });
    for (std::size_t wanted = 0; wanted < count; ++wanted) {
      for (const bool turn : {false, true}) {
        Netlist faulty = source;
        std::size_t at = 0;
        forEachFunctionOf(faulty.nets[net], [&](Function& function, std::string_view) {
          if (at++ != wanted) return;
          Sum& sum = function.operands.back();
          std::size_t column = 0;
          while (turn && sum.on.back().at(column) == '-') ++column;
          if (turn) sum.on.back().invert(column);
          if (!turn) sum.inverted = !sum.inverted;
        });
        EXPECT_NE(differences(source, faulty), "") << source.nets[net].name << wanted << turn;
        ++faults;
      }
    }
  }
  EXPECT_GT(faults, 30);
  Netlist lost = source;
  lost.ports.pop_back();
  EXPECT_EQ(differences(source, lost), "Z: the file lost this port\n");
}

// What a reader back does not know is a fault of the writer, so nothing may be passed over.
TEST(Convert, WrittenTextIsReadWhole) {
  for (const Format format : {Format::Verilog, Format::Blif}) {
    const std::string text = converted(designs[0], Format::Tt2, format);
    const auto isRead = [&](const std::string& written) {
      Report report;
      if (format == Format::Verilog) readBackVerilog(written, report);
      if (format == Format::Blif) readBackBlif(written, report);
      return report.isClean();
    };
    ASSERT_TRUE(isRead(text));
    for (std::size_t line = text.find('\n') + 1; line < text.size();
         line = text.find('\n', line) + 1) {
      EXPECT_FALSE(isRead(text.substr(0, line) + "something else;\n" + text.substr(line))) << line;
      EXPECT_FALSE(isRead(text.substr(0, line))) << line;
    }
  }
}

TEST(Convert, WhatHasNoFormIsSaid) {
  const auto tt2 = [](const std::string& names, const std::string& outputs,
                      const std::string& rows) {
    const auto count = [](const std::string& list) {
      return std::to_string(splitWords(list).size());
    };
    return "#$ PINS " + count(names) + " " + names + "\n#$ NODES 1 N\n.type f\n.i 1\n.o " +
           count(outputs) + "\n.ilb a\n.ob " + outputs + "\n.p 1\n" + rows + "\n.end\n";
  };
  const std::vector<std::pair<std::string, std::string>> cases = {
      {tt2("a Q:REG_G", "Q.C Q", "1 11"), "Q: it has a clock, reset or set and is no register\n"},
      {tt2("a Q", "Q.D", "1 1"), "Q: this flip-flop has no clock\n"},
      {tt2("a Q", "Q.C", "1 1"), "Q: it has control functions and no logic\n"},
      {tt2("a Q", "Q.S Q.C", "1 11"),
       "Q: a set and reset register with data or a clock has no form in a netlist\n"},
      {tt2("a Q", "Q.L Q.LE Q.CE", "1 111"), "Q: a latch has no clock enable\n"},
      {tt2("a Q", "Q N N.OE", "1 111"), "N: a node has no pin that could be off\n"},
      {tt2("a Q", "Q.OE", "1 1"), "Q: an output enable has nothing to put out\n"},
      {tt2("a Q", "Q.J", "1 1"), "in: Q.J is not supported\n"},
      {"#$ PINS 1 a\n#$ NODES 1 N\n.type f\n.i 1\n.o 1\n.ilb a\n.ob N\n.p 1\n1 1\n.end\n",
       "no output and no register is left, and a module needs one\n"},
      {"#$ PINS 1 a\n.i 1\n.o 1\n.ilb a\n.ob a\n.p 1\n1 1 1\n.end\n",
       "in:7: a row of 3 characters, and .i and .o make 2\n"}};
  for (const auto& [text, words] : cases) {
    EXPECT_EQ(converted(text, Format::Tt2, Format::Verilog), words) << text;
  }
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

// x as an input of a gate, as a bit of a table and as a port; what agrees under both values is
// known.
TEST(Convert, UnknownBitsStayOpen) {
  const std::string text = jsonText("input a=2;output y=3;output z=4;output k=x",
                                    "$_MUX_ A=2 B=x S=2 Y=3;$lut:x011 A=2,2 Y=4");
  const std::string tt2 = converted(text, Format::Json, Format::Tt2);
  EXPECT_NE(tt2.find(".type fdr\n"), std::string::npos) << tt2;
  EXPECT_NE(tt2.find("\n0 01~\n"), std::string::npos) << tt2;
  EXPECT_NE(converted(tt2, Format::Tt2, Format::Verilog).find("assign y = 1'b0;"),
            std::string::npos);
}

std::string rippleAdder(int bits) {
  std::string ports = "input c=2";
  std::string cells;
  for (int i = 0; i < bits; ++i) {
    const auto net = [&](int k) { return std::to_string(10 * i + k); };
    const std::string carry = i == 0 ? "2" : std::to_string(10 * (i - 1) + 13);
    ports += ";input a" + std::to_string(i) + "=" + net(10) + ";input b" + std::to_string(i) + "=" +
             net(11) + ";output s" + std::to_string(i) + "=" + net(12);
    const std::string inputs = " A=" + net(10) + "," + net(11) + "," + carry;
    cells += (i == 0 ? "" : ";") + std::string("$lut:10010110") + inputs + " Y=" + net(12) +
             ";$lut:11101000" + inputs + " Y=" + net(13);
  }
  return jsonText(ports, cells);
}

std::size_t countOf(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
    ++count;
  return count;
}

TEST(Convert, NodesStayWhereFoldingCosts) {
  const std::string adder = rippleAdder(6);
  const auto rows = [&](Folding folding) {
    const std::string text = converted(adder, Format::Json, Format::Tt2, folding);
    const std::size_t at = text.find("\n.p ");
    return at == std::string::npos ? 0 : std::stoi(text.substr(at + 4));
  };
  EXPECT_LT(rows({}), 60);
  EXPECT_GT(rows({16, true}), 200);
  const std::string huge = converted(rippleAdder(20), Format::Json, Format::Tt2, {16, true});
  EXPECT_NE(huge.find("the flat design is too large"), std::string::npos) << huge.substr(0, 200);
  // A control of two terms stays a node; a limit of one term keeps every sum; `keep` keeps a net.
  const std::string text =
      jsonText("input a=2;input b=3;input c=4;output q=5;output y=6",
               "$_OR_ A=2 B=3 Y=7;$_DFFE_PP_ C=4 D=2 E=7 Q=5;$_AND_ A=2 B=3 Y=8;"
               "$_AND_ A=8 B=4 Y=6");
  EXPECT_EQ(countOf(converted(text, Format::Json, Format::Tt2), "#$ NODES 1 n7\n"), 1U);
  std::string kept = text;
  kept.insert(kept.rfind("}}}}"), R"("mine":{"bits":[8],"attributes":{"keep":1}})");
  EXPECT_EQ(countOf(converted(kept, Format::Json, Format::Tt2), "#$ NODES 2 n7 mine\n"), 1U);
}

TEST(Convert, EspressoTypesAndPhases) {
  // The rows say 1 for a, 0 for not a b, and open for not a not b.
  const std::vector<std::pair<std::string, std::string>> cases = {{".type f", "f|1- 1"},
                                                                  {"", "fdr|1- 1|00 0|01 -"},
                                                                  {".type fr", "fdr|1- 1|00 0"},
                                                                  {".type fdr", "fdr|1- 1|00 0"}};
  for (const auto& [type, expected] : cases) {
    for (const char phase : {'1', '0'}) {
      Report report;
      const std::string text =
          ".i 2\n.o 1\n" + type + "\n.phase " + phase + "\n1- 1\n00\n0\n01 -\n.e\n";
      const Netlist netlist = readEspresso(text, "in", report);
      ASSERT_EQ(complaints(report), "");
      const Sum& sum = std::get<Function>(netlist.nets[2].driver).operands[0];
      EXPECT_EQ(sum.inverted, phase == '0');
      EXPECT_EQ(sum.on.size(), 1U);
      EXPECT_EQ(sum.second.size(), expected.starts_with("fdr") ? 1U : 0U) << type;
      EXPECT_EQ(sum.secondIs, type.find('r') == std::string::npos ? Second::Open : Second::Zero);
    }
  }
  const std::vector<std::pair<std::string, std::string>> faults = {
      {".i 2\n.o 1\n1x 1\n", "in:3: the character x in a row\n"},
      {".i 2\n.o 1\n1\n.e\n", "in:4: a row of 1 characters\n"},
      {"11 1\n", "in:1: a row in front of .i and .o\n"},
      {".i 2\n.o 1\n.phase 2\n", "in:3: .phase needs a 0 or 1 for each output\n"},
      {".i 2\n.o 1\n.mv 3\n", "in:3: the directive .mv is not known\n"},
      {".i 99999\n.o 99999\n", "in:2: too many columns\n"},
      {".i 1\n.o 1\n.ilb a\n.ob a\n1 1\n.e\n", "in:6: the name a is there twice\n"}};
  for (const auto& [text, words] : faults) {
    EXPECT_EQ(converted(text, Format::Pla, Format::Tt2), words) << text;
  }
}

TEST(Convert, NamesComeBack) {
  const std::string text = jsonText("input A=2;input a=3;input always=4,5;output x.y=6",
                                    "$lut:1000000000000000 A=2,3,4,5 Y=6");
  const std::string tt2 = converted(text, Format::Json, Format::Tt2);
  EXPECT_NE(tt2.find("#$ PINS 5 A a_2 always[0] always[1] x_y\n"), std::string::npos) << tt2;
  const std::string verilog = converted(tt2, Format::Tt2, Format::Verilog);
  EXPECT_EQ(verilog.find(
                "module m(\n  input A,\n  input a,\n  input [1:0] \\always ,\n  output \\x.y \n);\n"
                "  assign \\x.y  = A & a & \\always [0] & \\always [1];\n"),
            0U)
      << verilog;
  // Lines that are none of ours are passed on; a width that no file needs is not believed.
  KeptNames kept;
  readKeptNames(
      "#$ PROPERTY convert name a_2 a%20%zz\n#$ PROPERTY convert port input d 999999999 0\n"
      "#$ PROPERTY speed 7",
      kept);
  EXPECT_EQ(kept.original("a_2"), "a %zz");
  EXPECT_EQ(kept.ports.size(), 0U);
  EXPECT_EQ(kept.otherLines.size(), 2U);
}

class ConvertCommand : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directories(folder_); }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  int run(std::vector<std::string> words, const std::string& input = "") {
    std::istringstream in(input);
    out_.str("");
    err_.str("");
    return convertMain(words, in, out_, err_);
  }
  std::string file(const std::string& name, const std::string& text = "") const {
    if (!text.empty()) std::ofstream(folder_ / name) << text;
    return (folder_ / name).string();
  }

  std::filesystem::path folder_ = std::filesystem::path(testing::TempDir()) / "ostrel_convert";
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(ConvertCommand, ExitCodesAndOutput) {
  const std::string good = file("good.tt2", designs[1]);
  const std::string bad = file("bad.tt2", "nothing\n");
  const std::string sorry =
      file("sorry.tt2", "#$ PINS 2 a Q\n.i 1\n.o 1\n.ilb a\n.ob Q.D\n.p 1\n1 1\n.end\n");
  const std::string old = file("old.v", "old\n");
  EXPECT_EQ(run({good, file("new.v")}), 0);
  EXPECT_EQ(err_.str(), "note: " + good + ": don't-cares get a value, for the target has none\n");
  EXPECT_TRUE(std::filesystem::exists(folder_ / "new.v"));
  EXPECT_EQ(run({sorry, old}), 1);
  EXPECT_EQ(err_.str(), sorry + ": Q: this flip-flop has no clock\n");
  EXPECT_EQ(run({bad, old}), 2);
  EXPECT_TRUE(err_.str().starts_with(bad + ":1: text that is passed over: nothing\n"));
  EXPECT_EQ(std::filesystem::file_size(old), 4U);
  EXPECT_EQ(run({"--from=tt2", "--to", "blif", "-", "-"}, designs[1]), 0);
  EXPECT_TRUE(out_.str().starts_with(".model top\n"));
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{},
                                             {good},
                                             {good, "x.json"},
                                             {"x.v", old},
                                             {"-", "-"},
                                             {"--terms", "0", good, old},
                                             {"--flatten", good, old},
                                             {"--to", "png", good, old},
                                             {file("none.tt2"), old},
                                             {good, file("no/such/folder.v")}}) {
    EXPECT_EQ(run(words), 2) << joined(words);
    EXPECT_NE(err_.str().find("ostrel-convert: "), std::string::npos) << err_.str();
  }
}

}  // namespace
}  // namespace ostrel::convert
