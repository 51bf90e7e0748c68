// Exclusive-or sums, brought back to sums of products cube by cube.
//
// Idea. Each cube that is taken in becomes a slot of its own, and for each slot before it the
// points that both hold are taken out of both, by sharp products. A point of an even number of
// cubes thus vanishes, and one of an odd number stays in one slot; the slots are disjoint. Cubes
// without a literal are no slots, they invert the result.
//
// Example. "1-", "-1". Both hold the point 11; the slots become "10" and "01".
//
// Cost. A cube meets every slot, so a sum of n cubes costs n * n / 2 meetings, most of them of
// lists without a common point. Where they meet, two sharp products shatter the slots, and the
// result may be exponentially long. Sums that share cubes meet the same pairs of lists again and
// again, so lists have numbers, and what became of a pair is looked up: up to a seventh of the
// instructions of a whole run (clip, -xor -split 16), and nothing where few sums share cubes.
//
// Order. Part of the output, do not tidy: the products of a meeting come last pair first, and are
// simplified if they are more than two; a slot is simplified if it grew; a cube of which nothing is
// left meets no further slot.
#include "minimizer/xor_expansion.h"

#include <cassert>
#include <utility>

#include "minimizer/list_checks.h"

namespace ostrel {

template <PackedCube C>
void XorExpansion<C>::take(State& state, const C& cube) {
  if (cube.literalCount() == 0) {
    state.isInverted = !state.isInverted;
    return;
  }
  state.isConstant = false;
  Number upper = lists_.number({&cube, 1});
  for (Number& lower : state.slots) {
    const Pair rest = separated(upper, lower);
    upper = rest.upper;
    lower = rest.lower;
    if (upper == 0) break;
  }
  std::erase(state.slots, 0);
  if (upper != 0) state.slots.push_back(upper);
}

/// Two lists without their common points.
template <PackedCube C>
typename XorExpansion<C>::Pair XorExpansion<C>::separated(Number upper, Number lower) {
  // No two pairs have the same key.
  const std::uint64_t key = mixBits(hashKey ^ (std::uint64_t{upper} << 32U | lower));
  std::uint32_t known = pairs_.find(key, [](std::uint32_t) { return true; });
  if (known == HashIndex::none) {
    separated_.push_back(separate(upper, lower));
    known = pairs_.add(key);
  }
  return separated_[known];
}

template <PackedCube C>
typename XorExpansion<C>::Pair XorExpansion<C>::separate(Number upper, Number lower) {
  common_.clear();
  const std::span<const C> x = lists_.list(upper);
  const std::span<const C> y = lists_.list(lower);
  for (std::size_t i = x.size(); i-- > 0;) {
    for (std::size_t j = y.size(); j-- > 0;) {
      if (auto product = intersectCubes(x[i], y[j])) common_.push_back(std::move(*product));
    }
  }
  if (common_.empty()) return {upper, lower};
  if (common_.size() > 2) algebra_.simplify(common_);
  const Pair rest = {withoutCommon(upper), withoutCommon(lower)};
  assert(haveNoCommonPoint(lists_.list(rest.upper), lists_.list(rest.lower)));
  return rest;
}

template <PackedCube C>
typename XorExpansion<C>::Number XorExpansion<C>::withoutCommon(Number number) {
  const std::span<const C> before = lists_.list(number);
  rest_.assign(before.begin(), before.end());
  algebra_.sharp(rest_, common_);
  if (rest_.size() > before.size()) algebra_.simplify(rest_);
  return lists_.number(rest_);
}

template <PackedCube C>
std::vector<C> XorExpansion<C>::sum(const State& state) {
  if (state.isConstant) return List(state.isInverted ? 1 : 0);
  List result;
  for (const Number slot : state.slots) {
    const std::span<const C> cubes = lists_.list(slot);
    result.insert(result.end(), cubes.begin(), cubes.end());
  }
  if (state.isInverted) algebra_.complement(result);
  return result;
}

template class XorExpansion<Cube>;
template class XorExpansion<Cube64>;

}  // namespace ostrel
