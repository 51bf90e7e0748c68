// Idea. After each step every function is looked at again; what differs from the step before is
// written down, and what the step decided is read from the two states. So no pass has to tell.
//
// Example. A function with 9 ON terms and 4 OFF terms that has 4 ON terms and an inversion after
// "choose polarity" was written in its OFF set because that is smaller.
//
// Cost. One walk over the Signals for each step; terms are counted and not looked at.
//
// Order. Signals stand in the order of creation.
#include "report/history.h"

#include <algorithm>
#include <utility>

#include "logic/kept_sets.h"

namespace ostrel {
namespace {

constexpr std::array<Slot, roleCount> roleSlots = {SlotLogic, SlotClock, SlotClockEnable,
                                                   SlotReset, SlotSet,   SlotOutputEnable};

/// The option that says which set of a control function stays.
std::string_view controlOption(Role role) {
  constexpr std::array<std::string_view, roleCount> words = {"", "-ck", "-ce", "-ar", "-ap", "-oe"};
  return words[static_cast<std::size_t>(role)];
}

/// What left no choice between the sets; empty if the smaller one was to stay.
std::string_view toldBy(const Signal& signal, Role role) {
  if (role == Role::Main) return signal.hasXorPair() ? "" : whyOnOnly(signal);
  const Slot slot = roleSlots[static_cast<std::size_t>(role)];
  return toldSet(signal, slot) == SetSelector::Smaller ? "" : controlOption(role);
}

/// The terms that say when the Signal is 1, and those that say when it is 0.
std::pair<int, int> onAndOff(const FunctionState& state) {
  return state.isInverted ? std::pair(state.off, state.on) : std::pair(state.on, state.off);
}

/// What a step chose that found `before` and left `after`; nothing if it made no choice.
std::optional<Choice> choiceOf(const FunctionState& before, const FunctionState& after,
                               std::string_view told) {
  const auto [on, off] = onAndOff(before);
  const auto [onNow, offNow] = onAndOff(after);
  if (after.isPair || before.isPair || (onNow > 0) == (offNow > 0)) return std::nullopt;
  if (on > 0 && off > 0) {
    const int kept = onNow > 0 ? on : off;
    const int other = onNow > 0 ? off : on;
    const bool isTold = kept > other || !told.empty();
    return Choice{isTold ? "told" : kept == other ? "tie" : "smaller", isTold ? told : "", on, off};
  }
  // One set came in place of the other, which the step worked out by itself.
  if ((on > 0) == (onNow > 0) || on + off == 0) return std::nullopt;
  return Choice{"smaller", "", on + onNow, off + offNow};
}

void note(FunctionHistory& function, std::string_view step, const FunctionState& state,
          std::string_view told) {
  if (function.state == state) return;
  if (function.state) {
    if (const auto choice = choiceOf(*function.state, state, told)) function.choice = *choice;
  }
  if (state.isPair) function.choice = {"xor", "", 0, 0};
  const bool wasWritten = !function.state || function.state->isWritten;
  if (state.isWritten) function.givenUpBy = "";
  if (wasWritten && !state.isWritten) function.givenUpBy = step;
  function.state = state;
  function.changes.push_back({step, state});
}

/// A set that follows an inversion of its register changes its place with the reset.
void forgetExchange(FunctionHistory& gone, const FunctionHistory& come, std::string_view step) {
  if (come.state && come.state->isWritten && come.changes.back().step == step &&
      gone.givenUpBy == step) {
    gone.givenUpBy = "";
  }
}

}  // namespace

std::vector<const Equation*> equationsOf(const Signal& signal, Role role) {
  std::vector<const Equation*> equations;
  if (role != Role::Main) {
    const Equation* equation = signal.slot(roleSlots[static_cast<std::size_t>(role)]);
    if (equation != nullptr) equations = {equation};
  } else if (signal.pairHasLogic()) {
    equations = {signal.slot(SlotXorLeft), signal.slot(SlotXorRight)};
  } else {
    for (const Slot slot : {SlotLogic, SlotXorLeft, SlotXorRight}) {
      if (signal.slot(slot) != nullptr) equations.push_back(signal.slot(slot));
    }
  }
  return equations;
}

FunctionState stateOf(const Signal& signal, Role role) {
  FunctionState state;
  for (const Equation* equation : equationsOf(signal, role)) {
    state.on += equation->onCount();
    // The single OFF term of a constant 0 stands for no product.
    const bool isZero = equation->onCount() == 0 && equation->isConstant(Constant::Either);
    if (!isZero) state.off += equation->offCount();
    state.isInverted ^= equation->polarity == Polarity::Inverted;
  }
  state.isPair = role == Role::Main && signal.pairHasLogic();
  state.isWritten = state.isPair || signal.slotHasLogic(roleSlots[static_cast<std::size_t>(role)]);
  return state;
}

SignalHistory& History::entry(std::string_view step, const Signal& signal) {
  const auto [place, isNew] = numbers_.emplace(signal.name, signals_.size());
  if (isNew) {
    signals_.push_back({.name = signal.name,
                        .isNode = signal.isNode,
                        .pin = signal.pinNumber,
                        .madeBy = step,
                        .removedBy = {},
                        .functions = {},
                        .messages = {}});
  }
  return signals_[place->second];
}

void History::observe(std::string_view step, const Design& design) {
  std::vector<bool> isThere(signals_.size());
  for (const auto& signal : design.signals()) {
    SignalHistory& seen = entry(step, *signal);
    isThere.resize(signals_.size());
    isThere[static_cast<std::size_t>(&seen - signals_.data())] = true;
    seen.removedBy = "";
    seen.registerType = signal->registerType;
    for (std::size_t i = 0; i < roleCount; ++i) {
      const Role role = static_cast<Role>(i);
      FunctionHistory& function = seen.functions[i];
      if (!function.state && equationsOf(*signal, role).empty()) continue;
      note(function, step, stateOf(*signal, role), toldBy(*signal, role));
    }
    FunctionHistory& reset = seen.functions[static_cast<std::size_t>(Role::Reset)];
    FunctionHistory& set = seen.functions[static_cast<std::size_t>(Role::Set)];
    forgetExchange(reset, set, step);
    forgetExchange(set, reset, step);
  }
  for (std::size_t i = 0; i < signals_.size(); ++i) {
    if (!isThere[i] && signals_[i].removedBy.empty()) signals_[i].removedBy = step;
  }
  assignMessages(step);
}

void History::hear(std::string_view kind, std::string_view text) {
  messages_.push_back({"", std::string(kind), std::string(text)});
  std::erase(messages_.back().text, '\a');
}

/// A message begins with the name that it is about, behind which a blank or an extension stands.
void History::assignMessages(std::string_view step) {
  constexpr std::string_view nodeWords = "buried node ";
  for (; assigned_ < messages_.size(); ++assigned_) {
    Message& message = messages_[assigned_];
    message.step = step;
    std::string_view text = message.text;
    if (text.starts_with(nodeWords)) text.remove_prefix(nodeWords.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::string name(text.substr(0, text.find(' ')));
    auto place = numbers_.find(name);
    while (place == numbers_.end() && name.find('.') != std::string::npos) {
      name.erase(name.rfind('.'));
      place = numbers_.find(name);
    }
    if (place != numbers_.end()) signals_[place->second].messages.push_back(assigned_);
  }
}

}  // namespace ostrel
