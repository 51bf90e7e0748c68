#include "verify/model/correspondence.h"

namespace ostrel::verify {

std::vector<bool> readSignals(const Network& network) {
  std::vector<bool> isRead(network.signals.size(), false);
  for (const Function& f : network.functions) {
    for (const auto* rows : {&f.on, &f.off, &f.open}) {
      for (const std::uint32_t r : *rows) {
        for (const RowLiteral l : network.rows[r]) isRead[network.columns[l.column].signal] = true;
      }
    }
  }
  return isRead;
}

Correspondence correspond(const Network& in, const Network& out, const AlwaysOn& alwaysOn) {
  const auto canBeOff = [&](const Network& network, const Signal& signal) {
    return !signal.isNode && signal.has(Slot::OutputEnable) &&
           !alwaysOn(network, network.function(signal, Slot::OutputEnable));
  };
  const std::vector<bool> isReadIn = readSignals(in);
  const std::vector<bool> isReadOut = readSignals(out);
  Correspondence c{in, out, {}, {}, {}, {}};
  c.toIn.resize(out.signals.size());
  for (std::size_t i = 0; i < in.signals.size(); ++i) {
    const Signal& before = in.signals[i];
    std::optional<std::size_t> o = out.find(before.name);
    const bool isGone = before.isNode && !isRegistered(before.type) && !isReadIn[i];
    if (isGone && o && isReadOut[*o]) o.reset();
    c.toOut.push_back(o);
    if (o) c.toIn[*o] = i;
    const Signal* after = c.partner(i);
    c.registered.push_back(isRegistered(before.type) || (after && isRegistered(after->type)));
    // An enable that INPUT leaves open may be always on in OUTPUT, or gone; whether it may is judged
    // apart.
    const bool onInOutput = after && after->gives(Slot::Logic) && !canBeOff(out, *after);
    c.twoValued.push_back(canBeOff(in, before) && !onInOutput);
  }
  return c;
}

}  // namespace ostrel::verify
