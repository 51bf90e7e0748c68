// Idea. An implicant that holds a point of the prime and isn't inside it leaves the prime in some
// column of its literals, and then holds the point's neighbour in that column too. So a point lies
// in no other prime exactly if all its neighbours across the literals are forbidden. Moved into the
// prime by a cofactor, the neighbours across one literal are one function; the points wanted are
// what is left of `lower` when these are taken away, one literal after the other. (Essential primes
// after Brayton et al., Logic minimization algorithms for VLSI synthesis, 1984, there by
// consensus.)
//
// Example. a b + a' c: in a b, the neighbours across a are allowed where c is, those across b
// nowhere; a b c' is left, so a b is essential. The prime b c loses c to one neighbour and nothing
// is left.
//
// Cost. A cofactor and a difference for each literal, most of them of small diagrams.
//
// Order. None: the answer is a property of the function.
#include "twolevel/essential.h"

namespace ostrel {

bool isEssential(Diagram& diagram, Diagram::Edge lower, Diagram::Edge upper, const Cube& prime) {
  Diagram::Edge points = diagram.cofactor(lower, prime);
  Cube neighbour = prime;
  prime.forEachLiteral([&](std::size_t column, char) {
    if (points == Diagram::zero) return;
    neighbour.invert(column);
    points = diagram.difference(points, diagram.cofactor(upper, neighbour));
    neighbour.invert(column);
  });
  return points != Diagram::zero && !diagram.effort().isSpent();
}

}  // namespace ostrel
