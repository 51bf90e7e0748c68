#include "verify/scene.h"

#include <algorithm>

namespace ostrel::verify {

namespace {

// The Signals that are replaced when a side is built, and what their values read.
class DependencyFinder {
 public:
  DependencyFinder(const Network& network, std::vector<bool> replaced,
                   const std::vector<bool>& onlyInside)
      : network_(network), onlyInside_(onlyInside), lastReader_(network.signals.size(), none) {
    result_.replaced = std::move(replaced);
    result_.reads.resize(network.signals.size());
  }

  Dependencies run(std::vector<bool> canCut) {
    for (std::size_t s = 0; s < network_.signals.size(); ++s) {
      if (!result_.replaced[s]) continue;
      const Signal& signal = network_.signals[s];
      if (signal.shape() == DataShape::Logic) addReads(s, Slot::Logic);
      if (signal.shape() == DataShape::Logic) continue;
      if (signal.has(Slot::XorLeft)) addReads(s, Slot::XorLeft);
      if (signal.has(Slot::XorRight)) addReads(s, Slot::XorRight);
    }
    result_.canCut = std::move(canCut);
    return std::move(result_);
  }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  void addReads(std::size_t s, Slot slot) {
    const Function& f = network_.function(network_.signals[s], slot);
    for (const std::uint32_t r : f.on) addRow(s, network_.rows[r]);
    for (const std::uint32_t r : f.off) addRow(s, network_.rows[r]);
    if (!network_.isListedOn(f)) return;  // what no row says is open without being listed
    for (const std::uint32_t r : f.open) addRow(s, network_.rows[r]);
  }

  void addRow(std::size_t s, const std::vector<RowLiteral>& row) {
    for (const RowLiteral literal : row) {
      const Column& column = network_.columns[literal.column];
      const std::size_t target = column.signal;
      const bool readsFree = onlyInside_[target] && !column.readsInside();
      if (readsFree || !result_.replaced[target] || lastReader_[target] == s) continue;
      lastReader_[target] = s;
      result_.reads[s].push_back(target);
    }
  }

  const Network& network_;
  const std::vector<bool>& onlyInside_;  // the pin value of these Signals is not replaced
  std::vector<std::size_t> lastReader_;
  Dependencies result_;
};

bool hasValue(const Signal& signal) {
  return signal.shape() == DataShape::Logic || signal.shape() == DataShape::Pair;
}

// By Signal of INPUT.
std::vector<bool> replacedInInput(const Pairing& p, Recipe recipe) {
  std::vector<bool> replaced;
  for (std::size_t i = 0; i < p.in.signals.size(); ++i) {
    const Signal* out = p.partner(i);
    const bool wanted =
        out == nullptr || (recipe != Recipe::SharedFree && out->shape() != DataShape::None);
    replaced.push_back(wanted && !p.registered[i] && hasValue(p.in.signals[i]));
  }
  return replaced;
}

std::vector<bool> replacedInOutput(const Pairing& p, const std::vector<bool>& inInput) {
  std::vector<bool> replaced;
  for (std::size_t o = 0; o < p.out.signals.size(); ++o) {
    const Signal& signal = p.out.signals[o];
    replaced.push_back(p.toIn[o] ? inInput[*p.toIn[o]]
                                 : !isRegistered(signal.type) && signal.shape() != DataShape::None);
  }
  return replaced;
}

template <typename Partners>
std::vector<bool> isShared(const Partners& partners) {
  std::vector<bool> shared;
  for (const auto& partner : partners) shared.push_back(partner.has_value());
  return shared;
}

// A cut is made on both sides. What only one side has takes part as not cut.
template <typename Partners>
std::vector<bool> carryCuts(const Partners& partners, const std::vector<bool>& cuts) {
  std::vector<bool> carried;
  for (const auto& partner : partners) carried.push_back(partner && cuts[*partner]);
  return carried;
}

std::vector<bool> columnsInFrontOfMark(const Network& out) {
  std::vector<bool> inverted;
  for (const Column& column : out.columns) {
    const Signal& signal = out.signals[column.signal];
    const bool inFront = column.extension == Extension::D || column.extension == Extension::Q ||
                         column.extension == Extension::FB;
    inverted.push_back(inFront && !signal.isNode && signal.shape() == DataShape::Logic &&
                       out.isInverted(signal));
  }
  return inverted;
}

}  // namespace

Scene::Scene(const Pairing& pairing, bool flipFlopFirst, int effort)
    : pairing_(pairing),
      prover_(graph_, simulation_, effort),
      readsInverted_(flipFlopFirst ? columnsInFrontOfMark(pairing.out)
                                   : std::vector<bool>(pairing.out.columns.size(), false)) {
  for (std::size_t i = 0; i < pairing.in.signals.size(); ++i) {
    leaves_.own.push_back(graph_.variable());
    leaves_.pin.push_back(pairing.twoValued[i] ? graph_.variable() : leaves_.own.back());
  }
  nameLeaves();
  seedVectors();
  for (const Recipe r :
       {Recipe::SharedFree, Recipe::SharedReplaced, Recipe::PinsInside, Recipe::UnreadIgnored}) {
    plans_[static_cast<std::size_t>(r)] = makePlan(r);
  }
}

Scene::Plan Scene::makePlan(Recipe recipe) const {
  const Pairing& p = pairing_;
  std::vector<bool> freePins = p.twoValued;
  if (recipe == Recipe::PinsInside) freePins.assign(freePins.size(), false);
  const std::vector<bool> inReplaced = replacedInInput(p, recipe);
  const std::vector<bool> freeOut = carryCuts(p.toIn, freePins);
  Plan plan;
  plan.in = orderOf(DependencyFinder(p.in, inReplaced, freePins).run(isShared(p.toOut)),
                    std::vector<bool>(p.in.signals.size(), false));
  plan.out = orderOf(
      DependencyFinder(p.out, replacedInOutput(p, inReplaced), freeOut).run(isShared(p.toIn)),
      carryCuts(p.toIn, plan.in.cut));
  const std::vector<bool> cut = carryCuts(p.toOut, plan.out.cut);
  std::erase_if(plan.in.signals, [&cut](std::size_t i) { return cut[i]; });
  return plan;
}

Views Scene::build(Recipe recipe, Values leaves, const std::vector<Literal>& senses) {
  const Pairing& p = pairing_;
  const Plan& plan = plans_[static_cast<std::size_t>(recipe)];
  const bool pinsInside = recipe == Recipe::PinsInside;
  for (std::size_t i = 0; pinsInside && i < leaves.pin.size(); ++i) {
    if (!p.registered[i] && hasValue(p.in.signals[i])) leaves.pin[i] = leaves.own[i];
  }
  Values values;
  for (std::size_t o = 0; o < p.toIn.size(); ++o) {
    if (const std::optional<std::size_t> i = p.toIn[o]) {
      values.own.push_back(graph_.exclusiveOr(leaves.own[*i], senses[*i]));
      values.pin.push_back(graph_.exclusiveOr(leaves.pin[*i], senses[*i]));
    } else {
      values.own.push_back(graph_.variable());
      values.pin.push_back(values.own.back());
      names_[values.own.back().node()] = p.out.signals[o].name;
    }
  }
  const std::vector<bool> none(std::max(p.in.columns.size(), p.out.columns.size()), false);
  Views views{
      View(graph_, p.in, leaves, none, recipe == Recipe::UnreadIgnored ? unreadColumns(p) : none),
      View(graph_, p.out, std::move(values), readsInverted_, none)};
  for (const std::size_t o : plan.out.signals) {
    views.out.substitute(o, graph_.variable(), pinsInside || !p.isTwoValuedOut(o));
  }
  for (const std::size_t i : plan.in.signals) {
    Literal open = graph_.variable();
    if (p.toOut[i]) {
      open = graph_.exclusiveOr(views.out.values().own[*p.toOut[i]], senses[i]);
    } else {
      openChoices_.insert(open.node());
      names_[open.node()] = "(what INPUT leaves open in " + p.in.signals[i].name + ")";
    }
    views.in.substitute(i, open, pinsInside || !p.twoValued[i]);
  }
  return views;
}

std::vector<std::size_t> Scene::cuts(Recipe recipe) const {
  std::vector<std::size_t> found;
  const std::vector<bool>& cut = plans_[static_cast<std::size_t>(recipe)].out.cut;
  for (std::size_t o = 0; o < cut.size(); ++o) {
    if (cut[o] && pairing_.toIn[o]) found.push_back(*pairing_.toIn[o]);
  }
  return found;
}

// Half of the vectors stay random; the others each meet a row of one of the files.
void Scene::seedVectors() {
  simulation_.update();
  for (std::size_t vector = 0; vector < Simulation::vectors; vector += 2) {
    const bool fromInput = vector % 4 == 0;
    const Network& network = fromInput ? pairing_.in : pairing_.out;
    if (network.rows.empty()) continue;
    for (const RowLiteral literal : network.rows[simulation_.random() % network.rows.size()]) {
      const Column& column = network.columns[literal.column];
      std::optional<std::size_t> signal = column.signal;
      if (!fromInput) signal = pairing_.toIn[column.signal];
      if (!signal) continue;
      const std::vector<Literal>& values = column.readsInside() ? leaves_.own : leaves_.pin;
      simulation_.set(values[*signal], vector, literal.positive);
    }
  }
}

// The first column that reads a value names it; INPUT's columns go in front of OUTPUT's.
void Scene::nameLeaves() {
  const auto name = [this](std::size_t signal, const Column& column) {
    const std::vector<Literal>& values = column.readsInside() ? leaves_.own : leaves_.pin;
    names_.emplace(values[signal].node(), column.text);
  };
  for (const Column& column : pairing_.in.columns) name(column.signal, column);
  for (const Column& column : pairing_.out.columns) {
    if (pairing_.toIn[column.signal]) name(*pairing_.toIn[column.signal], column);
  }
  for (std::size_t i = 0; i < leaves_.own.size(); ++i) {
    names_.emplace(leaves_.own[i].node(), pairing_.in.signals[i].name);
    names_.emplace(leaves_.pin[i].node(), pairing_.in.signals[i].name + ".PIN");
  }
}

std::string Scene::describe(const std::vector<Literal>& assignment) const {
  std::string text;
  for (const Literal literal : assignment) {
    const auto name = names_.find(literal.node());
    text += name == names_.end() ? " (what OUTPUT leaves open)" : " " + name->second;
    text += literal.isComplement() ? "=0" : "=1";
  }
  return text.empty() ? "always" : "with" + text;
}

}  // namespace ostrel::verify
