// Netlists of other tools as short texts, and what the converter makes of them.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "convert/check/equivalence.h"
#include "convert/convert.h"
#include "convert/read/json_reader.h"
#include "fil/text.h"

namespace ostrel::convert {

inline std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

inline std::string complaints(const Report& report) {
  return joined(report.faults) + joined(report.problems);
}

/// The result without its date, or what was said against it.
inline std::string converted(const std::string& text, Format from, Format to,
                             Folding folding = {}) {
  Report report;
  const std::string result = convert(text, "in", {from, to, folding, true}, report);
  if (!report.isClean()) return complaints(report);
  const std::size_t date = result.find("#$ DATE");
  if (date == std::string::npos) return result;
  return result.substr(0, date) + result.substr(result.find('\n', date) + 1);
}

/// A module: cells as `type pin=bits ...` with a `;` between two, bits as numbers or 0, 1, x with a
/// comma between two, ports likewise as `direction name=bits`.
inline std::string jsonText(const std::string& ports, const std::string& cells,
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

/// What a netlist is in the eyes of the proof, against another one.
inline std::string differences(const Netlist& source, const Netlist& other) {
  Report report;
  checkEquivalence(source, other, checkEffort, report);
  return joined(report.problems);
}

inline Netlist fromJson(const std::string& text) {
  Report report;
  Netlist netlist = readJson(text, "in", report);
  EXPECT_EQ(complaints(report), "");
  return netlist;
}

/// Pairs, marks, nodes, every register and control, pins that can be off and read inside.
inline const std::vector<std::string> designs = {
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

}  // namespace ostrel::convert
