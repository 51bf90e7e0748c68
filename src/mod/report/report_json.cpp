// The report as JSON. docs/report-schema.json says what each member means; it changes with this
// file.
#include <algorithm>
#include <array>
#include <utility>

#include "report/json_writer.h"
#include "report/report.h"
#include "run/option_table.h"
#include "run/options.h"

namespace ostrel {
namespace {

constexpr int schemaNumber = 1;

std::string_view registerName(RegisterType type) {
  constexpr std::array<std::string_view, 8> names = {"",       "",       "REG_D", "REG_T",
                                                     "REG_SR", "REG_JK", "REG_G", "REG_L"};
  return names[static_cast<std::size_t>(type)];
}

std::optional<std::string_view> unlessEmpty(std::string_view text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

class Writer {
 public:
  Writer(const RunReport& report, std::ostream& stream)
      : report_(report), json_(stream), before_(report.before), after_(report.after) {}

  void run() {
    json_.beginObject();
    json_.member("format", "ostrel-report");
    json_.member("schema", schemaNumber);
    json_.member("version", report_.version);
    json_.array("command", report_.words);
    writeOptions();
    writeFile("input", options().input, report_.input);
    writeFile("output", options().output, report_.output);
    json_.member("exit_code", report_.exitCode);
    json_.member("proven", options().verify && report_.exitCode == 0);
    const bool hasLimit = options().splitMax >= 2;
    json_.member("limit", hasLimit ? std::optional(options().splitMax) : std::nullopt);
    writeTotals("before", report_.before);
    writeTotals("after", report_.after);
    writeSteps();
    writeSignals();
    writeMessages();
    json_.array("columns", report_.after.inputs);
    writeRows();
    json_.endObject();
  }

 private:
  void writeValue(const std::string& text) { json_.value(unlessEmpty(text)); }
  void writeValue(bool isOn) { json_.value(isOn); }
  void writeValue(int number) { json_.value(number); }
  void writeValue(SetSelector set) {
    constexpr std::array<std::string_view, 3> words = {"off", "on", "min"};
    json_.value(words[static_cast<std::size_t>(set)]);
  }
  void writeValue(MinimizeEffort effort) {
    constexpr std::array<std::string_view, 4> words = {"none", "fast", "normal", "deep"};
    json_.value(words[static_cast<std::size_t>(effort)]);
  }

  void writeOptions() {
    json_.key("options").beginObject();
    for (const OptionRow& row : optionTable) {
      json_.key(row.word);
      std::visit([this](const auto& kind) { writeValue(options().*kind.field); }, row.value);
    }
    json_.endObject();
  }

  void writeFile(std::string_view key, const std::string& name,
                 const std::optional<FileHash>& hash) {
    json_.key(key).beginObject();
    json_.member("name", name);
    json_.member("bytes", hash ? std::optional(hash->bytes) : std::nullopt);
    json_.member("sha256", hash ? std::optional<std::string_view>(hash->sha256) : std::nullopt);
    json_.endObject();
  }

  void writeTotals(std::string_view key, const Measure& measure) {
    const Totals totals = totalsOf(measure);
    json_.key(key).beginObject();
    json_.member("pins", totals.pins);
    json_.member("nodes", totals.nodes);
    json_.member("functions", totals.functions);
    json_.member("xor_pairs", totals.pairs);
    json_.member("terms", totals.terms);
    json_.member("rows", totals.rows);
    json_.member("literals", totals.literals);
    json_.member("widest", totals.widest);
    json_.member("depth", totals.depth);
    json_.endObject();
  }

  void writeSteps() {
    json_.key("steps").beginArray();
    for (const StepTime& step : report_.steps) {
      json_.beginObject();
      json_.member("name", step.name);
      json_.member("seconds", step.seconds);
      json_.endObject();
    }
    json_.endArray();
  }

  void writeSignals() {
    json_.key("signals").beginArray();
    for (const SignalHistory& signal : report_.history.signals()) {
      const auto isThere = [](const FunctionHistory& f) { return f.state.has_value(); };
      if (signal.removedBy.empty() && std::ranges::none_of(signal.functions, isThere)) continue;
      writeSignal(signal);
    }
    json_.endArray();
  }

  void writeSignal(const SignalHistory& signal) {
    json_.beginObject();
    json_.member("name", signal.name);
    json_.member("kind", signal.isNode ? "node" : "pin");
    json_.member("pin", signal.pin > 0 ? std::optional(signal.pin) : std::nullopt);
    json_.member("register", unlessEmpty(registerName(signal.registerType)));
    json_.member("made_by", signal.madeBy);
    json_.member("removed_by", unlessEmpty(signal.removedBy));
    json_.key("functions").beginArray();
    for (std::size_t i = 0; i < roleCount; ++i) {
      if (signal.functions[i].state) writeFunction(signal, i);
    }
    json_.endArray();
    json_.array("messages", signal.messages);
    json_.endObject();
  }

  void writeFunction(const SignalHistory& signal, std::size_t role) {
    const FunctionHistory& function = signal.functions[role];
    const MeasuredFunction* after = after_.find(signal.name, role);
    json_.beginObject();
    json_.member("role", roleName(static_cast<Role>(role)));
    writeMeasured("before", before_.find(signal.name, role), false);
    writeMeasured("after", after, true);
    if (after != nullptr) writeChoice(function.choice, after->state);
    writeMinimized(function);
    const bool isGivenUp = !function.givenUpBy.empty() && signal.removedBy.empty();
    if (isGivenUp) {
      json_.key("given_up").beginObject();
      json_.member("by", function.givenUpBy);
      json_.member("why", whyGivenUp(function.givenUpBy));
      json_.endObject();
    }
    writeChanges(function);
    json_.endObject();
  }

  void writeMeasured(std::string_view key, const MeasuredFunction* function, bool withRows) {
    json_.key(key);
    if (function == nullptr) return json_.null();
    json_.beginObject();
    writeState(function->state);
    json_.member("literals", function->literals);
    json_.member("support", function->support);
    json_.array("reads", function->reads);
    json_.member("depth", function->depth);
    json_.key("columns").beginArray();
    for (const MeasuredColumn& column : function->columns) {
      json_.beginObject();
      json_.member("name", column.name);
      json_.member("terms", column.rows.size());
      if (withRows) json_.array("rows", column.rows);
      json_.endObject();
    }
    json_.endArray();
    json_.endObject();
  }

  void writeState(const FunctionState& state) {
    json_.member("terms", state.terms());
    json_.member("on", state.on);
    json_.member("off", state.off);
    json_.member("inverted", state.isInverted);
    json_.member("xor", state.isPair);
  }

  void writeChoice(const Choice& choice, const FunctionState& after) {
    json_.key("choice").beginObject();
    json_.member("set", after.isInverted ? "off" : "on");
    json_.member("why", choice.why);
    json_.member("told_by", unlessEmpty(choice.toldBy));
    json_.member("on", choice.on > 0 ? std::optional(choice.on) : std::nullopt);
    json_.member("off", choice.off > 0 ? std::optional(choice.off) : std::nullopt);
    json_.endObject();
  }

  /// The changes that the passes of --minimize made to the smaller set.
  void writeMinimized(const FunctionHistory& function) {
    const auto smaller = [](const FunctionState& state) {
      return state.on > 0 && state.off > 0 ? std::min(state.on, state.off) : state.terms();
    };
    json_.key("minimized").beginArray();
    for (std::size_t i = 1; i < function.changes.size(); ++i) {
      const Change& change = function.changes[i];
      if (!change.step.starts_with("minimize ")) continue;
      json_.beginObject();
      json_.member("by", change.step);
      json_.member("from", smaller(function.changes[i - 1].state));
      json_.member("to", smaller(change.state));
      json_.endObject();
    }
    json_.endArray();
  }

  void writeChanges(const FunctionHistory& function) {
    json_.key("history").beginArray();
    for (const Change& change : function.changes) {
      json_.beginObject();
      json_.member("step", change.step);
      writeState(change.state);
      json_.endObject();
    }
    json_.endArray();
  }

  void writeMessages() {
    json_.key("messages").beginArray();
    for (const Message& message : report_.history.messages()) {
      json_.beginObject();
      json_.member("step", message.step);
      json_.member("kind", message.kind);
      json_.member("text", message.text);
      json_.endObject();
    }
    json_.endArray();
  }

  void writeRows() {
    json_.key("rows").beginArray();
    for (const std::vector<long>& row : report_.after.rows) {
      json_.beginArray();
      for (const long literal : row) json_.value(literal);
      json_.endArray();
    }
    json_.endArray();
  }

  const RunReport& report_;
  JsonWriter json_;
  MeasureIndex before_;
  MeasureIndex after_;
};

}  // namespace

std::string_view roleName(Role role) {
  constexpr std::array<std::string_view, roleCount> names = {"main",  "clock", "clock enable",
                                                             "reset", "set",   "output enable"};
  return names[static_cast<std::size_t>(role)];
}

std::string_view whyGivenUp(std::string_view step) {
  if (step == "build") return "its column has no terms";
  if (step == "order XOR pairs") return "a half of its pair has no ON terms";
  if (step.starts_with("choose polarity")) return "the set that the options keep has no terms";
  return "no terms are left";
}

void writeJson(const RunReport& report, std::ostream& stream) {
  Writer(report, stream).run();
}

}  // namespace ostrel
