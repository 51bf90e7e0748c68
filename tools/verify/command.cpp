#include "verify/command.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <ostream>
#include <sstream>

#include "fil/pla_reader.h"
#include "fil/text.h"
#include "run/command_line.h"
#include "verify/check/strict_reader.h"
#include "verify/compare/judge.h"

namespace ostrel::verify {

namespace {

constexpr int exitProven = 0;
constexpr int exitDifferent = 1;
constexpr int exitUnusable = 2;
constexpr int exitUndecided = 3;

constexpr std::string_view standardInput = "-";

constexpr std::string_view usage =
    "usage: ostrel-verify [OPTION]... INPUT OUTPUT [OPTION OF THE RUN]...\n"
    "       ostrel-verify --check INPUT\n";

constexpr std::string_view help =
    "\n"
    "Proves function by function that OUTPUT, which ostrel wrote, means what INPUT means,\n"
    "or shows an assignment where it does not.\n"
    "\n"
    "Give the options that ostrel was run with, such as -xor -split 16: some of them say\n"
    "what OUTPUT may look like. A name of - stands for standard input.\n"
    "\n"
    "  --log FILE    take the options of the run from the log that it wrote\n"
    "  --list        one line for each function\n"
    "  --effort N    solver conflicts allowed for the whole run (default 1000000)\n"
    "  --export DIR  write the solver's questions and proofs to a folder\n"
    "  --check       read INPUT alone, strictly, and name what is wrong with it\n"
    "  --help        show this text\n"
    "  --version     show the version\n"
    "\n"
    "Exit code: 0 proven, 1 different, 2 unreadable INPUT or wrong usage,\n"
    "3 not decided within the effort.\n";

struct Command {
  bool help = false;
  bool version = false;
  bool check = false;
  bool list = false;
  std::string log;
  Judging judging;
  std::vector<std::string> words;  // the files and the options of the run
  std::string fault;               // what is wrong with the words, if anything
};

// The value of an option behind `=`, or the next word.
std::optional<std::string> valueOf(std::string_view option,
                                   const std::vector<std::string>& arguments, std::size_t& i) {
  const std::string& word = arguments[i];
  if (word.size() > option.size()) return word.substr(option.size() + 1);
  if (i + 1 == arguments.size()) return std::nullopt;
  return arguments[++i];
}

bool readEffort(const std::optional<std::string>& text, std::int64_t& effort) {
  if (!text) return false;
  const char* last = text->data() + text->size();
  const auto [end, error] = std::from_chars(text->data(), last, effort);
  return error == std::errc() && end == last && effort >= 0;
}

// False if the word is no option of the verifier.
bool readOwnOption(const std::vector<std::string>& arguments, std::size_t& i, Command& command) {
  const std::string& word = arguments[i];
  const auto is = [&](std::string_view option) {
    return word == option || word.starts_with(std::string(option) + "=");
  };
  if (word == "--help") {
    command.help = true;
  } else if (word == "--version") {
    command.version = true;
  } else if (word == "--list") {
    command.list = true;
  } else if (word == "--check") {
    command.check = true;
  } else if (is("--effort")) {
    const auto value = valueOf("--effort", arguments, i);
    if (!readEffort(value, command.judging.effort)) command.fault = "--effort needs a number";
  } else if (is("--export")) {
    const auto value = valueOf("--export", arguments, i);
    if (!value || value->empty()) command.fault = "--export needs a folder";
    command.judging.questions = value.value_or("");
  } else if (is("--log")) {
    const auto value = valueOf("--log", arguments, i);
    if (!value || value->empty()) command.fault = "--log needs a file";
    command.log = value.value_or("");
  } else {
    return false;
  }
  return true;
}

// Behind the two files an unknown word is one of the run's own.
Command readCommand(const std::vector<std::string>& arguments) {
  Command command;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i].starts_with("--") && readOwnOption(arguments, i, command)) continue;
    const bool isOption = arguments[i].starts_with('-') && arguments[i] != standardInput;
    if (isOption && command.words.size() < 2 && command.fault.empty()) {
      command.fault = "unknown option " + arguments[i];
    }
    command.words.push_back(arguments[i]);
  }
  const bool hasFiles = command.check ? command.words.size() == 1 : command.words.size() >= 2;
  if (command.fault.empty() && !hasFiles) {
    command.fault =
        command.check ? "--check takes one file" : "INPUT and OUTPUT must be given first";
  }
  return command;
}

// The whole text of a file, or of standard input for "-".
std::optional<std::string> readText(const std::string& name) {
  std::ifstream file;
  if (name != standardInput) file.open(name, std::ios::binary);
  if (name != standardInput && !file.is_open()) return std::nullopt;
  std::istream& stream = file.is_open() ? file : std::cin;
  std::ostringstream text;
  text << stream.rdbuf();  // fails for an empty file, and is bad for a folder
  return text.bad() ? std::nullopt : std::optional(text.str());
}

// What the reader says against a file; empty for nothing. An output that lost all its functions has
// no columns, which the reader refuses without a word.
std::string faultsOf(const std::optional<std::string>& text, PlaFile& file, bool isOutput) {
  if (!text) return "it can't be read";
  std::istringstream stream(*text);
  std::ostringstream notes;
  std::ostringstream faults;
  if (readPla(stream, Console{notes, faults}, file) != Status::Ok) {
    const bool isBare = isOutput && faults.str().empty() && file.count(NameKind::Pin) > 0;
    return isBare ? "" : notes.str() + faults.str() + "it is not a usable PLA file";
  }
  return isOutput ? faults.str() : "";
}

bool endsWell(std::string_view text) {
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text.ends_with(".end") && (text.size() == 4 || isSpace(text[text.size() - 5]));
}

// Why a text can't be what a run writes, from its head to `.end`; empty if it can.
std::string readOutput(const std::optional<std::string>& text, PlaFile& file) {
  std::string line;
  for (const std::string& word : splitWords(faultsOf(text, file, true))) {
    line += (line.empty() ? "" : " ") + word;
  }
  return line.empty() && !endsWell(*text) ? "it is cut off: .end is missing" : line;
}

// The options of a run, from its words behind the two files.
Options optionsOf(const Command& command) {
  std::vector<std::string> words{"ostrel", "-input", command.words[0], "-output", command.words[1]};
  words.insert(words.end(), command.words.begin() + 2, command.words.end());
  return parseCommandLine(words).options;
}

// The words of the command line in a log: its third line, behind the program's name.
std::vector<std::string> wordsInLog(const std::string& log) {
  std::ifstream stream(log);
  std::string line;
  for (int i = 0; i < 3; ++i) std::getline(stream, line);
  std::vector<std::string> words = splitWords(line);
  if (!words.empty()) words.erase(words.begin());
  return words;
}

// Under -percent a second file says with a dash what OUTPUT says with a percent sign.
std::string withDashes(std::string text) {
  bool isInNames = false;
  std::size_t wordBegin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isInNames && text[i] == '%') text[i] = '-';
    if (!isSpace(text[i])) continue;
    const std::string_view word = std::string_view(text).substr(wordBegin, i - wordBegin);
    if (word == ".ob") isInNames = true;
    if (word == ".p") isInNames = false;
    wordBegin = i + 1;
  }
  return text;
}

// A companion without a name, or with the name of INPUT or OUTPUT, is not written; it is not there
// yet while OUTPUT is on its way.
void compareCompanion(const Command& command, const std::string& name, const std::string& output,
                      Verdict& verdict) {
  if (command.words[1] == standardInput) return;
  std::error_code ignored;
  for (const std::string& other : {command.words[0], command.words[1]}) {
    if (name.empty() || std::filesystem::equivalent(name, other, ignored)) return;
  }
  const std::optional<std::string> companion = readText(name);
  if (companion == withDashes(output)) return;
  verdict.findings.push_back(formDifference(
      name, companion ? "it is not OUTPUT with dashes for percent signs" : "it can't be read"));
}

std::string_view outcomeText(Outcome outcome) {
  if (outcome == Outcome::Proven) return "proven";
  return outcome == Outcome::Different ? "different" : "undecided";
}

std::string functions(std::size_t n) {
  return std::to_string(n) + (n == 1 ? " function" : " functions");
}

void printFindings(const Verdict& verdict, bool list, std::ostream& out) {
  for (const Finding& f : verdict.findings) {
    if (f.outcome == Outcome::Proven && !list) continue;
    out << outcomeText(f.outcome) << ": " << f.subject;
    if (!f.detail.empty()) out << ": " << f.detail;
    out << "\n";
    if (!f.loss.empty()) out << "  probably: " << f.lossSentence << " (" << f.loss << ")\n";
  }
}

int report(const Verdict& verdict, bool list, std::ostream& out) {
  printFindings(verdict, list, out);
  const bool hasLoss =
      std::ranges::any_of(verdict.findings, [](const Finding& f) { return !f.loss.empty(); });
  if (hasLoss) out << "hint: a run with --lossless keeps what was probably lost\n";
  const std::size_t proven = verdict.count(Outcome::Proven);
  const std::size_t different = verdict.count(Outcome::Different);
  const std::size_t open = verdict.count(Outcome::Undecided);
  if (different + open == 0) {
    out << "proven: " << functions(proven) << "\n";
    return exitProven;
  }
  out << functions(proven) << " proven, " << different << " different, " << open << " undecided\n";
  return different > 0 ? exitDifferent : exitUndecided;
}

int fail(std::ostream& err, const std::string& text) {
  err << "ostrel-verify: " << text << "\n";
  return exitUnusable;
}

int check(const std::string& name, std::ostream& out, std::ostream& err) {
  const std::optional<std::string> text = readText(name);
  if (!text) return fail(err, name + ": it can't be read");
  const std::vector<Complaint> complaints = readStrictly(*text);
  for (const Complaint& c : complaints) out << name << ":" << c.line << ": " << c.text << "\n";
  return complaints.empty() ? 0 : 1;
}

Verdict judge(const PlaFile& input, const Command& command) {
  PlaFile output;
  const std::optional<std::string> text = readText(command.words[1]);
  const std::string fault = readOutput(text, output);
  if (!fault.empty()) return {{formDifference("OUTPUT", fault)}, {}};
  const Options options = optionsOf(command);
  Verdict verdict = verify(input, output, options, command.judging);
  if (options.percent) compareCompanion(command, options.percentFile, *text, verdict);
  return verdict;
}

int run(Command command, std::ostream& out, std::ostream& err) {
  PlaFile input;
  const std::string fault = faultsOf(readText(command.words[0]), input, false);
  if (!fault.empty()) return fail(err, command.words[0] + ": " + fault);
  if (!command.log.empty()) {
    const std::vector<std::string> words = wordsInLog(command.log);
    if (words.empty()) return fail(err, command.log + ": there is no command line in it");
    command.words.insert(command.words.begin() + 2, words.begin(), words.end());
  }
  const Verdict verdict = judge(input, command);
  for (const std::string& why : verdict.faults) fail(err, command.words[0] + ": " + why);
  return verdict.faults.empty() ? report(verdict, command.list, out) : exitUnusable;
}

}  // namespace

int verifyMain(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const Command command = readCommand(arguments);
  if (command.help) {
    out << usage << help;
    return exitProven;
  }
  if (command.version) {
    out << "ostrel-verify " OSTREL_VERSION "\n";
    return exitProven;
  }
  if (!command.fault.empty()) {
    err << "ostrel-verify: " << command.fault << "\n" << usage;
    return exitUnusable;
  }
  return command.check ? check(command.words[0], out, err) : run(command, out, err);
}

}  // namespace ostrel::verify
