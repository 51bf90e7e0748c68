#include "report/command.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>
#include <system_error>

#include "report/page.h"
#include "run/output_file.h"

namespace ostrel::report {
namespace {

constexpr int exitWritten = 0;
constexpr int exitUnusable = 2;
constexpr std::size_t mostRuns = 2;

constexpr std::string_view usage = "usage: ostrel-report RUN.json [OTHER.json] -o RUN.html\n";
constexpr std::string_view help =
    "\n"
    "Makes one page for a browser of a run of ostrel, or of two side by side. RUN.json is\n"
    "what `ostrel --report RUN.json` wrote.\n"
    "\n"
    "  -o FILE    the page; - is standard output\n"
    "  --help     show this text\n"
    "  --version  show the version\n"
    "\n"
    "Exit code: 0 written, 2 an unusable report or wrong usage.\n";

struct Command {
  bool help = false;
  bool version = false;
  std::vector<std::string> reports;
  std::string page;
  std::string fault;
};

Command readCommand(const std::vector<std::string>& arguments) {
  Command command;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (word == "--help") {
      command.help = true;
    } else if (word == "--version") {
      command.version = true;
    } else if (word == "-o") {
      if (i + 1 < arguments.size()) command.page = arguments[++i];
    } else if (word.starts_with('-')) {
      command.fault = "unknown option " + word;
    } else {
      command.reports.push_back(word);
    }
  }
  if (!command.fault.empty()) return command;
  if (command.page.empty()) command.fault = "-o needs the name of the page";
  const std::size_t count = command.reports.size();
  if (count == 0 || count > mostRuns) command.fault = "it takes one report or two";
  return command;
}

std::optional<std::string> readAll(const std::string& name) {
  std::error_code ignored;
  std::ifstream file(name, std::ios::binary);
  std::ostringstream text;
  if (!file || std::filesystem::is_directory(name, ignored)) return std::nullopt;
  text << file.rdbuf();
  return text.bad() || file.bad() ? std::nullopt : std::optional(text.str());
}

bool writeAll(const std::string& name, const std::string& text, std::ostream& out) {
  if (name == "-") return static_cast<bool>((out << text).flush());
  OutputFile file;
  return file.open(name) && file.write([&](std::ostream& stream) { stream << text; });
}

int fail(std::ostream& err, const std::string& text) {
  err << "ostrel-report: " << text << "\n";
  return exitUnusable;
}

int run(const Command& command, std::ostream& out, std::ostream& err) {
  std::vector<std::string> texts;
  for (const std::string& name : command.reports) {
    std::error_code ignored;
    if (std::filesystem::equivalent(name, command.page, ignored)) {
      return fail(err, command.page + ": the page would replace its report");
    }
    const std::optional<std::string> text = readAll(name);
    if (!text) return fail(err, name + ": it can't be read");
    const std::string fault = faultInReport(*text);
    if (!fault.empty()) return fail(err, std::string(name).append(": ").append(fault));
    texts.push_back(*text);
  }
  if (writeAll(command.page, makePage(texts), out)) return exitWritten;
  return fail(err, command.page + ": it can't be written");
}

}  // namespace

int reportMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const Command command = readCommand(arguments);
  if (command.help) {
    out << usage << help;
    return exitWritten;
  }
  if (command.version) {
    out << "ostrel-report " OSTREL_VERSION "\n";
    return exitWritten;
  }
  if (!command.fault.empty()) {
    err << "ostrel-report: " << command.fault << "\n" << usage;
    return exitUnusable;
  }
  return run(command, out, err);
}

}  // namespace ostrel::report
