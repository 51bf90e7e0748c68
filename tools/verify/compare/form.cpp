#include "verify/compare/form.h"

#include <array>

namespace ostrel::verify {

namespace {

constexpr std::array<const char*, 8> typeNames = {"no register", "no register", "REG_D", "REG_T",
                                                  "REG_SR",      "REG_JK",      "REG_G", "REG_L"};

std::string typeName(RegisterType type) {
  return typeNames[static_cast<std::size_t>(type)];
}

// The half with the many terms stands in the left column. It is cut one term below the limit, but
// only asked for where that leaves a whole cluster; a cut down to one term is not promised at all.
std::size_t pairLimit(const Options& options) {
  if (options.splitMax < 3) return static_cast<std::size_t>(-1);
  const int spare = options.splitMax >= options.clusterSize - 1 ? 1 : 0;
  return static_cast<std::size_t>(options.splitMax - spare);
}

class FormCheck {
 public:
  FormCheck(const Correspondence& correspondence, const Options& options)
      : c_(correspondence), options_(options) {}

  std::vector<Finding> run() {
    if (c_.out.type != PlaType::f) report("OUTPUT", "its type is not f");
    for (std::size_t i = 0; i < c_.in.signals.size(); ++i) {
      if (c_.toOut[i])
        compareShared(i);
      else
        checkLost(c_.in.signals[i]);
    }
    for (std::size_t o = 0; o < c_.out.signals.size(); ++o) {
      if (!c_.toIn[o]) checkNew(c_.out.signals[o]);
      checkColumns(c_.out.signals[o]);
      checkLimit(o);
    }
    return std::move(found_);
  }

 private:
  void report(const std::string& subject, std::string detail) {
    found_.push_back(formDifference(subject, std::move(detail)));
  }

  void reportShared(std::size_t i, Kind kind, std::string detail) {
    report(c_.in.signals[i].name, std::move(detail));
    found_.back().kind = kind;
    found_.back().signal = i;
  }

  void compareShared(std::size_t i) {
    const Signal& in = c_.in.signals[i];
    const Signal& out = *c_.partner(i);
    if (in.isNode != out.isNode) {
      report(in.name, in.isNode ? "the node has become a pin" : "the pin has become a node");
    }
    if (in.pin != out.pin) {
      report(in.name,
             "its pin number was " + std::to_string(in.pin) + " and is " + std::to_string(out.pin));
    }
    if (in.declaredInverted != out.declaredInverted) {
      reportShared(i, Kind::Mark, "the mark of its declaration has changed");
    }
    compareTypes(i);
  }

  // A type without a value means nothing, so that it may go, but not come.
  void compareTypes(std::size_t i) {
    const Signal& in = c_.in.signals[i];
    const Signal& out = *c_.partner(i);
    const bool isSame = in.type == out.type || (!isRegistered(in.type) && !isRegistered(out.type));
    const bool hasValue = in.gives(Slot::Logic) && out.gives(Slot::Logic);
    if (isSame || (!hasValue && !isRegistered(out.type))) return;
    reportShared(i, Kind::Type,
                 "the register type was " + typeName(in.type) + " and is " + typeName(out.type));
  }

  // The run takes out what stands in no column, and combinational nodes.
  void checkLost(const Signal& signal) {
    if (!signal.inColumn) return;
    if (!signal.isNode) report(signal.name, "the pin is missing in OUTPUT");
    const bool holdsState =
        isRegistered(signal.type) && (signal.hasControl() || signal.gives(Slot::Logic));
    if (signal.isNode && holdsState) {
      report(signal.name, "the registered node is missing in OUTPUT");
    }
  }

  void checkNew(const Signal& signal) {
    if (!signal.isNode) {
      report(signal.name, "the pin is not in INPUT");
    } else if (isRegistered(signal.type) || signal.hasControl()) {
      report(signal.name, "the new node is not combinational");
    } else if (!signal.gives(Slot::Logic)) {
      report(signal.name, "the new node has no function");
    }
  }

  void checkColumns(const Signal& signal) {
    const bool hasHalf = signal.has(Slot::XorLeft) || signal.has(Slot::XorRight);
    if (hasHalf && signal.shape() != DataShape::Pair) {
      report(signal.name, "only one half of an XOR pair is left");
    }
    if (signal.shape() == DataShape::Pair && signal.has(Slot::Logic)) {
      report(signal.name, "a plain column stands beside the XOR pair");
    }
    for (const int slot : signal.slots) {
      if (slot == Signal::none) continue;
      const Function& f = c_.out.functions[static_cast<std::size_t>(slot)];
      if (!f.open.empty()) report(signal.name, "OUTPUT leaves points open");
      if (!f.off.empty()) report(signal.name, "OUTPUT has rows of 0");
    }
  }

  void checkLimit(std::size_t o) {
    if (options_.splitMax < 2) return;
    const Signal& signal = c_.out.signals[o];
    for (const Slot slot : signal.valueSlots()) {
      const std::size_t terms = c_.out.function(signal, slot).on.size();
      const std::size_t most =
          slot == Slot::XorLeft ? pairLimit(options_) : static_cast<std::size_t>(options_.splitMax);
      if (terms <= most) continue;
      report(signal.name,
             std::to_string(terms) + " terms, and the options allow " + std::to_string(most));
      found_.back().kind = Kind::Width;
      found_.back().signal = c_.toIn[o];
    }
  }

  const Correspondence& c_;
  const Options& options_;
  std::vector<Finding> found_;
};

}  // namespace

std::vector<Finding> formDifferences(const Correspondence& correspondence, const Options& options) {
  return FormCheck(correspondence, options).run();
}

std::vector<Finding> headerDifferences(const PlaFile& input, const PlaFile& output,
                                       const Options& options) {
  std::vector<Finding> found;
  if (output.termCapacity != output.termCount) {
    found.push_back(formDifference("OUTPUT", "it announces " + std::to_string(output.termCapacity) +
                                                 " rows and has " +
                                                 std::to_string(output.termCount)));
  }
  for (std::size_t p = 0; p < propertyWords.size(); ++p) {
    std::string wanted = input.properties[p];
    if (p == propertyModule && !options.module.empty()) wanted = "#$ MODULE " + options.module;
    const bool isNewDate = p == propertyDate && wanted.empty();
    // A property gains blanks on its way through the program.
    if (isNewDate || splitWords(wanted) == splitWords(output.properties[p])) continue;
    found.push_back(
        formDifference("OUTPUT", "the property " + std::string(propertyWords[p]) + " has changed"));
  }
  return found;
}

}  // namespace ostrel::verify
