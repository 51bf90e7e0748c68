// Idea. The primes without the first column are the primes of what both halves have in common.
// Those with a literal are the primes of its half but the ones already found, which lie in both
// halves. Primes that hold a given cube can only have literals of that cube: where it has none,
// only what both halves have in common counts, where it has one, only its half. (Coudert, Madre,
// Implicit and incremental computation of primes and essential primes of Boolean functions, 1992.)
//
// Example. a b + a' c: both halves have b c in common, which is a prime; c and b, the primes of
// the halves, aren't among it, so a' c and a b are the others.
//
// Cost. One conjunction and two differences for each function that is met; the sets may have
// millions of times more cubes than nodes.
//
// Order. None: the set of all primes is what it is, and listed in the graph's order.
#include "twolevel/cover_graph.h"

namespace ostrel {

namespace {

class Primes {
 public:
  /// All primes, or those that hold `cube` where there is one.
  Primes(Diagram& diagram, CoverGraph& covers, const Cube* cube)
      : diagram_(diagram), covers_(covers), cube_(cube) {}

  CoverGraph::Set of(Diagram::Edge f) {
    if (f == Diagram::zero) return CoverGraph::none;
    if (f == Diagram::one) return CoverGraph::universal;
    if (const auto known = known_.find(f, 0)) return static_cast<CoverGraph::Set>(*known);
    if (!diagram_.effort().spend(1)) return CoverGraph::none;
    const std::uint32_t at = diagram_.level(f);
    const Diagram::Edge low = diagram_.low(f, at);
    const Diagram::Edge high = diagram_.high(f, at);
    const CoverGraph::Set dashes = of(diagram_.conjunction(low, high));
    const CoverGraph::Set zeros = mayHave(at, '0') ? covers_.difference(of(low), dashes) : none;
    const CoverGraph::Set ones = mayHave(at, '1') ? covers_.difference(of(high), dashes) : none;
    const CoverGraph::Set result = covers_.node(at, zeros, ones, dashes);
    if (!diagram_.effort().isSpent()) known_.store(f, 0, result);
    return result;
  }

 private:
  static constexpr CoverGraph::Set none = CoverGraph::none;

  bool mayHave(std::uint32_t column, char literal) const {
    return cube_ == nullptr || cube_->at(column) == literal;
  }

  Diagram& diagram_;
  CoverGraph& covers_;
  const Cube* cube_;
  ResultCache known_;
};

}  // namespace

CoverGraph::Set allPrimes(Diagram& diagram, CoverGraph& covers, Diagram::Edge f) {
  return Primes(diagram, covers, nullptr).of(f);
}

CoverGraph::Set primesHolding(Diagram& diagram, CoverGraph& covers, Diagram::Edge f,
                              const Cube& cube) {
  return Primes(diagram, covers, &cube).of(f);
}

}  // namespace ostrel
