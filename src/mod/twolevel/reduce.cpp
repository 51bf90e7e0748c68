// Idea. Of a cube, only the points that no other cube of the cover holds have to stay, so it can
// shrink to the smallest cube that holds these, around which there are more primes than itself.
// Halving the list, the points that lie in two cubes or more lie so in one half, or once in both.
// (Maximal reduction, as in LAST GASP of Espresso, Brayton et al., 1984.)
//
// Example. a b + a' c + b c d: of the first two only a b c d and a' b c d are shared; they stay as
// they are needed, and the third has no point of its own.
//
// Cost. Four operations of diagrams for each pair of halves, two for each cube.
//
// Order. The answer is in the order of the cubes; it depends on no order.
#include "twolevel/reduce.h"

#include <cassert>

namespace ostrel {

namespace {

/// Collects which values each column has in the points of a function.
class Values {
 public:
  explicit Values(const Diagram& diagram)
      : diagram_(diagram),
        seen_(2 * diagram.size()),
        isIn_(2, std::vector<bool>(diagram.width())) {}

  Cube of(Diagram::Edge f) {
    walk(f, 0);
    Cube cube;
    for (std::size_t column = 0; column < diagram_.width(); ++column) {
      if (isIn_[0][column] != isIn_[1][column]) cube.set(column, isIn_[1][column] ? '1' : '0');
    }
    return cube;
  }

 private:
  /// f is asked for where columns before `from` are settled; those it skips have both values.
  void walk(Diagram::Edge f, std::uint32_t from) {
    if (f == Diagram::zero) return;
    const std::uint32_t at = diagram_.level(f);
    for (std::uint32_t skipped = from; skipped < at; ++skipped) {
      isIn_[0][skipped] = isIn_[1][skipped] = true;
    }
    if (at == diagram_.width() || seen_[f]) return;
    seen_[f] = true;
    const Diagram::Edge halves[2] = {diagram_.low(f, at), diagram_.high(f, at)};
    for (const std::size_t value : {0U, 1U}) {
      if (halves[value] != Diagram::zero) isIn_[value][at] = true;
      walk(halves[value], at + 1);
    }
  }

  const Diagram& diagram_;
  std::vector<bool> seen_;
  std::vector<std::vector<bool>> isIn_;
};

}  // namespace

Cube supercube(const Diagram& diagram, Diagram::Edge f) {
  assert(f != Diagram::zero);
  return Values(diagram).of(f);
}

namespace {

/// Points in at least one, and in at least two cubes of a list.
struct Coverings {
  Diagram::Edge once;
  Diagram::Edge twice;
};

/// The halves of the list first: recursion goes as deep as its length has binary digits.
Coverings coveringsOf(Diagram& diagram, std::span<const Cube> cubes) {
  if (cubes.size() <= 1) return {diagram.sum(cubes), Diagram::zero};
  const Coverings a = coveringsOf(diagram, cubes.first(cubes.size() / 2));
  const Coverings b = coveringsOf(diagram, cubes.subspan(cubes.size() / 2));
  const Diagram::Edge both = diagram.conjunction(a.once, b.once);
  return {diagram.disjunction(a.once, b.once),
          diagram.disjunction(both, diagram.disjunction(a.twice, b.twice))};
}

}  // namespace

CubeList reducedCubes(Diagram& diagram, Diagram::Edge lower, std::span<const Cube> cover) {
  const Diagram::Edge own = diagram.difference(lower, coveringsOf(diagram, cover).twice);
  CubeList result;
  for (const Cube& cube : cover) {
    const Diagram::Edge needed = diagram.conjunction(own, diagram.sum(std::span(&cube, 1)));
    if (diagram.effort().isSpent()) break;
    if (needed != Diagram::zero) result.push_back(supercube(diagram, needed));
  }
  return result;
}

}  // namespace ostrel
