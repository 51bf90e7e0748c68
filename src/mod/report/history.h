// What a run does to each function, step by step, seen from outside: the passes know nothing of it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "design/design.h"

namespace ostrel {

/// What a function is to its Signal. The halves of a pair are one function, the main one.
enum class Role : unsigned char { Main, Clock, ClockEnable, Reset, Set, OutputEnable };
inline constexpr std::size_t roleCount = 6;

/// The Equations that say a function at the moment: one, two for a pair, none where it has none.
/// With terms they are those that would be written, in the order of their columns.
std::vector<const Equation*> equationsOf(const Signal& signal, Role role);

/// A function at one moment. Sets are counted over both halves of a pair.
struct FunctionState {
  int on = 0;
  int off = 0;
  bool isPair = false;
  bool isInverted = false;  ///< the sets say the complement of the Signal
  bool isWritten = false;   ///< it has terms and would stand in the output

  /// The terms that count: those of the ON set, those of the OFF set where there is no other.
  int terms() const { return on > 0 ? on : off; }
  friend bool operator==(const FunctionState&, const FunctionState&) = default;
};

FunctionState stateOf(const Signal& signal, Role role);

/// Why a function is written in the set that it is written in.
struct Choice {
  std::string_view why =
      "only";               ///< "only" one was there, "smaller", a "tie", "told", or an "xor" pair
  std::string_view toldBy;  ///< the option, where it was told
  int on = 0;               ///< what was weighed; 0 for a set that wasn't there
  int off = 0;
};

struct Change {
  std::string_view step;
  FunctionState state;
};

struct FunctionHistory {
  std::optional<FunctionState> state;  ///< after the last step; none if it isn't there
  std::vector<Change> changes;         ///< the first is the function as it was read or made
  Choice choice;
  std::string_view givenUpBy;  ///< the step after which it was no longer written, though its Signal
                               ///< stayed; empty for none
};

struct Message {
  std::string_view step;
  std::string kind;
  std::string text;
};

struct SignalHistory {
  std::string name;
  bool isNode = false;
  int pin = 0;
  RegisterType registerType = RegisterType::None;
  std::string_view madeBy;     ///< the step
  std::string_view removedBy;  ///< empty if it is still there
  std::array<FunctionHistory, roleCount> functions;
  std::vector<std::size_t> messages;  ///< those about it, by number
};

class History {
 public:
  /// Compares the design with what it was before. Names of steps outlive the history.
  void observe(std::string_view step, const Design& design);

  /// A message of the step that is under way.
  void hear(std::string_view kind, std::string_view text);

  /// No step follows: what was heard since the last one belongs to none.
  void close() { assignMessages(""); }

  /// All Signals that there ever were, in the order of creation.
  std::span<const SignalHistory> signals() const { return signals_; }
  std::span<const Message> messages() const { return messages_; }

 private:
  SignalHistory& entry(std::string_view step, const Signal& signal);
  void assignMessages(std::string_view step);

  std::vector<SignalHistory> signals_;
  std::unordered_map<std::string, std::size_t, NoCaseHash, NoCaseEqual> numbers_;  // by name
  std::vector<Message> messages_;
  std::size_t assigned_ = 0;  // messages whose step is known
};

}  // namespace ostrel
