// Idea. In the first column, what `lower` has in one half and `upper` hasn't in the other needs
// cubes with a literal; what these leave open in either half is covered by cubes without one, which
// must lie in both halves of `upper`. Each of the three is the same question with one column less.
// No cube can lose its literal, since it covers a point that is forbidden in the other half, and
// none can be left out for the same reason. (Minato, Fast generation of irredundant
// sum-of-products forms from binary decision diagrams, 1992; Morreale, 1970.)
//
// Example. a b + a' c + b c: the halves in a are c and b + c; in a' nothing is needed that isn't
// allowed beside it but c b', in a nothing but b c'. The two give a' c and a b, and nothing is
// left.
//
// Cost. A few operations of diagrams for each pair of functions that is met; those found once are
// found again. The cover itself may have more cubes than can be listed.
//
// Order. The order of columns decides which of many covers it is.
#include <algorithm>
#include <cassert>

#include "twolevel/cover_graph.h"

namespace ostrel {

namespace {

class Irredundant {
 public:
  Irredundant(Diagram& diagram, CoverGraph& covers) : diagram_(diagram), covers_(covers) {}

  IrredundantCover cover(Diagram::Edge lower, Diagram::Edge upper) {
    if (lower == Diagram::zero) return {CoverGraph::none, Diagram::zero};
    if (upper == Diagram::one) return {CoverGraph::universal, Diagram::one};
    if (const auto known = known_.find(lower + 1, upper)) {
      return {static_cast<CoverGraph::Set>(*known >> 32U), static_cast<Diagram::Edge>(*known)};
    }
    if (!diagram_.effort().spend(1)) return {CoverGraph::none, Diagram::zero};
    const IrredundantCover result = split(lower, upper);
    if (!diagram_.effort().isSpent()) {
      known_.store(lower + 1, upper, std::uint64_t{result.cubes} << 32U | result.function);
    }
    return result;
  }

 private:
  IrredundantCover split(Diagram::Edge lower, Diagram::Edge upper) {
    const std::uint32_t at = std::min(diagram_.level(lower), diagram_.level(upper));
    assert(at < diagram_.width());
    const Diagram::Edge lower0 = diagram_.low(lower, at);
    const Diagram::Edge lower1 = diagram_.high(lower, at);
    const Diagram::Edge upper0 = diagram_.low(upper, at);
    const Diagram::Edge upper1 = diagram_.high(upper, at);
    const auto zeros = cover(diagram_.difference(lower0, upper1), upper0);
    const auto ones = cover(diagram_.difference(lower1, upper0), upper1);
    const Diagram::Edge open = diagram_.disjunction(diagram_.difference(lower0, zeros.function),
                                                    diagram_.difference(lower1, ones.function));
    const auto dashes = cover(open, diagram_.conjunction(upper0, upper1));
    const Diagram::Edge low = diagram_.disjunction(zeros.function, dashes.function);
    const Diagram::Edge high = diagram_.disjunction(ones.function, dashes.function);
    return {covers_.node(at, zeros.cubes, ones.cubes, dashes.cubes), diagram_.node(at, low, high)};
  }

  Diagram& diagram_;
  CoverGraph& covers_;
  ResultCache known_;
};

}  // namespace

IrredundantCover irredundantCover(Diagram& diagram, CoverGraph& covers, Diagram::Edge lower,
                                  Diagram::Edge upper) {
  const IrredundantCover result = Irredundant(diagram, covers).cover(lower, upper);
  assert(diagram.effort().isSpent() ||
         diagram.difference(lower, result.function) == Diagram::zero || diagram.effort().isSpent());
  assert(diagram.effort().isSpent() ||
         diagram.difference(result.function, upper) == Diagram::zero || diagram.effort().isSpent());
  return result;
}

}  // namespace ostrel
