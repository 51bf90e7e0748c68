#include "convert/convert.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <unordered_map>
#include <vector>

#include "convert/check/equivalence.h"
#include "convert/check/read_back.h"
#include "convert/model/netlist.h"
#include "convert/read/espresso_reader.h"
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

constexpr std::array formatWords = {Word{"json", Format::Json}, Word{"pla", Format::Pla},
                                    Word{"tt2", Format::Tt2},   Word{"tt3", Format::Tt2},
                                    Word{"v", Format::Verilog}, Word{"blif", Format::Blif}};

Netlist read(std::string_view text, const std::string& file, Format format, Report& report) {
  if (format == Format::Json) return readJson(text, file, report);
  return format == Format::Pla ? readEspresso(text, file, report) : readTt2(text, file, report);
}

struct Written {
  std::string text;
  std::vector<std::string> names;  // of the nets in the text, where it is no PLA file
};

Written write(const Netlist& netlist, Format format, Report& report) {
  std::ostringstream out;
  Written written;
  const bool keepsOpen = format == Format::Tt2 || format == Format::Pla;
  if (format == Format::Verilog) written.names = writeVerilog(netlist, out);
  if (format == Format::Blif) written.names = writeBlif(netlist, out);
  if (keepsOpen) {
    const Dialect dialect = format == Format::Pla ? Dialect::Pla : Dialect::Tt2;
    const PlaFile file = plaForm(netlist, dialect, report);
    if (report.isClean()) writePla(file, out, fileDate());
  }
  written.text = out.str();
  // In a table of espresso no line goes on with a blank: the rest of a comment would be a row.
  for (std::size_t at = 0; format == Format::Pla; ++at) {
    at = written.text.find("\n ", at);
    if (at == std::string::npos) break;
    written.text.erase(at, 1);
  }
  return written;
}

Netlist readAgain(const Netlist& netlist, const Written& written, Format format, Report& report) {
  if (format == Format::Tt2 || format == Format::Pla) {
    return readTt2(written.text, "output", report);
  }
  Netlist result = format == Format::Verilog ? readBackVerilog(written.text, report)
                                             : readBackBlif(written.text, report);
  for (const Port& port : result.ports) {
    for (const Net net : port.bits) {
      Driver& driver = result.nets[net].driver;
      const bool isOpen = std::holds_alternative<Undriven>(driver);
      if (isOpen && port.direction == Direction::Inout) driver = FromOutside{};
    }
  }
  std::unordered_map<std::string_view, std::string_view> originals;
  for (std::size_t i = 0; i < written.names.size(); ++i) {
    originals.emplace(written.names[i], netlist.nets[i].name);
  }
  for (NetRecord& record : result.nets) {
    const auto found = originals.find(record.name);
    record.name = found == originals.end() ? "$$" + record.name : std::string(found->second);
  }
  return result;
}

void prepare(Netlist& netlist, Format format, Report& report) {
  dropUnread(netlist, report);
  if (format == Format::Verilog) separateRegisters(netlist);
}

}  // namespace

std::optional<Format> formatOf(std::string_view word) {
  for (const Word& known : formatWords) {
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
  if (conversion.from == Format::Json) nameLoops(netlist);
  Netlist source = conversion.check ? netlist : Netlist();
  Report ofSource;  // the same notes again
  prepare(source, conversion.to, ofSource);
  const bool keepsOpen = conversion.to == Format::Tt2 || conversion.to == Format::Pla;
  if (!keepsOpen && settleDontCares(netlist)) {
    report.notes.emplace_back("don't-cares get a value, for the target has none");
  }
  prepare(netlist, conversion.to, report);
  checkPorts(netlist, report);
  const auto isLogic = [](const NetRecord& record) {
    return !std::holds_alternative<Undriven>(record.driver) &&
           !std::holds_alternative<FromOutside>(record.driver);
  };
  if (!keepsOpen && std::ranges::none_of(netlist.nets, isLogic)) {
    report.problems.emplace_back("no output and no register is left, and a module needs one");
  }
  if (!report.isClean()) return "";
  if (conversion.from == Format::Json || conversion.folding.flat) {
    fold(netlist, conversion.folding, report);
  }
  if (!report.isClean()) return "";
  Written written = write(netlist, conversion.to, report);
  if (!conversion.check || !report.isClean()) return written.text;
  Report ofReading;
  const Netlist again = readAgain(netlist, written, conversion.to, ofReading);
  for (const auto* lines : {&ofReading.faults, &ofReading.problems}) {
    report.problems.insert(report.problems.end(), lines->begin(), lines->end());
  }
  if (report.isClean()) checkEquivalence(source, again, checkEffort, report);
  return written.text;
}

}  // namespace ostrel::convert
