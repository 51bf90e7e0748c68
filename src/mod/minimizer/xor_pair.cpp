// The search for the best exclusive-or pair of a function.
//
// Idea. The function is turned into an exclusive-or sum of cubes, f = c1 XOR c2 XOR ... XOR ce. Any
// one cube can be the left operand; the right operand is then the exclusive OR of all the others,
// brought back to a sum of products. The cube with the shortest right operand wins.
//
// Example. The terms 100, 010, 001, 111 (odd parity) are the sum 0-- XOR --1 XOR -0-, and the pair
// is 0-- on the left, -00 + -11 on the right: three terms in place of four.
//
// Cost. An expansion of the sum for each cube that is tried. The cubes in front of it are taken in
// once for all tries, and most tries are spared: a lower bound on the right operand, which is f XOR
// the cube, tells that it can't be shorter than the shortest so far.
//
// Order. Part of the output, do not tidy: the order of the tries (xor_order.h), the first of
// equally good cubes, and the number of tries, which the length of the sum decides.
#include "minimizer/xor_pair.h"

#include <algorithm>
#include <cassert>
#include <utility>
#include <vector>

#include "minimizer/cover_bound.h"
#include "minimizer/list_checks.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "minimizer/xor_order.h"

namespace ostrel {
namespace {

template <PackedCube C>
class PairSearch {
  using List = std::vector<C>;

 public:
  PairSearch(std::span<const C> function, List sum, std::size_t width,
             const std::function<void()>& tick)
      : sum_(std::move(sum)), bound_(function, width), expansion_(width, unbounded_), tick_(tick) {
    sortByDashes(sum_);
  }

  std::optional<std::pair<C, List>> best(const XorPairLimits& limits) {
    const std::vector<std::size_t> places = placesToTry(limits);
    const auto canPay = [&](std::size_t place) { return mayPay(place, limits.terms); };
    if (std::none_of(places.begin(), places.end(), canPay)) return std::nullopt;
    return shortest(places);
  }

 private:
  std::vector<std::size_t> placesToTry(const XorPairLimits& limits) const {
    const std::size_t tries = limits.effort / std::max<std::size_t>(sum_.size(), 1);
    const std::size_t count = std::min(sum_.size(), std::max<std::size_t>(tries, 1));
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) {
      if (limits.universalIsAllowed || sum_[i].literalCount() > 0) places.push_back(i);
    }
    return places;
  }

  // The complement of a single literal is a single term too: such a pair can be turned around. For
  // any other left operand no OFF set is worked out on the right, so the pair stays as it is.
  bool mayPay(std::size_t place, std::size_t terms) {
    return sum_[place].literalCount() < 2 || canBeat(place, terms - 1);
  }

  // False if the sum without the cube at a place is proven to have `length` cubes or more.
  bool canBeat(std::size_t place, std::size_t length) {
    tick_();
    return bound_.ofXor(sum_[place].block(0), length) < length;
  }

  std::pair<C, List> shortest(const std::vector<std::size_t>& places) {
    std::size_t bestPlace = places.front();
    std::optional<List> best;
    typename XorExpansion<C>::State front;  // the cubes in front of the place
    std::size_t taken = 0;
    for (const std::size_t place : places) {
      if (best && !canBeat(place, best->size())) continue;
      while (taken < place) expansion_.take(front, sum_[taken++]);
      typename XorExpansion<C>::State whole = front;
      for (std::size_t k = place + 1; k < sum_.size(); ++k) expansion_.take(whole, sum_[k]);
      List right = expansion_.sum(whole);
      if (best && right.size() >= best->size()) continue;
      best = std::move(right);
      bestPlace = place;
    }
    return {sum_[bestPlace], *std::move(best)};
  }

  Effort unbounded_;
  List sum_;
  CoverBound bound_;
  XorExpansion<C> expansion_;
  const std::function<void()>& tick_;
};

/// True if the function is the exclusive OR of the operands, as far as corners of its cubes tell.
/// The exclusive OR of a universal cube and of cubes that cancel has no sum of products.
template <PackedCube C>
[[maybe_unused]] bool isPairOf(std::span<const C> function, std::size_t width, const C& left,
                               const std::vector<C>& right) {
  const auto isRight = [&](const C& cube) {
    const C corner = cornerOf(cube, (width + 63) / 64, 0);
    return cubeContains(left, corner) != holds<C>(right, PointsOf::AnyCube, corner);
  };
  return right.empty() || std::ranges::all_of(checkedPart(function), isRight);
}

template <PackedCube C>
std::optional<XorPair> search(std::span<const C> function, std::size_t width,
                              const XorPairLimits& limits, const std::function<void()>& tick) {
  std::optional<std::vector<C>> sum = xorCover(function, width);
  if (!sum) return std::nullopt;
  PairSearch<C> pairs(function, *std::move(sum), width, tick);
  const auto best = pairs.best(limits);
  if (!best) return std::nullopt;
  const auto& [left, right] = *best;
  assert(isPairOf(function, width, left, right));
  return XorPair{Cube(left), CubeList(right.begin(), right.end())};
}

}  // namespace

std::optional<XorPair> bestXorPair(std::span<const Cube> cubes, std::size_t width,
                                   const XorPairLimits& limits, const std::function<void()>& tick) {
  if (width > 64) return search(cubes, width, limits, tick);
  const std::vector<Cube64> plain(cubes.begin(), cubes.end());
  return search(std::span<const Cube64>(plain), width, limits, tick);
}

}  // namespace ostrel
