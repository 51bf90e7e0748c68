#include "convert/convert.h"

#include <array>
#include <sstream>

#include "convert/check/equivalence.h"
#include "convert/model/netlist.h"
#include "convert/read/json_reader.h"
#include "convert/read/tt2_reader.h"
#include "convert/write/blif_writer.h"
#include "convert/write/pla_form.h"
#include "convert/write/verilog_writer.h"
#include "fil/clock.h"
#include "fil/pla_writer.h"

namespace ostrel::convert {

namespace {

struct Word {
  std::string_view text;
  Format format;
};

constexpr std::array words = {Word{"json", Format::Json}, Word{"pla", Format::Pla},
                              Word{"tt2", Format::Tt2},   Word{"tt3", Format::Tt2},
                              Word{"v", Format::Verilog}, Word{"blif", Format::Blif}};

Netlist read(std::string_view text, const std::string& file, Format format, Report& report) {
  if (format == Format::Json) return readJson(text, file, report);
  return readTt2(text, file, report);
}

std::string write(const Netlist& netlist, Format format, Report& report) {
  std::ostringstream out;
  const bool keepsOpen = format == Format::Tt2 || format == Format::Pla;
  if (!keepsOpen && hasDontCares(netlist)) {
    report.notes.emplace_back("don't-cares get a value, for the target has none");
  }
  if (format == Format::Verilog) writeVerilog(netlist, out, report);
  if (format == Format::Blif) writeBlif(netlist, out);
  if (keepsOpen) {
    const PlaFile file = plaForm(netlist, report);
    if (report.isClean()) writePla(file, out, fileDate());
  }
  return out.str();
}

void check(const Netlist& source, const std::string& text, Format format, Report& report) {
  Report ofReading;
  const Netlist written = read(text, "output", format, ofReading);
  report.problems.insert(report.problems.end(), ofReading.faults.begin(), ofReading.faults.end());
  report.problems.insert(report.problems.end(), ofReading.problems.begin(),
                         ofReading.problems.end());
  if (report.isClean()) checkEquivalence(source, written, checkEffort, report);
}

}  // namespace

std::optional<Format> formatOf(std::string_view word) {
  for (const Word& known : words) {
    if (known.text == word) return known.format;
  }
  return std::nullopt;
}

bool canRead(Format format) {
  return format != Format::Verilog && format != Format::Blif;
}

bool canWrite(Format format) {
  return format != Format::Json;
}

std::string convert(std::string_view text, const std::string& file, const Conversion& conversion,
                    Report& report) {
  Netlist netlist = read(text, file, conversion.from, report);
  if (!report.isClean()) return "";
  dropUnread(netlist, report);
  checkPorts(netlist, report);
  if (!report.isClean()) return "";
  const Netlist source = conversion.check ? netlist : Netlist();
  if (conversion.from == Format::Json || conversion.folding.flat) {
    fold(netlist, conversion.folding, report);
  }
  std::string result = report.isClean() ? write(netlist, conversion.to, report) : "";
  if (conversion.check && report.isClean()) check(source, result, conversion.to, report);
  return result;
}

}  // namespace ostrel::convert
