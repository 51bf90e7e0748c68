#include "verify/comparer.h"

#include <algorithm>

#include "verify/form.h"

namespace ostrel::verify {

bool isGiven(const Signal& signal, Slot slot) {
  return slot == Slot::Logic ? signal.shape() != DataShape::None : signal.has(slot);
}

std::optional<Meaning> meaningOf(View& view, const Network& network, const Signal& signal,
                                 Slot slot) {
  if (!isGiven(signal, slot)) return std::nullopt;
  return slot == Slot::Logic ? view.data(signal) : view.meaning(network.function(signal, slot));
}

Comparer::Comparer(const Pairing& pairing, bool flipFlopFirst, int effort)
    : pairing_(pairing), scene_(pairing, flipFlopFirst, effort) {
  senses_.values.assign(pairing.in.signals.size(), falseLiteral);
}

Views& Comparer::views(Recipe recipe) {
  std::optional<Views>& known = views_[static_cast<std::size_t>(recipe)];
  if (!known) known = scene_.build(recipe, scene_.leaves(), senses_.values);
  return *known;
}

Meaning Comparer::wanted(const Task& task) {
  return *meaningOf(views(Recipe::SharedFree).in, pairing_.in, in(task.signal), task.slot);
}

Literal Comparer::conflict(const Task& task, Views& views, const std::vector<Literal>& senses,
                           bool complemented) {
  const Meaning wanted = *meaningOf(views.in, pairing_.in, in(task.signal), task.slot);
  const Meaning given = *meaningOf(views.out, pairing_.out, out(task.signal), task.outSlot);
  const Literal open = given.isComplete() ? falseLiteral : scene_.graph().variable();
  Literal value = settle(scene_.graph(), given, open);
  if (task.slot == Slot::Logic) value = scene_.graph().exclusiveOr(value, senses[task.signal]);
  return verify::conflict(scene_.graph(), wanted, value ^ complemented);
}

Answer Comparer::ask(const Task& task, Recipe recipe) {
  Answer answer;
  answer.recipe = recipe;
  Views& v = views(recipe);
  const Literal on = meaningOf(v.in, pairing_.in, in(task.signal), task.slot)->on;
  const Literal goal = conflict(task, v, senses_.values);
  answer.proof = scene_.prover().find(goal, answer.assignment, on);
  const bool choice =
      std::ranges::any_of(answer.assignment, [this](Literal l) { return scene_.isOpenChoice(l); });
  if (answer.proof == Proof::Found && choice) {
    const Literal certain = forAllChoices(goal).value_or(falseLiteral);
    answer.dependsOnChoice = scene_.prover().find(certain, answer.assignment, on) != Proof::Found;
  }
  return answer;
}

Answer Comparer::ask(const Task& task) {
  const Answer answer = ask(task, Recipe::SharedFree);
  return answer.proof == Proof::Never ? answer : ask(task, Recipe::SharedReplaced);
}

// True where the goal is, whatever is chosen for what INPUT leaves open; none if there is too much
// to choose from.
std::optional<Literal> Comparer::forAllChoices(Literal goal) {
  constexpr int mostChoices = 6;  // each may double the formula
  Graph& graph = scene_.graph();
  int choices = 0;
  for (const std::size_t node : graph.cone({goal})) {
    if (!scene_.isOpenChoice({static_cast<std::uint32_t>(2 * node)})) continue;
    if (++choices > mostChoices) return std::nullopt;
    goal = graph.both(graph.cofactor(goal, node, false), graph.cofactor(goal, node, true));
  }
  return goal;
}

bool Comparer::holdsAtRest(const Task& task, Recipe recipe, bool complemented) {
  Graph& graph = scene_.graph();
  Views& v = views(recipe);
  std::vector<Literal> goals{conflict(task, v, senses_.values, complemented)};
  for (const std::size_t c : scene_.cuts(recipe)) {
    const Meaning chosen = *v.out.data(out(c));  // rules where INPUT leaves the loop open
    const Literal open = graph.exclusiveOr(chosen.on, senses_.values[c]);
    const Literal rest = settle(graph, *v.in.data(in(c)), open);
    goals.push_back(!graph.exclusiveOr(rest, scene_.leaves().own[c]));
  }
  const std::optional<Literal> goal = forAllChoices(graph.conjunction(std::move(goals)));
  return goal && scene_.prover().isNever(*goal);
}

bool Comparer::isNeverOn(const Task& task) {
  return scene_.prover().isNever(wanted(task).on);
}

std::string Comparer::explain(const Task& task, const Answer& answer) {
  Views& v = views(answer.recipe);
  const Meaning wanted = *meaningOf(v.in, pairing_.in, in(task.signal), task.slot);
  const bool one = scene_.prover().evaluate(wanted.on, answer.assignment).value_or(false);
  return scene_.describe(answer.assignment) + computed(task, v.out, answer.assignment) +
         ": INPUT says " + (one ? "1" : "0") + ", OUTPUT says " + (one ? "0" : "1");
}

// The values that OUTPUT's function reads and that are not free themselves.
std::string Comparer::computed(const Task& task, View& view,
                               const std::vector<Literal>& assignment) {
  constexpr std::size_t most = 8;
  std::vector<std::string> values;
  for (const std::size_t c : columnsOf(pairing_.out, out(task.signal), task.outSlot)) {
    const Literal literal = view.column(c);
    if (scene_.graph().isVariable(literal.node()) && !literal.isComplement()) continue;
    const std::optional<bool> value = scene_.prover().evaluate(literal, assignment);
    if (!value || values.size() == most) continue;
    values.push_back(" " + pairing_.out.columns[c].text + (*value ? "=1" : "=0"));
  }
  std::string text;
  for (const std::string& value : values) text += value;
  return text.empty() ? text : ", so OUTPUT reads" + text;
}

}  // namespace ostrel::verify
