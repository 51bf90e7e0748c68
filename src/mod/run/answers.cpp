#include "run/answers.h"

#include <ostream>
#include <string>
#include <variant>

#include "run/option_table.h"

namespace ostrel {
namespace {

constexpr std::string_view page =
    R"page(ostrel -input design.tt2 [options]       optimizes a PLA file into design.tt3
ostrel -input design.tt2 --best -split 16    what we would do ourselves

Files
  -input FILE         what is read                    -output FILE   what is written
  -log FILE           messages, else on the console   -err FILE      errors
  -mod NAME           another name for the module     @FILE          options in a file
  -percent FILE       marks inverted outputs with %, and writes FILE without marks
  --report FILE       what was done to each function, as JSON; - for a table

Logic
  --best              --lossless --minimize --verify, and --factor with -split
  --lossless          no step gives a function or a kind of register up
  --verify            no output that ostrel-verify has not proven
  --minimize[=EFFORT] fewest terms for each function: fast, normal or deep
  -xor [on|off]       one term XOR a smaller sum      -nxt           but not at T registers
  -reduce none        no two-level minimization       -ifb [yes|no]  feedback inside the device
  -invert [yes|no]    outputs may be inverted         -type CHOICE   taken and not used

Fitting a device
  -split N            at most N terms in a function; the rest goes into nodes
  -share N            least that is worth a shared node, 2
  -cluster N          terms of a cluster, 5           -speed [yes|no]  cuts without sharing
  --factor[=PRICE]    with -split: nodes where functions share structure, at PRICE terms a node
  --depth N           at most N nodes one behind another
  -ff_inv [yes|no]    the register stands before the inverter
  -sr [yes|no]        set and reset then change places
  -ck, -ce, -ar, -ap, -oe [on|off|min]    which set of a clock, enable, reset, preset and
                                          output enable may keep its one term

The program
  --strict            a word without effect is an error, with what was probably meant
  --quiet             no line of progress on a terminal
  -GUI                a monitoring host runs this program
  --completion SHELL  a script for bash or zsh: eval "$(ostrel --completion bash)"
  --help, --version   this page; the version. -h prints the short help of old

Exit codes: 0 written; 1 a fault of the design, or not proven; 2 a file or a word.
Manual: man ostrel, man tt2. Where to begin: README.
)page";

/// The words from which the value of an option is taken; "file" for any file.
std::string_view valuesOf(const OptionRow& row) {
  if (row.word == "--completion") return "bash zsh";
  if (row.word == "-mod") return "";
  if (std::holds_alternative<NextPlainWord>(row.value)) return "file";
  if (std::holds_alternative<OwnWord>(row.value)) return "file";
  if (std::holds_alternative<SetChoice>(row.value)) return "on off min";
  return std::holds_alternative<YesNo>(row.value) ? "yes no" : "";
}

/// A function for bash, which zsh takes as well when asked to.
void printCompletion(std::ostream& out) {
  out << "_ostrel() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]}\n"
         "  case ${COMP_WORDS[COMP_CWORD-1]} in\n";
  std::string words;
  for (const OptionRow& row : optionTable) {
    words += std::string(words.empty() ? "" : " ") + std::string(row.word);
    if (std::holds_alternative<OwnEffort>(row.value)) {
      for (const char* effort : {"=fast", "=normal", "=deep"}) {
        words += " " + std::string(row.word) + effort;
      }
    }
    const std::string_view values = valuesOf(row);
    if (values.empty()) continue;
    out << "    " << row.word << ") COMPREPLY=($(compgen ";
    if (values == "file") {
      out << "-f";
    } else {
      out << "-W '" << values << "'";
    }
    out << " -- \"$word\")); [ ${#COMPREPLY[@]} -eq 0 ] || return ;;\n";
  }
  out << "  esac\n"
         "  case $word in\n"
         "    @*) COMPREPLY=($(compgen -P @ -f -- \"${word#@}\")) ;;\n"
         "    *) COMPREPLY=($(compgen -W '"
      << words
      << "' -- \"$word\")) ;;\n"
         "  esac\n"
         "}\n"
         "complete -o filenames -F _ostrel ostrel\n";
}

}  // namespace

int answer(const Options& opts, std::ostream& out, std::ostream& err) {
  if (opts.help) {
    out << page;
  } else if (opts.version) {
    out << "ostrel " OSTREL_VERSION "\n";
  } else if (opts.completion == "zsh") {
    out << "autoload -Uz bashcompinit && bashcompinit\n";
    printCompletion(out);
  } else if (opts.completion == "bash") {
    printCompletion(out);
  } else {
    err << "ostrel: --completion takes bash or zsh, and " << opts.completion << " is none\n";
    return 2;
  }
  out.flush();
  return 0;
}

}  // namespace ostrel
