#include "verify/turned_nodes.h"

namespace ostrel::verify {

namespace {

// A node that OUTPUT gives by a plain column; also one whose plain function was lost, since the
// readers may have been turned all the same.
bool canTurn(const Signal& in, const Signal& out) {
  const DataShape before = in.shape();
  const DataShape after = out.shape();
  if (after == DataShape::None) return before == DataShape::Logic;
  return in.isNode && after == DataShape::Logic && before != DataShape::None;
}

// Both .ASYNC and .SYNC are resets, so that an exchange leaves the function where it was.
bool hasWordsOfOneSlot(const Network& in, const Signal& signal) {
  if (!signal.has(Slot::Reset)) return false;
  const Extension e = in.function(signal, Slot::Reset).extension;
  return e == Extension::ASYNC || e == Extension::SYNC;
}

// Where a Signal's Set and Reset fail in the arrangement that its sense asks for.
class SetResetConflict {
 public:
  SetResetConflict(Graph& graph, const Pairing& pairing, const Excuses& excuses, bool exchanges,
                   Views& views)
      : graph_(graph), pairing_(pairing), excuses_(excuses), exchanges_(exchanges), views_(views) {}

  Literal of(std::size_t i, Literal sense) {
    const Signal& in = pairing_.in.signals[i];
    const Signal& out = *pairing_.partner(i);
    if (hasWordsOfOneSlot(pairing_.in, in)) return failing(i, Slot::Reset, Slot::Reset);
    const bool canExchange = exchanges_ && isGiven(in, Slot::Logic) && isGiven(out, Slot::Logic);
    const bool marks = pairing_.in.isInverted(in) != pairing_.out.isInverted(out);
    const Literal exchange = canExchange ? sense ^ marks : falseLiteral;
    const Literal straight =
        graph_.either(failing(i, Slot::Reset, Slot::Reset), failing(i, Slot::Set, Slot::Set));
    const Literal crossed =
        graph_.either(failing(i, Slot::Reset, Slot::Set), failing(i, Slot::Set, Slot::Reset));
    return graph_.either(graph_.both(exchange, crossed), graph_.both(!exchange, straight));
  }

 private:
  Literal failing(std::size_t i, Slot slot, Slot outSlot) {
    const Signal& out = *pairing_.partner(i);
    const auto wanted = meaningOf(views_.in, pairing_.in, pairing_.in.signals[i], slot);
    if (!wanted || (!out.has(outSlot) && excuses_.forMissing(i, slot, outSlot))) {
      return falseLiteral;
    }
    const auto given = meaningOf(views_.out, pairing_.out, out, outSlot);
    return given ? conflict(graph_, *wanted, given->on) : trueLiteral;
  }

  Graph& graph_;
  const Pairing& pairing_;
  const Excuses& excuses_;
  bool exchanges_;  // Set and Reset follow the polarity
  Views& views_;
};

}  // namespace

Senses findTurnedNodes(Comparer& comparer, const Pairing& pairing, const RunOptions& options,
                       const Excuses& excuses) {
  std::vector<std::size_t> candidates;
  std::vector<Task> tasks;
  std::vector<Task> excusable;  // the first to be given up where not all can hold
  std::vector<std::size_t> initialized;
  for (std::size_t i = 0; i < pairing.in.signals.size(); ++i) {
    const Signal& in = pairing.in.signals[i];
    const Signal* out = pairing.partner(i);
    if (out == nullptr) continue;
    if (canTurn(in, *out)) candidates.push_back(i);
    if (in.has(Slot::Reset) || in.has(Slot::Set)) initialized.push_back(i);
    for (const Slot s : {Slot::Logic, Slot::Clock, Slot::ClockEnable, Slot::OutputEnable}) {
      if (!isGiven(in, s) || !isGiven(*out, s)) continue;
      (excuses.forComplement(i, s, s) ? excusable : tasks).push_back({i, s, s});
    }
  }
  if (candidates.empty()) return comparer.senses();
  Scene& scene = comparer.scene();
  const auto search = [&](Recipe recipe) {
    return findSenses(scene, candidates, [&, recipe](const Values& leaves, const auto& senses) {
      Views views = scene.build(recipe, leaves, senses);
      SetResetConflict setReset(scene.graph(), pairing, excuses, options.swapSetReset, views);
      std::vector<Literal> conflicts;
      for (const Task& t : tasks) conflicts.push_back(comparer.conflict(t, views, senses));
      for (const std::size_t i : initialized) conflicts.push_back(setReset.of(i, senses[i]));
      for (const Task& t : excusable) conflicts.push_back(comparer.conflict(t, views, senses));
      return conflicts;
    });
  };
  // A function that fails anyway drags its readers along where it is replaced, and one that fails
  // only because it reads a pin that can be off has a sense all the same.
  Senses best = search(Recipe::SharedReplaced);
  for (const Recipe recipe : {Recipe::SharedFree, Recipe::PinsInside}) {
    if (best.settled && best.failing == 0) break;
    Senses other = search(recipe);
    if (other.settled && (!best.settled || other.failing < best.failing)) best = std::move(other);
  }
  return best;
}

}  // namespace ostrel::verify
