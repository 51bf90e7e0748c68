#include "verify/command.h"

#include <charconv>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>

#include "fil/pla_reader.h"
#include "verify/judge.h"

namespace ostrel::verify {

namespace {

constexpr int exitEquivalent = 0;
constexpr int exitDifferent = 1;
constexpr int exitUnusable = 2;
constexpr int exitNotComparable = 3;

constexpr std::string_view usage =
    "usage: ostrel-verify [--list] [--effort=N] INPUT OUTPUT [OPTION OF THE RUN]...\n";

constexpr std::string_view help =
    "\n"
    "Proves function by function that OUTPUT, which ostrel wrote, means what INPUT means,\n"
    "or shows an assignment where it does not.\n"
    "\n"
    "Give the options that ostrel was run with, such as -xor -split 16: some of them say\n"
    "what OUTPUT may look like. Those that name files are passed over.\n"
    "\n"
    "  --list      one line for each function\n"
    "  --effort=N  solver conflicts allowed for each question (default 1000000)\n"
    "  --help      show this text\n"
    "  --version   show the version\n"
    "\n"
    "Exit code: 0 equivalent, 1 different, 2 unreadable file or wrong usage,\n"
    "3 nothing differs, but something could not be compared.\n";

struct Command {
  bool help = false;
  bool version = false;
  bool list = false;
  int effort = defaultEffort;
  std::vector<std::string> words;  // the files and the options of the run
  std::string fault;               // what is wrong with the words, if anything
};

std::optional<int> readEffort(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && value >= 0 ? std::optional(value) : std::nullopt;
}

void readOwnOption(const std::vector<std::string>& arguments, std::size_t& i, Command& command) {
  const std::string& word = arguments[i];
  if (word == "--help") {
    command.help = true;
  } else if (word == "--version") {
    command.version = true;
  } else if (word == "--list") {
    command.list = true;
  } else if (word == "--effort" || word.starts_with("--effort=")) {
    const bool apart = word == "--effort" && i + 1 < arguments.size();
    const std::string value =
        apart ? arguments[++i] : word.substr(std::min<std::size_t>(9, word.size()));
    if (const std::optional<int> effort = readEffort(value))
      command.effort = *effort;
    else
      command.fault = "--effort needs a number";
  } else {
    command.fault = "unknown option " + word;
  }
}

Command readCommand(const std::vector<std::string>& arguments) {
  Command command;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i].starts_with("--"))
      readOwnOption(arguments, i, command);
    else
      command.words.push_back(arguments[i]);
  }
  const bool named = command.words.size() >= 2 && !command.words[0].starts_with('-') &&
                     !command.words[1].starts_with('-');
  if (command.fault.empty() && !named) command.fault = "INPUT and OUTPUT must be given first";
  return command;
}

// The reader's own lines are shown only where they explain a failure. An output that lost all its
// functions has no columns, which the reader refuses without a word.
bool readPla(const std::string& name, PlaFile& file, bool mayBeBare, std::ostream& err) {
  std::ifstream stream(name);
  if (!stream) {
    err << "ostrel-verify: cannot read " << name << "\n";
    return false;
  }
  std::ostringstream notes;
  std::ostringstream faults;
  if (ostrel::readPla(stream, Console{notes, faults}, file) == Status::Ok) return true;
  if (mayBeBare && faults.str().empty() && file.count(NameKind::Pin) > 0) return true;
  err << notes.str() << faults.str() << "ostrel-verify: " << name << " is not a usable PLA file\n";
  return false;
}

std::string_view outcomeText(Outcome outcome) {
  if (outcome == Outcome::Equivalent) return "equivalent";
  return outcome == Outcome::Different ? "different" : "not comparable";
}

std::string functions(std::size_t n) {
  return std::to_string(n) + (n == 1 ? " function" : " functions");
}

int report(const Verdict& verdict, bool list, std::ostream& out) {
  for (const Finding& f : verdict.findings) {
    if (f.outcome == Outcome::Equivalent && !list) continue;
    out << outcomeText(f.outcome) << ": " << f.subject;
    if (!f.detail.empty()) out << ": " << f.detail;
    out << "\n";
  }
  const std::size_t proven = verdict.count(Outcome::Equivalent);
  const std::size_t different = verdict.count(Outcome::Different);
  const std::size_t open = verdict.count(Outcome::NotComparable);
  if (different + open == 0) {
    out << "equivalent: " << functions(proven) << " proven\n";
    return exitEquivalent;
  }
  out << functions(proven) << " proven, " << different << " different, " << open
      << " not comparable\n";
  return different > 0 ? exitDifferent : exitNotComparable;
}

int run(const Command& command, std::ostream& out, std::ostream& err) {
  PlaFile input;
  PlaFile output;
  if (!readPla(command.words[0], input, false, err) ||
      !readPla(command.words[1], output, true, err)) {
    return exitUnusable;
  }
  const std::vector<std::string> words =
      expandOptionFiles({command.words.begin() + 2, command.words.end()});
  const Verdict verdict = verify(input, output, readRunOptions(words), command.effort);
  for (const std::string& fault : verdict.faults) {
    err << "ostrel-verify: " << command.words[0] << ": " << fault << "\n";
  }
  return verdict.faults.empty() ? report(verdict, command.list, out) : exitUnusable;
}

}  // namespace

int verifyMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const Command command = readCommand(arguments);
  if (command.help) {
    out << usage << help;
    return exitEquivalent;
  }
  if (command.version) {
    out << "ostrel-verify " OSTREL_VERSION "\n";
    return exitEquivalent;
  }
  if (!command.fault.empty()) {
    err << "ostrel-verify: " << command.fault << "\n" << usage;
    return exitUnusable;
  }
  return run(command, out, err);
}

}  // namespace ostrel::verify
