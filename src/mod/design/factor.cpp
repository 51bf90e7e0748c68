// Nodes that find the structure, in the place of sharing terms and cutting.
//
// Idea. The functions go as covers into a network (factor/factor.h) and come back with nodes.
// Whether that is better than splitting is not guessed: both are carried out on copies that have
// the logic alone, through the same steps, and what costs less in terms, and nodes at their price,
// is done to the design. Each part of the network that shares nothing with the others has a choice
// of its own.
//
// Example. abx + acx and bdy + cdy and !b!cz under a limit of 1: with com_0 = b + c all three are
// single terms.
//
// Cost. That of the network, and of splitting and minimising twice more.
//
// Order. Functions in the order of logic(); parts in that of their first functions; the nodes of a
// part so that each reads older ones only, named like those of shared terms.
#include "factor/factor.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <string>
#include <utility>

#include "design/passes.h"
#include "logic/kept_sets.h"
#include "run/heart.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// A function that takes part: the logic of a Signal, or the right half of its XOR pair.
struct Member {
  Signal* signal;
  Slot slot;
  const Equation& equation() const { return *signal->slot(slot); }
};

std::vector<Member> membersOf(const Design& design) {
  std::vector<Member> members;
  for (Signal* signal : design.logic()) {
    const Slot slot = signal->hasXorPair() ? SlotXorRight : SlotLogic;
    const Equation* equation = signal->slot(slot);
    if (equation == nullptr || equation->onSet().empty() || equation->onHoldsUniversal()) continue;
    members.push_back({signal, slot});
  }
  return members;
}

/// Functions that have a term in common, which splitting may share.
std::vector<std::pair<std::size_t, std::size_t>> linksOf(std::span<const Member> members) {
  std::map<Term, std::size_t> owners;
  std::vector<std::pair<std::size_t, std::size_t>> links;
  for (std::size_t i = 0; i < members.size(); ++i) {
    for (const Term term : members[i].equation().onSet()) {
      const auto [owner, isNew] = owners.try_emplace(term, i);
      if (!isNew) links.emplace_back(owner->second, i);
    }
  }
  return links;
}

Network networkOf(const Design& design, std::span<const Member> members) {
  const auto limit = static_cast<std::size_t>(options().splitMax);
  Network network = {design.columns().size(), members.size(), {}, limit};
  for (const Member& member : members) {
    NetworkFunction& function = network.functions.emplace_back();
    function.on = cubesOf(member.equation().onSet(), design.terms());
    const bool isHalf = member.slot == SlotXorRight;
    function.limit = isHalf ? limit - 1 : limit;
    function.mayTurn = !isHalf && logicSelector(*member.signal) != SetSelector::On;
  }
  return network;
}

/// Gives the Signal the function, by the set that has fewer terms.
void setFunction(Signal& signal, Slot slot, const NetworkFunction& function, TermTable& terms) {
  assert(!function.on.empty());  // no function that takes part is 0 everywhere
  const Equation& old = *signal.slot(slot);
  Equation equation(terms);
  equation.extension = old.extension;
  equation.polarity = old.polarity;
  equation.xorRole = old.xorRole;
  equation.phase = old.phase;
  for (const Cube& cube : function.on) equation.addOnTerm(terms.term(cube));
  if (function.isTurned()) {
    for (const Cube& cube : function.off) equation.addOffTerm(terms.term(cube));
    equation.keepSets(SetSelector::Smaller);
  }
  signal.setSlot(slot, std::move(equation));
  signal.factored = true;
  signal.noteNewLogic();
}

/// Puts the functions of the network into the members, and its nodes at the end of the design.
void carryIn(Design& design, std::span<const Member> members, const Network& network) {
  assert(members.size() == network.outputs);
  for (std::size_t f = network.outputs; f < network.functions.size(); ++f) {
    const NetworkFunction& function = network.functions[f];
    const Term first = design.terms().term(Cube());
    Signal& node = design.createNodeFrom({&first, 1}, "com");
    setFunction(node, SlotLogic, function, design.terms());
  }
  for (std::size_t i = 0; i < members.size(); ++i) {
    setFunction(*members[i].signal, members[i].slot, network.functions[i], design.terms());
  }
}

/// A design of the members' logic alone, over the same columns.
struct Copy {
  Copy(const Design& design, std::span<const Member> originals) : copied(nothing) {
    PlaName record;
    record.base = "x";
    Signal& source = *copied.declare(record, false);
    for (std::size_t c = 0; c < design.columns().size(); ++c) {
      copied.addColumn(source, Extension::None);
    }
    for (const Member& member : originals) {
      const Signal& original = *member.signal;
      record.base = "f" + std::to_string(members.size());
      record.registerType = original.registerType;
      Signal& signal = *copied.declare(record, false);
      signal.registerType = original.registerType;
      if (isInitialized(original)) signal.makeEquation(SlotReset).makeConstant(true);
      signal.keepsSense = original.keepsSense;
      copy(design, original, member.slot, signal);
      if (member.slot == SlotXorRight) copy(design, original, SlotXorLeft, signal);
      members.push_back({&signal, member.slot});
    }
    copied.listLogic();
  }

  void copy(const Design& design, const Signal& original, Slot slot, Signal& signal) {
    const Equation& equation = *original.slot(slot);
    Equation& target = signal.makeEquation(slot);
    target.extension = Extension::None;
    target.xorRole = equation.xorRole;
    for (const Cube& cube : cubesOf(equation.onSet(), design.terms())) {
      target.addOnTerm(copied.terms().term(cube));
    }
  }

  PlaFile nothing;
  Design copied;
  std::vector<Member> members;
};

struct Layout {
  std::size_t terms = 0;
  std::size_t nodes = 0;
  std::size_t depth = 0;
  std::size_t cost(std::size_t price) const { return terms + price * nodes; }
  void add(const Layout& other) {
    terms += other.terms;
    nodes += other.nodes;
    depth = std::max(depth, other.depth);
  }
};

/// The most nodes of the copy that stand one behind another.
std::size_t depthOf(const Copy& copy) {
  const Design& design = copy.copied;
  std::vector<std::size_t> levels(design.columns().size(), 0);
  bool changed = true;
  while (changed) {
    changed = false;
    for (const Signal* signal : design.logic().subspan(copy.members.size())) {
      ColumnSet columns;
      for (const Term term : signal->slot(SlotLogic)->onSet()) {
        design.terms().cube(term).addSupportTo(columns);
      }
      std::size_t below = 0;
      columns.forEach([&](std::size_t column) { below = std::max(below, levels[column]); });
      std::size_t& level = levels[signal->columns.front()];
      changed |= level != below + 1;
      level = below + 1;
    }
  }
  return levels.empty() ? 0 : *std::max_element(levels.begin(), levels.end());
}

/// What the later steps make of the copy.
Layout layoutOf(Copy& copy) {
  Design& design = copy.copied;
  computeSupports(design);
  splitEquations(design);
  minimizeNewLogic(design);
  choosePolarity(design);
  Layout layout;
  layout.nodes = design.logic().size() - copy.members.size();
  for (const Signal* signal : design.logic()) {
    for (const Equation* equation : signal->mainEquations()) {
      layout.terms += static_cast<std::size_t>(equation->termCount(SetSelector::Smaller));
    }
  }
  layout.depth = depthOf(copy);
  return layout;
}

std::string words(const Layout& layout) {
  return std::to_string(layout.terms) + " terms and " + std::to_string(layout.nodes) +
         " nodes of depth " + std::to_string(layout.depth);
}

FactorLimits limitsOf(const Options& opts) {
  FactorLimits limits;
  limits.cluster = static_cast<std::size_t>(std::max(opts.clusterSize, 1));
  limits.price = opts.factorPrice > 0 ? static_cast<std::size_t>(opts.factorPrice) : limits.cluster;
  if (opts.factorDepth > 0) limits.depth = static_cast<std::size_t>(opts.factorDepth);
  return limits;
}

struct PartChoice {
  Layout before;
  Layout after;
  bool isTaken = false;
};

/// Carries the part of the network out where it costs less than splitting its functions.
PartChoice carryInCheaper(Design& design, std::span<const Member> all, const Network& network,
                          std::span<const std::size_t> functions, const FactorLimits& limits) {
  std::vector<Member> members;
  for (const std::size_t f : functions) {
    if (f < all.size()) members.push_back(all[f]);
  }
  const Network part = extracted(network, functions, design.columns().size());
  PartChoice change;
  {
    const LogPause pause;
    Copy first(design, members);
    change.before = layoutOf(first);
    Copy second(design, members);
    carryIn(second.copied, second.members, part);
    change.after = layoutOf(second);
  }
  change.isTaken = change.after.depth <= std::max(limits.depth, change.before.depth) &&
                   change.after.cost(limits.price) < change.before.cost(limits.price);
  if (change.isTaken) carryIn(design, members, part);
  return change;
}

}  // namespace

void factorLogic(Design& design) {
  const Options& opts = options();
  if (opts.factorPrice == 0) return;
  if (opts.splitMax < 2) {
    note({"--factor needs -split and has no effect without it"});
    return;
  }
  const FactorLimits limits = limitsOf(opts);
  const std::vector<Member> members = membersOf(design);
  Network network = networkOf(design, members);
  heartMsg();
  if (!factor(network, limits)) {
    note({"factoring is beyond the effort"});
    return;
  }
  PartChoice whole;
  for (const std::vector<std::size_t>& functions : partsOf(network, linksOf(members))) {
    const PartChoice change = carryInCheaper(design, members, network, functions, limits);
    whole.before.add(change.before);
    whole.after.add(change.isTaken ? change.after : change.before);
    whole.isTaken |= change.isTaken;
  }
  if (whole.isTaken) {
    computeSupports(design);
    note({"factoring makes ", words(whole.after), " of ", words(whole.before)});
  } else {
    note({"factoring is no better than splitting"});
  }
}

}  // namespace ostrel
