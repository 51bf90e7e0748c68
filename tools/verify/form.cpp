#include "verify/form.h"

#include <algorithm>

namespace ostrel::verify {

namespace {

// The half with the many terms stands in the left column. It is cut one term below the limit, but
// only asked for where that leaves a whole cluster; a cut down to one term is not promised at all.
std::size_t pairLimit(const RunOptions& options) {
  if (options.splitMax < 3) return static_cast<std::size_t>(-1);
  const int spare = options.splitMax >= options.clusterSize - 1 ? 1 : 0;
  return static_cast<std::size_t>(options.splitMax - spare);
}

}  // namespace

std::vector<std::string> tooWide(const Pairing& pairing, const RunOptions& options,
                                 const Excuses& excuses) {
  std::vector<std::string> found;
  if (options.splitMax < 2) return found;
  const auto limit = static_cast<std::size_t>(options.splitMax);
  for (std::size_t o = 0; o < pairing.out.signals.size(); ++o) {
    const Signal& signal = pairing.out.signals[o];
    const auto check = [&](Slot slot, std::size_t most) {
      const std::size_t terms = pairing.out.function(signal, slot).on.size();
      if (terms <= most) return;
      found.push_back(signal.name + ": " + std::to_string(terms) +
                      " terms, and the options allow " + std::to_string(most));
    };
    if (signal.shape() == DataShape::Pair) {
      check(Slot::XorLeft, pairLimit(options));
      check(Slot::XorRight, limit);
    } else if (signal.shape() == DataShape::Logic) {
      // The search for an XOR pair undoes an inversion, and the ON set is kept then as it is.
      const bool keptOn = pairing.toIn[o] && excuses.keepsOnSet(*pairing.toIn[o]);
      if (!(options.xorSynthesis && keptOn)) check(Slot::Logic, limit);
    }
  }
  return found;
}

std::vector<std::size_t> columnsOf(const Network& network, const Signal& signal, Slot slot) {
  std::vector<bool> read(network.columns.size(), false);
  const auto mark = [&](Slot s) {
    if (!signal.has(s)) return;
    const Function& f = network.function(signal, s);
    for (const auto* rows : {&f.on, &f.off, &f.open}) {
      for (const std::uint32_t r : *rows) {
        for (const RowLiteral l : network.rows[r]) read[l.column] = true;
      }
    }
  };
  if (slot == Slot::Logic && signal.shape() != DataShape::Logic) {
    mark(Slot::XorLeft);
    mark(Slot::XorRight);
  } else {
    mark(slot);
  }
  std::vector<std::size_t> columns;
  for (std::size_t c = 0; c < read.size(); ++c) {
    if (read[c]) columns.push_back(c);
  }
  return columns;
}

}  // namespace ostrel::verify
