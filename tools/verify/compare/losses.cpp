#include "verify/compare/losses.h"

#include <algorithm>
#include <array>

namespace ostrel::verify {

namespace {

using enum Slot;

const Signal& before(const Correspondence& c, const Finding& f) {
  return c.in.signals[*f.signal];
}

const Function* functionOf(const Network& network, const Signal& signal, Slot slot) {
  return signal.has(slot) ? &network.function(signal, slot) : nullptr;
}

bool isControl(const Finding& f) {
  return f.slot != Logic;
}

bool isSetOrReset(const Finding& f) {
  return f.kind != Kind::Type && (f.slot == Reset || f.slot == Set);
}

SetSelector choiceOf(const Options& options, Slot slot) {
  switch (slot) {
    case Clock:
      return options.ckMode;
    case ClockEnable:
      return options.ceMode;
    case Reset:
      return options.arMode;
    case Set:
      return options.apMode;
    default:
      return options.oeMode;
  }
}

// The functions that give the value, or the control function.
std::vector<const Function*> functionsOf(const Network& network, const Signal& signal, Slot slot) {
  std::vector<const Function*> functions;
  const std::vector<Slot> slots = slot == Logic ? signal.valueSlots() : std::vector{slot};
  for (const Slot s : slots) {
    if (const Function* f = functionOf(network, signal, s)) functions.push_back(f);
  }
  return functions;
}

bool readsInRowsOfZero(const Correspondence& c, const Finding& f) {
  for (const Function* function : functionsOf(c.in, before(c, f), f.slot)) {
    for (const std::uint32_t r : function->off) {
      for (const RowLiteral l : c.in.rows[r]) {
        const std::size_t target = c.in.columns[l.column].signal;
        if (c.in.signals[target].isNode && !c.toOut[target]) return true;
      }
    }
  }
  return false;
}

// The node whose value a plain function repeats or inverts.
const Signal* repeatedNode(const Network& network, const Signal& signal) {
  if (signal.shape() != DataShape::Logic) return nullptr;
  const Function& f = network.function(signal, Logic);
  for (const auto* rows : {&f.on, &f.off}) {
    if (rows->size() != 1 || network.rows[rows->front()].size() != 1) continue;
    const RowLiteral literal = network.rows[rows->front()].front();
    const Signal& source = network.signals[network.columns[literal.column].signal];
    if (source.isNode) return &source;
  }
  return nullptr;
}

bool hasEmptyHalf(const Network& network, const Signal& signal) {
  if (signal.shape() == DataShape::LoneHalf) return true;
  return signal.shape() == DataShape::Pair && (network.function(signal, XorLeft).on.empty() ||
                                               network.function(signal, XorRight).on.empty());
}

// A reader of a pair shares its fate, through any number of Signals that repeat it.
bool losesPair(const Correspondence& c, const Finding& f) {
  const Signal* signal = &before(c, f);
  for (std::size_t steps = c.in.signals.size(); signal != nullptr && steps > 0; --steps) {
    if (hasEmptyHalf(c.in, *signal)) return true;
    signal = repeatedNode(c.in, *signal);
  }
  return false;
}

bool keepsEmptyOnSet(const Correspondence& c, const Options& options, const Finding& f) {
  if (f.kind != Kind::Missing) return false;
  const Signal& signal = before(c, f);
  const Function* function = functionOf(c.in, signal, f.slot);
  if (function == nullptr) return false;
  if (f.slot == Logic && options.xorSynthesis && c.in.isInverted(signal)) return true;
  return function->on.empty() && !(c.in.type == PlaType::fd && function->off.empty());
}

// The literal of another Signal that a function of several terms has become, or a part of it.
bool becameLiteral(const Correspondence& c, const Finding& f) {
  const Signal& signal = before(c, f);
  const bool hadTerms = std::ranges::any_of(
      functionsOf(c.in, signal, f.slot),
      [](const Function* function) { return function->on.size() > 1 || function->off.size() > 1; });
  const auto isLiteral = [&](const Function* function) {
    return function->on.size() == 1 && c.out.rows[function->on.front()].size() == 1;
  };
  const Slot twin = f.slot == Set ? Reset : f.slot == Reset ? Set : f.slot;
  return hadTerms &&
         (std::ranges::any_of(functionsOf(c.out, *c.partner(*f.signal), f.slot), isLiteral) ||
          std::ranges::any_of(functionsOf(c.out, *c.partner(*f.signal), twin), isLiteral));
}

// The Signals that a function reads, those behind new nodes of OUTPUT included.
std::vector<std::size_t> sourcesInOutput(const Correspondence& c, const Finding& f) {
  std::vector<std::size_t> sources;
  std::vector<bool> isKnown(c.out.signals.size());
  const auto add = [&](const Signal& signal, Slot slot) {
    for (const std::size_t column : columnsOf(c.out, signal, slot)) {
      const std::size_t s = c.out.columns[column].signal;
      if (!isKnown[s]) sources.push_back(s);
      isKnown[s] = true;
    }
  };
  add(*c.partner(*f.signal), f.slot);
  for (std::size_t k = 0; k < sources.size(); ++k) {
    if (!c.toIn[sources[k]]) add(c.out.signals[sources[k]], Logic);
  }
  return sources;
}

bool readsPinThatCanBeOff(const Correspondence& c, const Finding& f) {
  const auto isOff = [&](std::optional<std::size_t> s) { return s && c.twoValued[*s]; };
  return std::ranges::any_of(
             columnsOf(c.in, before(c, f), f.slot),
             [&](std::size_t column) { return isOff(c.in.columns[column].signal); }) ||
         std::ranges::any_of(sourcesInOutput(c, f),
                             [&](std::size_t s) { return isOff(c.toIn[s]); });
}

// The sense of a register is found by its set and reset, so that its value may be what differs.
bool hasSetOrReset(const Correspondence& c, const Finding& f) {
  return before(c, f).has(Set) || before(c, f).has(Reset);
}

// A marked register of INPUT that OUTPUT doesn't write.
bool readsLostMark(const Correspondence& c, const Finding& f) {
  return std::ranges::any_of(columnsOf(c.in, before(c, f), f.slot), [&](std::size_t column) {
    const std::size_t s = c.in.columns[column].signal;
    const Signal& source = c.in.signals[s];
    const Signal* after = c.partner(s);
    return source.gives(Slot::Logic) && c.in.isInverted(source) &&
           (after == nullptr || !after->gives(Slot::Logic));
  });
}

// The first that fits counts.
constexpr std::array<Loss, 15> table = {{
    {"A register type that the columns don't give back",
     "the type came from a declaration or from the order of the columns, which are written anew",
     [](const Correspondence&, const Options&, const Finding& f) { return f.kind == Kind::Type; }},
    {"A register that is wider again behind the cut",
     "XOR synthesis brought it to its ON set, which is wider than the limit",
     [](const Correspondence&, const Options& options, const Finding& f) {
       return f.kind == Kind::Width && options.xorSynthesis;
     }},
    {"Keeping the OFF set of a control function",
     "the options keep the OFF set of this function, and it has none",
     [](const Correspondence&, const Options& options, const Finding& f) {
       return f.kind == Kind::Missing && isControl(f) &&
              choiceOf(options, f.slot) == SetSelector::Off;
     }},
    {"An empty column of an `fd` file", "a column without rows of 1 is not written",
     [](const Correspondence& c, const Options&, const Finding& f) {
       const Function* function = functionOf(c.in, before(c, f), f.slot);
       return f.kind == Kind::Missing && c.in.type == PlaType::fd && function != nullptr &&
              function->on.empty();
     }},
    {"A pair with a half that has no ON terms",
     "a half without rows of 1, or without the other half, takes its pair with it",
     [](const Correspondence& c, const Options&, const Finding& f) {
       return !isControl(f) && losesPair(c, f);
     }},
    {"Keeping the ON set of a function that has none",
     "the ON set of this function is kept, and it is empty", keepsEmptyOnSet},
    {"`-ff_inv yes -sr no`", "-sr no keeps set and reset in place though the polarity has changed",
     [](const Correspondence&, const Options& options, const Finding& f) {
       return isSetOrReset(f) && options.ffBeforeInverter && !options.swapSetReset;
     }},
    {"Swapping `.SYNC` and `.ASYNC`", "the two words changed places, but both mean the reset",
     [](const Correspondence& c, const Options& options, const Finding& f) {
       const Function* function = functionOf(c.in, before(c, f), Reset);
       return isSetOrReset(f) && options.ffBeforeInverter && function != nullptr &&
              (function->extension == Extension::SYNC || function->extension == Extension::ASYNC);
     }},
    {"`-ff_inv yes` with `-ar off` or `-ap off`",
     "it moved to a place whose set the options choose otherwise",
     [](const Correspondence&, const Options& options, const Finding& f) {
       const bool isOff = options.arMode == SetSelector::Off || options.apMode == SetSelector::Off;
       return isSetOrReset(f) && options.ffBeforeInverter && isOff;
     }},
    {"`-ff_inv yes` and changes of polarity outside the choice of sets",
     "the polarity changed where set and reset don't follow",
     [](const Correspondence& c, const Options& options, const Finding& f) {
       return options.ffBeforeInverter &&
              (isSetOrReset(f) || (f.kind == Kind::Value && !isControl(f) && hasSetOrReset(c, f)));
     }},
    {"Folding by a reader with a mark",
     "it took over the XOR pair of a node, and the marks of both came with it",
     [](const Correspondence& c, const Options&, const Finding& f) {
       return f.kind == Kind::Mark || (f.kind == Kind::Value && !isControl(f) &&
                                       c.partner(*f.signal)->shape() == DataShape::Pair &&
                                       repeatedNode(c.in, before(c, f)) != nullptr);
     }},
    {"`-ff_inv yes` and a register that isn't written",
     "it reads a register inverted, whose mark went with its column",
     [](const Correspondence& c, const Options& options, const Finding& f) {
       return f.kind == Kind::Value && options.ffBeforeInverter && readsLostMark(c, f);
     }},
    {"Reading a node in its OFF set", "only rows of 0 read a node, which went as unread",
     [](const Correspondence& c, const Options&, const Finding& f) {
       return readsInRowsOfZero(c, f);
     }},
    {"A reused pin with an output enable",
     "it reads a pin that can be off, or one that lost its output enable",
     [](const Correspondence& c, const Options&, const Finding& f) {
       return f.kind == Kind::Value && readsPinThatCanBeOff(c, f);
     }},
    {"A control function that reads a Signal",
     "it became a literal of a Signal, in the sense that marks gave",
     [](const Correspondence& c, const Options&, const Finding& f) {
       return f.kind == Kind::Value && becameLiteral(c, f);
     }},
}};

// By Signal of a file, the loss that reached it: its own, or that of a Signal that it reads.
void spread(const Network& network, std::vector<const Finding*>& lossBySignal) {
  std::vector<std::vector<std::size_t>> readers(network.signals.size());
  std::vector<std::size_t> reached;
  for (std::size_t s = 0; s < network.signals.size(); ++s) {
    for (const std::size_t c : columnsOf(network, network.signals[s], Logic)) {
      readers[network.columns[c].signal].push_back(s);
    }
    if (lossBySignal[s] != nullptr) reached.push_back(s);
  }
  for (std::size_t k = 0; k < reached.size(); ++k) {
    const Finding* loss = lossBySignal[reached[k]];
    for (const std::size_t reader : readers[reached[k]]) {
      if (lossBySignal[reader] == nullptr) reached.push_back(reader);
      if (lossBySignal[reader] == nullptr) lossBySignal[reader] = loss;
    }
  }
}

// The loss of a Signal that the function reads, in INPUT or in OUTPUT.
class LossesOfSources {
 public:
  LossesOfSources(const Correspondence& c, const Options& options,
                  const std::vector<Finding>& findings)
      : c_(c), ffBeforeInverter_(options.ffBeforeInverter) {
    inInput_.resize(c.in.signals.size());
    inOutput_.resize(c.out.signals.size());
    for (const Finding& f : findings) {
      if (f.loss.empty()) continue;
      inInput_[*f.signal] = &f;
      if (c.toOut[*f.signal]) inOutput_[*c.toOut[*f.signal]] = &f;
    }
    spread(c.in, inInput_);
    spread(c.out, inOutput_);
  }

  const Finding* of(const Finding& f) const {
    // The sense of a register is found by its set and reset.
    const bool hangsOnOwn = isControl(f) || ffBeforeInverter_;
    if (hangsOnOwn && inInput_[*f.signal] != nullptr) return inInput_[*f.signal];
    for (const std::size_t c : columnsOf(c_.in, before(c_, f), f.slot)) {
      if (const Finding* loss = inInput_[c_.in.columns[c].signal]) return loss;
    }
    for (const std::size_t c : columnsOf(c_.out, *c_.partner(*f.signal), f.slot)) {
      if (const Finding* loss = inOutput_[c_.out.columns[c].signal]) return loss;
    }
    return nullptr;
  }

 private:
  const Correspondence& c_;
  bool ffBeforeInverter_;
  std::vector<const Finding*> inInput_;
  std::vector<const Finding*> inOutput_;
};

}  // namespace

std::span<const Loss> losses() {
  return table;
}

void nameLosses(const Correspondence& correspondence, const Options& options,
                std::vector<Finding>& findings) {
  const auto isNameless = [](const Finding& f) {
    return f.outcome == Outcome::Different && f.signal && f.loss.empty();
  };
  for (Finding& f : findings) {
    if (!isNameless(f)) continue;
    const auto loss = std::ranges::find_if(
        table, [&](const Loss& l) { return l.fits(correspondence, options, f); });
    if (loss != table.end()) f.loss = loss->id, f.lossSentence = loss->sentence;
  }
  if (std::ranges::none_of(findings, isNameless)) return;
  const LossesOfSources sources(correspondence, options, findings);
  for (Finding& f : findings) {
    if (!isNameless(f)) continue;
    if (const Finding* loss = sources.of(f))
      f.loss = loss->loss, f.lossSentence = loss->lossSentence;
  }
}

}  // namespace ostrel::verify
