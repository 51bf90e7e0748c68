#include "verify/pairing.h"

#include "verify/prover.h"
#include "verify/view.h"

namespace ostrel::verify {

namespace {

// The enable as a function of its columns, each Signal's two values taken as independent.
bool isAlwaysOn(const Network& network, const Function& enable, int effort) {
  if (const auto constant = network.obviousConstant(enable)) return *constant;
  Graph graph;
  Values values;
  for (std::size_t i = 0; i < network.signals.size(); ++i) {
    values.own.push_back(graph.variable());
    values.pin.push_back(graph.variable());
  }
  const std::vector<bool> none(network.columns.size(), false);
  View view(graph, network, std::move(values), none, none);
  const Literal on = view.meaning(enable).on;
  Simulation simulation(graph);
  return Prover(graph, simulation, effort).isNever(!on);
}

bool canBeOff(const Network& network, const Signal& signal, int effort) {
  return !signal.isNode && signal.has(Slot::OutputEnable) &&
         !isAlwaysOn(network, network.function(signal, Slot::OutputEnable), effort);
}

RegisterType combinationalAsOne(RegisterType type) {
  return isRegistered(type) ? type : RegisterType::None;
}

// The declared type is not written back, so OUTPUT is read on top of the one of INPUT. The halves
// of a plain function's pair have no word that would say again that it is combinational.
RegisterType typeInOutput(const Network& in, const Signal& before, const Network& out,
                          const Signal& after) {
  const bool becamePair = before.shape() == DataShape::Logic && after.shape() == DataShape::Pair &&
                          in.function(before, Slot::Logic).extension == Extension::None &&
                          out.function(after, Slot::XorLeft).extension == Extension::X1;
  const RegisterType base = becamePair ? RegisterType::COM : before.declaredType;
  return combinationalAsOne(visibleType(out, after, base));
}

RegisterType typeInInput(const Network& in, const Signal& signal) {
  return combinationalAsOne(visibleType(in, signal, signal.declaredType));
}

void compareKinds(const Pairing& p, std::size_t i, std::vector<std::string>& found) {
  const Signal& in = p.in.signals[i];
  const Signal* out = p.partner(i);
  if (out == nullptr) {
    if (!in.inColumn) return;
    if (!in.isNode) found.push_back(in.name + ": the pin is missing in OUTPUT");
    const bool holdsState =
        isRegistered(in.type) && (in.hasControl() || in.shape() != DataShape::None);
    if (in.isNode && holdsState) {
      found.push_back(in.name + ": the registered node is missing in OUTPUT");
    }
    return;
  }
  if (in.isNode != out->isNode) {
    found.push_back(in.name +
                    (in.isNode ? ": the node has become a pin" : ": the pin has become a node"));
  }
}

void checkNewSignal(const Signal& signal, std::vector<std::string>& found) {
  if (!signal.isNode) {
    found.push_back(signal.name + ": the pin is not in INPUT");
  } else if (isRegistered(signal.type) || signal.hasControl()) {
    found.push_back(signal.name + ": the new node is not combinational");
  } else if (signal.inColumn && signal.shape() == DataShape::None) {
    found.push_back(signal.name + ": the new node has no function");
  }
}

}  // namespace

Pairing pairUp(const Network& in, const Network& out, int effort) {
  Pairing p{in, out, {}, {}, {}, {}};
  p.toIn.resize(out.signals.size());
  for (std::size_t i = 0; i < in.signals.size(); ++i) {
    const Signal& signal = in.signals[i];
    // The run takes out a node that stands in no column, and may give its name to a new one.
    const bool isDropped = signal.isNode && !signal.inColumn;
    const std::optional<std::size_t> o = isDropped ? std::nullopt : out.find(signal.name);
    p.toOut.push_back(o);
    if (o) p.toIn[*o] = i;
    p.registered.push_back(isRegistered(signal.type) || isRegistered(typeInInput(in, signal)) ||
                           (o && isRegistered(typeInOutput(in, signal, out, out.signals[*o]))));
    // An enable that INPUT leaves open may be always on in OUTPUT; whether it may is judged apart.
    const bool onInOutput =
        o && out.signals[*o].has(Slot::OutputEnable) && !canBeOff(out, out.signals[*o], effort);
    p.twoValued.push_back(canBeOff(in, signal, effort) && !onInOutput);
  }
  return p;
}

bool hasChangedType(const Pairing& p, std::size_t inSignal) {
  const Signal& in = p.in.signals[inSignal];
  const Signal* out = p.partner(inSignal);
  // Without visible data on one side there is nothing to compare.
  if (out == nullptr || in.shape() == DataShape::None || out->shape() == DataShape::None) {
    return false;
  }
  return typeInInput(p.in, in) != typeInOutput(p.in, in, p.out, *out);
}

std::vector<bool> readSignals(const Network& network) {
  std::vector<bool> isRead(network.signals.size(), false);
  for (const Function& f : network.functions) {
    for (const std::uint32_t r : f.on) {
      for (const RowLiteral l : network.rows[r]) isRead[network.columns[l.column].signal] = true;
    }
  }
  return isRead;
}

std::vector<bool> unreadColumns(const Pairing& pairing) {
  const Network& in = pairing.in;
  const std::vector<bool> isRead = readSignals(in);
  std::vector<bool> unread;
  for (const Column& column : in.columns) {
    const bool isLost = in.signals[column.signal].isNode && !pairing.toOut[column.signal];
    unread.push_back(isLost && !isRead[column.signal]);
  }
  return unread;
}

std::vector<std::string> structuralDifferences(const Pairing& pairing) {
  std::vector<std::string> found;
  for (std::size_t i = 0; i < pairing.in.signals.size(); ++i) compareKinds(pairing, i, found);
  for (std::size_t o = 0; o < pairing.out.signals.size(); ++o) {
    if (!pairing.toIn[o]) checkNewSignal(pairing.out.signals[o], found);
  }
  return found;
}

}  // namespace ostrel::verify
