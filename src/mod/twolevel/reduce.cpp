// Idea. Of a cube, only the points that no other cube covers have to stay, so it shrinks to the
// smallest cube that holds these. It then has more primes around it than itself. (REDUCE of
// Espresso, Brayton et al., 1984.)
//
// Example. a b + a' c + b c: if b c is the first, no point of it is uncovered and it goes.
//
// Cost. A diagram for the cubes behind each place, made once from the end, and a few operations for
// each cube.
//
// Order. The first cube shrinks most, so different orders lead to different covers.
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

CubeList reduceCover(Diagram& diagram, Diagram::Edge lower, std::span<const Cube> cover,
                     std::span<const std::size_t> places) {
  std::vector<Diagram::Edge> cubes;
  for (const std::size_t place : places) cubes.push_back(diagram.sum(cover.subspan(place, 1)));
  std::vector<Diagram::Edge> later(cubes.size() + 1, Diagram::zero);
  for (std::size_t i = cubes.size(); i-- > 0;) {
    later[i] = diagram.disjunction(cubes[i], later[i + 1]);
  }
  CubeList result;
  Diagram::Edge earlier = Diagram::zero;
  for (std::size_t i = 0; i < cubes.size() && !diagram.effort().isSpent(); ++i) {
    const Diagram::Edge open =
        diagram.difference(lower, diagram.disjunction(earlier, later[i + 1]));
    const Diagram::Edge needed = diagram.conjunction(cubes[i], open);
    if (needed == Diagram::zero || diagram.effort().isSpent()) continue;
    result.push_back(supercube(diagram, needed));
    earlier = diagram.disjunction(earlier, diagram.sum(std::span(&result.back(), 1)));
  }
  return result;
}

}  // namespace ostrel
