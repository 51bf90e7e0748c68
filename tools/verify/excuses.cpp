#include "verify/excuses.h"

#include <algorithm>

namespace ostrel::verify {

namespace {

struct ControlOption {
  Slot slot;
  const char* word;
  SetChoice RunOptions::*choice;
};

constexpr ControlOption controlOptions[] = {
    {Slot::Clock, "-ck", &RunOptions::clock},
    {Slot::ClockEnable, "-ce", &RunOptions::clockEnable},
    {Slot::Reset, "-ar", &RunOptions::reset},
    {Slot::Set, "-ap", &RunOptions::set},
    {Slot::OutputEnable, "-oe", &RunOptions::outputEnable},
};

// The one literal that the rows come down to.
std::optional<RowLiteral> singleLiteral(const Network& network,
                                        const std::vector<std::uint32_t>& rows) {
  if (rows.size() != 1 || network.rows[rows.front()].size() != 1) return std::nullopt;
  return network.rows[rows.front()].front();
}

// Whether the first list has all terms of the second, which has some.
bool containsTerms(const Network& network, const std::vector<std::uint32_t>& all,
                   const std::vector<std::uint32_t>& some) {
  return !some.empty() && std::ranges::all_of(some, [&](std::uint32_t s) {
    return std::ranges::any_of(all,
                               [&](std::uint32_t a) { return network.rows[a] == network.rows[s]; });
  });
}

// Whether a function of several terms has all terms of the plain function of a Signal.
bool holdsTermsOf(const Network& network, const Function& f, const Signal& source) {
  if (!source.has(Slot::Logic) || (f.on.size() < 2 && f.off.size() < 2)) return false;
  const Function& g = network.function(source, Slot::Logic);
  return containsTerms(network, f.on, g.on) || containsTerms(network, f.off, g.off) ||
         containsTerms(network, f.on, g.off) || containsTerms(network, f.off, g.on);
}

bool bothHalvesMarked(const Network& network, const Signal& signal) {
  return network.function(signal, Slot::XorLeft).inverted &&
         network.function(signal, Slot::XorRight).inverted;
}

bool hasMarkedData(const Network& network, const Signal& signal) {
  return std::ranges::any_of(
      std::initializer_list<Slot>{Slot::Logic, Slot::XorLeft, Slot::XorRight},
      [&](Slot s) { return signal.has(s) && network.function(signal, s).inverted; });
}

}  // namespace

bool Excuses::keepsOnSet(std::size_t signal) const {
  const RegisterType type = pairing_.in.signals[signal].type;
  return !options_.reduce || (!options_.invert && isRegistered(type)) ||
         (options_.ffBeforeInverter && type == RegisterType::REG_T);
}

// Rows with 1 are all that such a step keeps, but for the constant 0.
bool Excuses::isDroppedByOnSet(const Function& f) const {
  return f.on.empty() && pairing_.in.obviousConstant(f) != false;
}

// A pair with a half that has no rows of 1 can have both halves exchanged with their OFF sets, of
// which only what was read is there; the empty half then takes the pair with it.
std::optional<std::string> Excuses::forMissingData(const Signal& signal, bool onSet) const {
  const Network& in = pairing_.in;
  if (signal.shape() == DataShape::Pair) {
    const bool hasEmptyHalf = in.function(signal, Slot::XorLeft).on.empty() ||
                              in.function(signal, Slot::XorRight).on.empty();
    if (!hasEmptyHalf) return std::nullopt;
    return "an XOR half without rows of 1: only the ON set of a half is kept";
  }
  if (onSet && isDroppedByOnSet(in.function(signal, Slot::Logic))) {
    return "the options keep the ON set, and there are no rows of 1";
  }
  return std::nullopt;
}

// The node whose value the rows of 1 or the rows of 0 of a plain function repeat or invert.
const Signal* Excuses::repeatedNode(const Signal& signal) const {
  const Network& in = pairing_.in;
  if (signal.shape() != DataShape::Logic) return nullptr;
  const Function& f = in.function(signal, Slot::Logic);
  for (const auto* rows : {&f.on, &f.off}) {
    const std::optional<RowLiteral> literal = singleLiteral(in, *rows);
    if (!literal) continue;
    const Signal& source = in.signals[in.columns[literal->column].signal];
    if (source.isNode) return &source;
  }
  return nullptr;
}

// A Signal that took over a pair shares its fate, through any number of Signals that repeat it.
std::optional<std::string> Excuses::forLostSource(const Signal& signal) const {
  const Signal* source = repeatedNode(signal);
  for (std::size_t steps = pairing_.in.signals.size(); source != nullptr && steps > 0; --steps) {
    if (source->shape() == DataShape::Pair) return forMissingData(*source, false);
    source = repeatedNode(*source);
  }
  return std::nullopt;
}

std::optional<std::string> Excuses::forMissing(std::size_t index, Slot slot, Slot outSlot) const {
  const Network& in = pairing_.in;
  const Signal& signal = in.signals[index];
  if (slot == Slot::Logic) {
    if (const auto reason = forMissingData(signal, keepsOnSet(index))) return reason;
    if (signal.shape() != DataShape::Logic) return std::nullopt;
    if (const auto reason = forLostSource(signal)) return reason;
  }
  const Function& f = in.function(signal, slot);
  if (in.type == PlaType::fd && f.on.empty() && f.off.empty()) {
    return "a column of an fd file without rows of 1 is dropped";
  }
  for (const ControlOption& control : controlOptions) {
    if (control.slot != slot && control.slot != outSlot) continue;
    const SetChoice choice = options_.*control.choice;
    if (choice == SetChoice::On && isDroppedByOnSet(f)) {
      return "the ON set of a control function is kept, and there are no rows of 1";
    }
    const bool keptConstant = in.obviousConstant(f) && !f.inverted;
    if (choice == SetChoice::Off && !keptConstant) {
      return std::string(control.word) + " off drops the function";
    }
  }
  return std::nullopt;
}

// The search for an XOR pair turns an inverted function round; where its ON set covers everything,
// the new ON set is empty and all that the options keep.
std::optional<std::string> Excuses::forMissingZero(std::size_t index) const {
  const Signal& signal = pairing_.in.signals[index];
  const bool turned = options_.xorSynthesis && options_.reduce &&
                      signal.shape() == DataShape::Logic && pairing_.in.isInverted(signal);
  if (!turned || !keepsOnSet(index)) return std::nullopt;
  return "the options keep the ON set, which was empty after the search for an XOR pair";
}

// A Signal that only repeats an XOR node takes over the node's pair and puts its own mark on both
// halves, where the two cancel.
std::optional<std::string> Excuses::forCollapse(std::size_t index) const {
  const Network& in = pairing_.in;
  const Signal& signal = in.signals[index];
  const Signal* out = pairing_.partner(index);
  if (out->shape() != DataShape::Pair || signal.shape() != DataShape::Logic) return std::nullopt;
  const Signal* source = repeatedNode(signal);
  if (source == nullptr) return std::nullopt;
  // Rows of 0 can become an inverted ON set.
  const bool becomesMarked = !in.function(signal, Slot::Logic).off.empty();
  const bool marked = becomesMarked || hasMarkedData(in, signal) || source->declaredInverted ||
                      hasMarkedData(in, *source) || bothHalvesMarked(pairing_.out, *out);
  if (!marked) return std::nullopt;
  return "it took over the XOR pair of " + source->name + ", and a mark stands on both halves";
}

// A control function or a half of several terms can become one literal of a Signal with the same
// terms, in the sense that the marks of the name give. Two halves can both be exchanged with their
// OFF sets after that, which turns the literal.
std::optional<std::string> Excuses::forLiteralSense(const Function& in, const Function& out,
                                                    bool isHalf) const {
  if (in.on.size() < 2 && in.off.size() < 2) return std::nullopt;
  const std::optional<RowLiteral> literal = singleLiteral(pairing_.out, out.on);
  if (!literal) return std::nullopt;
  const std::optional<std::size_t> i = pairing_.toIn[pairing_.out.columns[literal->column].signal];
  if (!i || pairing_.registered[*i]) return std::nullopt;
  const Signal& source = pairing_.in.signals[*i];
  if (!holdsTermsOf(pairing_.in, in, source)) return std::nullopt;
  const bool senseOfName = literal->positive == (source.inversionCount() != 1);
  if (!senseOfName && !isHalf && !options_.ffBeforeInverter) return std::nullopt;
  return "it became a literal of " + source.name + ", whose name marks gave the sense";
}

std::optional<std::string> Excuses::forComplement(std::size_t index, Slot slot,
                                                  Slot outSlot) const {
  const Signal& in = pairing_.in.signals[index];
  const Signal& out = *pairing_.partner(index);
  if (slot != Slot::Logic) {
    return forLiteralSense(pairing_.in.function(in, slot), pairing_.out.function(out, outSlot),
                           false);
  }
  if (const auto reason = forCollapse(index)) return reason;
  if (in.shape() != DataShape::Pair || out.shape() != DataShape::Pair) return std::nullopt;
  for (const Slot from : {Slot::XorLeft, Slot::XorRight}) {
    for (const Slot to : {Slot::XorLeft, Slot::XorRight}) {
      const auto reason =
          forLiteralSense(pairing_.in.function(in, from), pairing_.out.function(out, to), true);
      if (reason) return reason;
    }
  }
  return std::nullopt;
}

std::optional<std::string> Excuses::forUnreadNode(std::size_t index, Slot slot) const {
  const Network& in = pairing_.in;
  const std::vector<bool> unread = unreadColumns(pairing_);
  const auto find = [&](Slot s) -> std::optional<std::string> {
    if (!in.signals[index].has(s)) return std::nullopt;
    for (const std::uint32_t r : in.function(in.signals[index], s).off) {
      for (const RowLiteral l : in.rows[r]) {
        if (!unread[l.column]) continue;
        return "rows of 0 alone read " + in.signals[in.columns[l.column].signal].name +
               ", so it was removed as unread, and its literals with it";
      }
    }
    return std::nullopt;
  };
  if (slot != Slot::Logic) return find(slot);
  for (const Slot s : {Slot::Logic, Slot::XorLeft, Slot::XorRight}) {
    if (const auto reason = find(s)) return reason;
  }
  return std::nullopt;
}

bool Excuses::readsSignal(std::size_t index, Slot slot, std::size_t target) const {
  const Network& in = pairing_.in;
  const Signal& signal = in.signals[index];
  const auto reads = [&](Slot s) {
    if (!signal.has(s)) return false;
    const Function& f = in.function(signal, s);
    for (const auto* rows : {&f.on, &f.off}) {
      for (const std::uint32_t r : *rows) {
        for (const RowLiteral l : in.rows[r]) {
          if (in.columns[l.column].signal == target) return true;
        }
      }
    }
    return false;
  };
  return slot != Slot::Logic ? reads(slot)
                             : reads(slot) || reads(Slot::XorLeft) || reads(Slot::XorRight);
}

// Terms of the function stand for the source, if all the source's terms are among them.
bool Excuses::couldReuse(std::size_t index, Slot slot, const Signal& source) const {
  const Network& in = pairing_.in;
  const Signal& signal = in.signals[index];
  const bool shares = options_.splitMax >= 2 && !options_.speed;
  const auto holdsTerms = [&](Slot s) {
    return signal.has(s) && holdsTermsOf(in, in.function(signal, s), source);
  };
  if (slot != Slot::Logic) return holdsTerms(slot);
  return (shares && holdsTerms(slot)) || holdsTerms(Slot::XorLeft) || holdsTerms(Slot::XorRight);
}

std::optional<std::string> Excuses::forPinRead(std::size_t index, Slot slot,
                                               std::size_t pin) const {
  const Signal& source = pairing_.in.signals[pin];
  const Signal* out = pairing_.partner(pin);
  if (pairing_.registered[pin] || source.shape() == DataShape::None || out == nullptr) {
    return std::nullopt;
  }
  const bool reads = readsSignal(index, slot, pin);
  if (!out->has(Slot::OutputEnable) && reads &&
      forMissing(pin, Slot::OutputEnable, Slot::OutputEnable)) {
    return source.name + " lost its output enable, so its pin is read inside";
  }
  if (couldReuse(index, slot, source)) {
    return "terms that " + source.name + " already had are read at its pin, which can be off";
  }
  return std::nullopt;
}

std::optional<std::string> Excuses::forSetReset(std::size_t index, bool exchangeExpected) const {
  const Network& in = pairing_.in;
  const Signal& signal = in.signals[index];
  const Signal& out = *pairing_.partner(index);
  if (!options_.ffBeforeInverter) return std::nullopt;
  if (!options_.swapSetReset) {
    if (!exchangeExpected) return std::nullopt;
    return "-sr no keeps Set and Reset in place though the polarity has changed";
  }
  if (exchangeExpected && signal.has(Slot::Reset) && !signal.has(Slot::Set)) {
    const Extension e = in.function(signal, Slot::Reset).extension;
    if (e == Extension::ASYNC || e == Extension::SYNC) {
      return ".ASYNC and .SYNC were exchanged, but both are read as a reset";
    }
  }
  const bool constant = signal.shape() == DataShape::Logic &&
                        in.obviousConstant(in.function(signal, Slot::Logic)).has_value();
  if (out.shape() == DataShape::Pair || options_.xorSynthesis || options_.splitMax >= 2 ||
      constant) {
    return "the polarity changed outside the choice of sets, and Set and Reset did not follow";
  }
  return std::nullopt;
}

}  // namespace ostrel::verify
