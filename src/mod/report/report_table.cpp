// The report for people: a line for each function.
#include <algorithm>
#include <array>
#include <ostream>

#include "report/report.h"
#include "run/options.h"

namespace ostrel {
namespace {

constexpr std::size_t columnCount = 7;
using Line = std::array<std::string, columnCount>;

/// What stands behind the columns of a function.
std::string remarks(const SignalHistory& signal, const FunctionHistory& function,
                    const MeasuredFunction* after) {
  std::string text;
  const auto add = [&text](const std::string& remark) {
    text += (text.empty() ? "" : ", ") + remark;
  };
  if (!signal.removedBy.empty()) add("removed by \"" + std::string(signal.removedBy) + '"');
  if (signal.isNode && signal.madeBy != "build")
    add("made by \"" + std::string(signal.madeBy) + '"');
  if (after != nullptr && after->state.isPair) {
    add("XOR " + std::to_string(after->columns[0].rows.size()) + " + " +
        std::to_string(after->columns[1].rows.size()));
  }
  if (!function.givenUpBy.empty() && signal.removedBy.empty()) {
    add("GIVEN UP: " + std::string(whyGivenUp(function.givenUpBy)));
  }
  return text;
}

std::string chosenSet(const Choice& choice, const MeasuredFunction& after) {
  const std::string set = after.state.isInverted ? "OFF " : "ON ";
  return set + std::string(choice.toldBy.empty() ? choice.why : choice.toldBy);
}

Line lineOf(const SignalHistory& signal, std::size_t role, const MeasuredFunction* before,
            const MeasuredFunction* after) {
  Line line;
  line[0] = signal.name;
  if (role != 0) line[0] += " (" + std::string(roleName(static_cast<Role>(role))) + ')';
  const auto number = [](const auto* function, auto what) {
    return function == nullptr ? std::string("-") : std::to_string(what(*function));
  };
  const auto terms = [](const MeasuredFunction& f) { return f.state.terms(); };
  const auto literals = [](const MeasuredFunction& f) { return f.literals; };
  line[1] = number(before, terms);
  line[2] = number(after, terms);
  line[3] = number(before, literals);
  line[4] = number(after, literals);
  if (after != nullptr) {
    line[5] = after->depth ? std::to_string(*after->depth) : "loop";
    line[6] = chosenSet(signal.functions[role].choice, *after);
  }
  return line;
}

void writeLine(std::ostream& stream, const Line& line,
               const std::array<std::size_t, columnCount>& widths, const std::string& behind) {
  std::string text;
  for (std::size_t i = 0; i < columnCount; ++i) {
    const std::string gap(widths[i] - std::min(widths[i], line[i].size()), ' ');
    const bool isText = i == 0 || i + 1 == columnCount;
    text += isText ? line[i] + gap + "  " : gap + line[i] + "  ";
  }
  text += behind;
  text.erase(text.find_last_not_of(' ') + 1);
  stream << text << '\n';
}

Line totalLine(const Totals& before, const Totals& after) {
  return {"total",
          std::to_string(before.terms),
          std::to_string(after.terms),
          std::to_string(before.literals),
          std::to_string(after.literals),
          std::to_string(after.depth),
          std::to_string(after.rows) + " rows"};
}

}  // namespace

void writeTable(const RunReport& report, std::ostream& stream) {
  const MeasureIndex before(report.before);
  const MeasureIndex after(report.after);
  std::vector<std::pair<Line, std::string>> lines = {
      {{"function", "terms", "now", "literals", "now", "depth", "set"}, ""}};
  for (const SignalHistory& signal : report.history.signals()) {
    for (std::size_t role = 0; role < roleCount; ++role) {
      const FunctionHistory& function = signal.functions[role];
      if (!function.state) continue;
      const MeasuredFunction* now = after.find(signal.name, role);
      lines.emplace_back(lineOf(signal, role, before.find(signal.name, role), now),
                         remarks(signal, function, now));
    }
  }
  lines.emplace_back(totalLine(totalsOf(report.before), totalsOf(report.after)), "");
  std::array<std::size_t, columnCount> widths{};
  for (const auto& [line, behind] : lines) {
    for (std::size_t i = 0; i < columnCount; ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  for (const auto& [line, behind] : lines) writeLine(stream, line, widths, behind);
  stream.flush();
}

}  // namespace ostrel
