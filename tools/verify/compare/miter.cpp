#include "verify/compare/miter.h"

namespace ostrel::verify {

namespace {

// The Signals that are replaced when a side is built, and what their values read. A pin value that
// stays free ends the search.
Dependencies dependencies(const Network& network, std::vector<bool> replaced,
                          const std::vector<bool>& hasFreePin, std::vector<bool> canCut) {
  Dependencies result;
  result.reads.resize(network.signals.size());
  for (std::size_t s = 0; s < network.signals.size(); ++s) {
    if (!replaced[s]) continue;
    for (const std::size_t c : columnsOf(network, network.signals[s], Slot::Logic)) {
      const Column& column = network.columns[c];
      const bool isFree = hasFreePin[column.signal] && !column.readsInside();
      if (!isFree && replaced[column.signal]) result.reads[s].push_back(column.signal);
    }
  }
  result.replaced = std::move(replaced);
  result.canCut = std::move(canCut);
  return result;
}

// By Signal of INPUT.
std::vector<bool> replacedInInput(const Correspondence& c, CutPoints cutPoints) {
  std::vector<bool> replaced;
  for (std::size_t i = 0; i < c.in.signals.size(); ++i) {
    const Signal* out = c.partner(i);
    const bool isWanted =
        out == nullptr || (cutPoints == CutPoints::Loops && out->gives(Slot::Logic));
    replaced.push_back(isWanted && !c.registered[i] && c.in.signals[i].gives(Slot::Logic));
  }
  return replaced;
}

std::vector<bool> replacedInOutput(const Correspondence& c, const std::vector<bool>& inInput) {
  std::vector<bool> replaced;
  for (std::size_t o = 0; o < c.out.signals.size(); ++o) {
    const Signal& signal = c.out.signals[o];
    replaced.push_back(c.toIn[o] ? inInput[*c.toIn[o]]
                                 : !isRegistered(signal.type) && signal.gives(Slot::Logic));
  }
  return replaced;
}

using Partners = std::vector<std::optional<std::size_t>>;

std::vector<bool> isShared(const Partners& partners) {
  std::vector<bool> shared;
  for (const auto& partner : partners) shared.push_back(partner.has_value());
  return shared;
}

// What holds of the partners; what only one side has is out.
std::vector<bool> carry(const Partners& partners, const std::vector<bool>& flags) {
  std::vector<bool> carried;
  for (const auto& partner : partners) carried.push_back(partner && flags[*partner]);
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

Miter::Miter(const Correspondence& correspondence, bool flipFlopFirst, SolverWork& work)
    : correspondence_(correspondence),
      prover_(graph_, simulation_, work),
      readsInverted_(flipFlopFirst ? columnsInFrontOfMark(correspondence.out)
                                   : std::vector<bool>(correspondence.out.columns.size(), false)) {
  for (std::size_t i = 0; i < correspondence.in.signals.size(); ++i) {
    leaves_.own.push_back(graph_.variable());
    leaves_.pin.push_back(correspondence.twoValued[i] ? graph_.variable() : leaves_.own.back());
  }
  nameLeaves();
  seedVectors();
  prover_.setNames([this](std::size_t node) {
    const auto name = names_.find(node);
    return name == names_.end() ? std::string() : name->second;
  });
  plans_ = {makePlan(CutPoints::Shared), makePlan(CutPoints::Loops)};
  for (std::size_t i = 0; i < leaves_.own.size(); ++i) {
    const std::optional<std::size_t>& o = correspondence.toOut[i];
    if (o && plans_[1].out.cut[*o]) cutSignals_.push_back(i);
    if (!o && plans_[1].in.cut[i]) lostLoops_.push_back(i);
  }
}

Miter::Plan Miter::makePlan(CutPoints cutPoints) const {
  const Correspondence& c = correspondence_;
  const std::vector<bool> inReplaced = replacedInInput(c, cutPoints);
  Plan plan;
  plan.in = orderOf(dependencies(c.in, inReplaced, c.twoValued, isShared(c.toOut)),
                    std::vector<bool>(c.in.signals.size(), false));
  plan.out = orderOf(dependencies(c.out, replacedInOutput(c, inReplaced),
                                  carry(c.toIn, c.twoValued), isShared(c.toIn)),
                     carry(c.toIn, plan.in.cut));
  const std::vector<bool> cut = carry(c.toOut, plan.out.cut);
  std::erase_if(plan.in.signals, [&cut](std::size_t i) { return cut[i]; });
  return plan;
}

Literal Miter::openValue(std::size_t inSignal) {
  const auto [place, isNew] = openValues_.try_emplace(inSignal);
  if (isNew) {
    place->second = graph_.variable();
    openChoices_.push_back(place->second);
    names_[place->second.node()] =
        "(what INPUT leaves open in " + correspondence_.in.signals[inSignal].name + ")";
  }
  return place->second;
}

Views Miter::build(CutPoints cutPoints, const Values& leaves, const std::vector<Literal>& phases) {
  const Correspondence& c = correspondence_;
  const Plan& plan = plans_[static_cast<std::size_t>(cutPoints)];
  Values values;
  for (std::size_t o = 0; o < c.toIn.size(); ++o) {
    if (const std::optional<std::size_t> i = c.toIn[o]) {
      values.own.push_back(graph_.exclusiveOr(leaves.own[*i], phases[*i]));
      values.pin.push_back(graph_.exclusiveOr(leaves.pin[*i], phases[*i]));
    } else {
      values.own.push_back(graph_.variable());
      values.pin.push_back(values.own.back());
      names_[values.own.back().node()] = c.out.signals[o].name;
    }
  }
  const std::vector<bool> none(c.in.columns.size(), false);
  Views views{View(graph_, c.in, leaves, none),
              View(graph_, c.out, std::move(values), readsInverted_)};
  for (const std::size_t o : plan.out.signals) {
    views.out.substitute(o, falseLiteral, !(c.toIn[o] && c.twoValued[*c.toIn[o]]));
  }
  for (const std::size_t i : plan.in.signals) {
    const Literal open = c.toOut[i]
                             ? graph_.exclusiveOr(views.out.values().own[*c.toOut[i]], phases[i])
                             : openValue(i);
    views.in.substitute(i, open, !c.twoValued[i]);
  }
  return views;
}

Literal Miter::conflict(const Task& task, Views& views, const std::vector<Literal>& phases) {
  const Correspondence& c = correspondence_;
  const Meaning wanted = views.in.meaning(c.in.signals[task.signal], task.slot);
  Literal value = views.out.meaning(*c.partner(task.signal), task.outSlot).on;
  if (task.slot == Slot::Logic) value = graph_.exclusiveOr(value, phases[task.signal]);
  return verify::conflict(graph_, wanted, value);
}

Literal Miter::restOfLostNodes(Views& views) {
  std::vector<Literal> rests;
  for (const std::size_t i : lostLoops_) {
    const Meaning meaning = views.in.meaning(correspondence_.in.signals[i], Slot::Logic);
    const Literal next = settle(graph_, meaning, openValue(i));
    rests.push_back(!graph_.exclusiveOr(next, views.in.values().own[i]));
  }
  return graph_.conjunction(std::move(rests));
}

Literal Miter::restInInput(Views& views, const Values& leaves, const std::vector<Literal>& phases) {
  std::vector<Literal> rests;
  for (const std::size_t i : cutSignals_) {
    const Literal chosen = views.out.meaning(*correspondence_.partner(i), Slot::Logic).on;
    const Literal next =
        settle(graph_, views.in.meaning(correspondence_.in.signals[i], Slot::Logic),
               graph_.exclusiveOr(chosen, phases[i]));
    rests.push_back(!graph_.exclusiveOr(next, leaves.own[i]));
  }
  return graph_.conjunction(std::move(rests));
}

Literal Miter::restInOutput(Views& views, const Values& leaves,
                            const std::vector<Literal>& phases) {
  std::vector<Literal> rests;
  for (const std::size_t i : cutSignals_) {
    const Literal next = views.out.meaning(*correspondence_.partner(i), Slot::Logic).on;
    rests.push_back(!graph_.exclusiveOr(graph_.exclusiveOr(next, phases[i]), leaves.own[i]));
  }
  return graph_.conjunction(std::move(rests));
}

std::vector<Literal> Miter::lostLoopValues() const {
  std::vector<Literal> values;
  for (const std::size_t i : lostLoops_) values.push_back(leaves_.own[i]);
  return values;
}

// Half of the vectors stay random; the others each meet a row of one of the files.
void Miter::seedVectors() {
  simulation_.update();
  for (std::size_t vector = 0; vector < Simulation::vectors; vector += 2) {
    const bool fromInput = vector % 4 == 0;
    const Network& network = fromInput ? correspondence_.in : correspondence_.out;
    if (network.rows.empty()) continue;
    for (const RowLiteral literal : network.rows[simulation_.random() % network.rows.size()]) {
      const Column& column = network.columns[literal.column];
      std::optional<std::size_t> signal = column.signal;
      if (!fromInput) signal = correspondence_.toIn[column.signal];
      if (!signal) continue;
      const std::vector<Literal>& values = column.readsInside() ? leaves_.own : leaves_.pin;
      simulation_.set(values[*signal], vector, literal.positive);
    }
  }
}

// The first column that reads a value names it; INPUT's columns go in front of OUTPUT's.
void Miter::nameLeaves() {
  const Correspondence& c = correspondence_;
  const auto name = [this](std::size_t signal, const Column& column) {
    const std::vector<Literal>& values = column.readsInside() ? leaves_.own : leaves_.pin;
    names_.emplace(values[signal].node(), column.text);
  };
  for (const Column& column : c.in.columns) name(column.signal, column);
  for (const Column& column : c.out.columns) {
    if (c.toIn[column.signal]) name(*c.toIn[column.signal], column);
  }
  for (std::size_t i = 0; i < leaves_.own.size(); ++i) {
    names_.emplace(leaves_.own[i].node(), c.in.signals[i].name);
    names_.emplace(leaves_.pin[i].node(), c.in.signals[i].name + ".PIN");
  }
}

std::string Miter::describe(const std::vector<Literal>& assignment) const {
  std::string text;
  for (const Literal literal : assignment) {
    const auto name = names_.find(literal.node());
    text += " " + (name == names_.end() ? "?" : name->second);
    text += literal.isComplement() ? "=0" : "=1";
  }
  return text.empty() ? "always" : "with" + text;
}

}  // namespace ostrel::verify
