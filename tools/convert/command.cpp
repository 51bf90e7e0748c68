#include "convert/command.h"

#include <charconv>
#include <fstream>
#include <istream>
#include <optional>
#include <ostream>
#include <sstream>

#include "convert/convert.h"
#include "run/output_file.h"

namespace ostrel::convert {

namespace {

constexpr int exitWritten = 0;
constexpr int exitUnsayable = 1;
constexpr int exitUnusable = 2;

constexpr std::string_view usage = "usage: ostrel-convert [OPTION]... IN OUT\n";

constexpr std::string_view help =
    "\n"
    "Converts a design: IN is a JSON netlist of yosys (.json), a PLA file of espresso\n"
    "(.pla), or a .tt2 or .tt3 file; OUT is a .tt2 file for ostrel, Verilog (.v), BLIF\n"
    "(.blif) or .pla. The result is proven to mean what IN means before it is written.\n"
    "\n"
    "  --from FORMAT  json, pla, tt2 or tt3, whatever the suffix of IN says\n"
    "  --to FORMAT    tt2, v, blif or pla, whatever the suffix of OUT says\n"
    "  --terms N      keep a node where a reader would get more terms (default 16)\n"
    "  --flat         keep no nodes\n"
    "  --no-check     write without a proof\n"
    "  --help         show this text\n"
    "  --version      show the version\n"
    "\n"
    "IN and OUT can be -, the standard streams.\n"
    "Exit code: 0 written, 1 OUT can't say it, 2 unreadable IN or wrong usage.\n";

struct Command {
  bool help = false;
  bool version = false;
  std::optional<std::string> from;
  std::optional<std::string> to;
  Conversion conversion;
  std::vector<std::string> files;
  std::string fault;
};

bool readNumber(const std::string& text, std::size_t& number) {
  const char* last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  return error == std::errc() && end == last && number > 0;
}

void takeValue(const std::string& option, const std::string& value, Command& command) {
  if (option == "--from") {
    command.from = value;
  } else if (option == "--to") {
    command.to = value;
  } else if (!readNumber(value, command.conversion.folding.terms)) {
    command.fault = "--terms needs a number";
  }
}

Command readCommand(const std::vector<std::string>& arguments) {
  Command command;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    const std::size_t equals = std::min(word.find('='), word.size());
    const std::string option = word.substr(0, equals);
    if (word == "-" || !word.starts_with('-')) {
      command.files.push_back(word);
    } else if (word == "--help") {
      command.help = true;
    } else if (word == "--version") {
      command.version = true;
    } else if (word == "--flat") {
      command.conversion.folding.flat = true;
    } else if (word == "--no-check") {
      command.conversion.check = false;
    } else if (option != "--from" && option != "--to" && option != "--terms") {
      command.fault = "unknown option " + word;
    } else if (equals < word.size()) {
      takeValue(option, word.substr(equals + 1), command);
    } else if (i + 1 < arguments.size()) {
      takeValue(option, arguments[++i], command);
    } else {
      command.fault = option + " needs a value";
    }
  }
  if (command.fault.empty() && command.files.size() != 2) command.fault = "it takes IN and OUT";
  return command;
}

// By the word of the option, or by the suffix.
std::optional<Format> formatFor(const std::optional<std::string>& word, const std::string& file) {
  if (word) return formatOf(*word);
  const std::size_t dot = file.rfind('.');
  return dot == std::string::npos ? std::nullopt : formatOf(file.substr(dot + 1));
}

void chooseFormats(Command& command) {
  const std::optional<Format> from = formatFor(command.from, command.files[0]);
  const std::optional<Format> to = formatFor(command.to, command.files[1]);
  if (!from || !canRead(*from)) {
    command.fault = command.files[0] + ": its format can't be read; see --from";
  } else if (!to || !canWrite(*to)) {
    command.fault = command.files[1] + ": its format can't be written; see --to";
  } else {
    command.conversion.from = *from;
    command.conversion.to = *to;
  }
}

std::optional<std::string> readAll(const std::string& name, std::istream& in) {
  std::ifstream file;
  if (name != "-") file.open(name, std::ios::binary);
  std::istream& stream = name == "-" ? in : file;
  std::ostringstream text;
  if (!stream) return std::nullopt;
  text << stream.rdbuf();
  return text.bad() || stream.bad() ? std::nullopt : std::optional(text.str());
}

bool writeAll(const std::string& name, const std::string& text, std::ostream& out) {
  if (name == "-") return static_cast<bool>((out << text).flush());
  OutputFile file;
  return file.open(name) && file.write([&](std::ostream& stream) { stream << text; });
}

int fail(std::ostream& err, const std::string& text) {
  err << "ostrel-convert: " << text << "\n";
  return exitUnusable;
}

int run(const Command& command, std::istream& in, std::ostream& out, std::ostream& err) {
  const std::string& file = command.files[0];
  const std::optional<std::string> text = readAll(file, in);
  if (!text) return fail(err, file + ": it can't be read");
  Report report;
  const std::string result = convert(*text, file, command.conversion, report);
  for (const std::string& line : report.faults) err << line << "\n";
  for (const std::string& line : report.problems) err << file << ": " << line << "\n";
  if (!report.faults.empty()) return exitUnusable;
  if (!report.problems.empty()) return exitUnsayable;
  for (const std::string& line : report.notes) err << "note: " << file << ": " << line << "\n";
  if (writeAll(command.files[1], result, out)) return exitWritten;
  return fail(err, command.files[1] + ": it can't be written");
}

}  // namespace

int convertMain(const std::vector<std::string>& arguments, std::istream& in, std::ostream& out,
                std::ostream& err) {
  Command command = readCommand(arguments);
  if (command.help) {
    out << usage << help;
    return exitWritten;
  }
  if (command.version) {
    out << "ostrel-convert " OSTREL_VERSION "\n";
    return exitWritten;
  }
  if (command.fault.empty()) chooseFormats(command);
  if (!command.fault.empty()) {
    err << "ostrel-convert: " << command.fault << "\n" << usage;
    return exitUnusable;
  }
  return run(command, in, out, err);
}

}  // namespace ostrel::convert
