// The search that all steps on groups of cubes share: the first cube of a group that stands in some
// relation to a given one.
//
// The partners of a cube are few possible cubes, such as those with one literal inverted. So there
// are two ways to find one: to look at each cube of the group, or to look each possible partner up
// by its hash. The first is faster in short groups; the second keeps the cost of a long group in
// proportion to its length, where scans would take its square. Both find the same cube.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "minimizer/budgets.h"
#include "minimizer/cube_hash.h"
#include "minimizer/cube_list.h"
#include "minimizer/hash_index.h"

namespace ostrel {

/// For partners that are found by all their literals.
struct ByLiterals {
  template <PackedCube C>
  static std::uint64_t key(const C& partner) {
    return literalHash(partner);
  }
};

/// The partner differs in one literal, which has the other sense there.
struct Neighbour : ByLiterals {
  template <PackedCube C>
  static bool holds(const C& cube, const C& partner) {
    return adjacentColumn(cube, partner).has_value();
  }
  template <PackedCube C, class Visit>
  static void forEachKey(const C& cube, Visit visit) {
    forEachNeighbourHash(cube, literalHash(cube), invertedLiteral, visit);
  }
};

/// The partner, which has one dash more, contains the cube.
struct Container : ByLiterals {
  template <PackedCube C>
  static bool holds(const C& cube, const C& partner) {
    return cubeContains(partner, cube);
  }
  template <PackedCube C, class Visit>
  static void forEachKey(const C& cube, Visit visit) {
    forEachNeighbourHash(cube, literalHash(cube), droppedLiteral, visit);
  }
};

/// The partner, which has one dash more, holds the half that the cube gains without one literal:
/// it has literals only where the cube has some, and one of them is opposite.
struct Expander {
  /// The column of the opposite literals.
  template <PackedCube C>
  static std::optional<std::size_t> column(const C& cube, const C& partner) {
    std::optional<std::size_t> found;
    const std::size_t blocks = std::max(cube.blockCount(), partner.blockCount());
    for (std::size_t i = 0; i < blocks; ++i) {
      const Cube::Block x = cube.block(i);
      const Cube::Block y = partner.block(i);
      if ((y.care & ~x.care) != 0) return std::nullopt;
      const std::uint64_t opposite = y.care & (x.value ^ y.value);
      if (opposite == 0) continue;
      if (found || !isSingleBit(opposite)) return std::nullopt;
      found = i * 64 + static_cast<std::size_t>(std::countr_zero(opposite));
    }
    return found;
  }
  template <PackedCube C>
  static bool holds(const C& cube, const C& partner) {
    return column(cube, partner).has_value();
  }
  template <PackedCube C>
  static std::uint64_t key(const C& partner) {
    return careHash(partner);
  }
  template <PackedCube C, class Visit>
  static void forEachKey(const C& cube, Visit visit) {
    forEachNeighbourHash(cube, careHash(cube), droppedPlace, visit);
  }
};

/// The memory of a search, to be kept from one to the next.
struct PartnerScratch {
  HashIndex index;
  std::vector<std::uint8_t> gone;  // of each cube of the group: 1 if it was withdrawn
};

/// A search in one group, which may grow while it is on.
template <PackedCube C, class Relation>
class FirstPartner {
 public:
  static constexpr std::size_t none = SIZE_MAX;

  /// `growth` cubes at most will be appended to the group. None is a partner before it is entered.
  FirstPartner(const std::vector<C>& group, std::size_t growth, PartnerScratch& scratch)
      : group_(group), scratch_(scratch), isLong_(group.size() > scanLimit) {
    scratch_.gone.assign(group.size() + growth, 0);
    if (isLong_) scratch_.index.reset(group.size() + growth);
  }

  /// Enters the next cubes of the group, up to this many.
  void enterUpTo(std::size_t count) {
    assert(count <= group_.size() && group_.size() <= scratch_.gone.size());
    for (; isLong_ && entered_ < count; ++entered_) {
      scratch_.index.add(Relation::key(group_[entered_]));
    }
    entered_ = count;
  }

  /// No partner any more.
  void withdraw(std::size_t number) { scratch_.gone[number] = 1; }
  bool isGone(std::size_t number) const { return scratch_.gone[number] != 0; }

  /// The number of the first partner of a cube, or `none`. The caller knows that there is none in
  /// front of `begin`.
  std::size_t of(const C& cube, std::size_t begin = 0) const {
    return isLong_ ? lookUp(cube) : scan(cube, begin);
  }

 private:
  bool isPartner(const C& cube, std::size_t number) const {
    return Relation::holds(cube, group_[number]) && !isGone(number);
  }

  std::size_t scan(const C& cube, std::size_t begin) const {
    for (std::size_t i = begin; i < entered_; ++i) {
      if (isPartner(cube, i)) return i;
    }
    return none;
  }

  std::size_t lookUp(const C& cube) const {
    std::size_t best = none;
    Relation::forEachKey(cube, [&](std::uint64_t key) {
      const auto number =
          scratch_.index.find(key, [&](std::size_t n) { return n >= best || isPartner(cube, n); });
      if (number != HashIndex::none) best = std::min<std::size_t>(best, number);
    });
    return best;
  }

  const std::vector<C>& group_;
  PartnerScratch& scratch_;
  std::size_t entered_ = 0;
  bool isLong_;
};

}  // namespace ostrel
