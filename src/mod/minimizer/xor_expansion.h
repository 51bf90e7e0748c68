// The way back from an exclusive-or sum to a sum of products.
#pragma once

#include <cstddef>
#include <vector>

#include "minimizer/list_store.h"
#include "minimizer/sum_of_products.h"

namespace ostrel {

/// Takes cubes of one width into exclusive-or sums, which are values of their own, so that sums
/// with the same first cubes can share the work for these.
template <PackedCube C>
class XorExpansion {
  using List = std::vector<C>;
  using Number = typename ListStore<C>::Number;

 public:
  /// What was taken in so far: disjoint slots, whose OR is the exclusive OR of the cubes.
  struct State {
    std::vector<Number> slots;
    bool isConstant = true;  // no cube with a literal was taken in
    bool isInverted = false;
  };

  XorExpansion(std::size_t width, Effort& effort) : algebra_(width, effort) {}

  /// The exclusive OR with one more cube. Two equal cubes cancel. The result can be exponentially
  /// long in bad cases; callers bound what they hand in.
  void take(State& state, const C& cube);

  /// The sum of products of what was taken in. A universal cube inverts the rest; if nothing is
  /// left of the rest, the result is empty all the same, as complementList of nothing is.
  /// Universal cubes alone give the universal cube if their number is odd, else the empty list.
  List sum(const State& state);

 private:
  struct Pair {
    Number upper;
    Number lower;
  };
  Pair separated(Number upper, Number lower);
  Pair separate(Number upper, Number lower);
  Number withoutCommon(Number number);

  ListAlgebra<C> algebra_;
  ListStore<C> lists_;
  HashIndex pairs_;              // of lists that were separated
  std::vector<Pair> separated_;  // what became of each
  List common_;                  // scratch: the points of both lists of a pair
  List rest_;                    // scratch: the list in hand
};

}  // namespace ostrel
