// Exclusive-or sums, brought back to sums of products cube by cube.
//
// Each cube that is taken in becomes a slot of its own, and for each slot before it the points that
// both hold are taken out of both. A point of an even number of cubes thus vanishes, and one of an
// odd number stays in one slot; the slots are disjoint. Cubes without a literal are no slots, they
// invert the result.
//
// Example: "1-", "-1". Both hold the point 11; the slots become "10" and "01".
//
// Lists never change once they are made. Each content has one number, so sums that share cubes
// meet the same pairs of numbers again and again, and what became of a pair is looked up.
#include "minimizer/xor_expansion.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "minimizer/cube_index.h"
#include "minimizer/list_algebra.h"

namespace ostrel {
namespace {

using Number = std::uint32_t;

/// A place for a key in a table whose size is a power of two. All bits of the key reach it.
std::size_t placeOf(std::uint64_t key, std::size_t size) {
  return ((key ^ key >> 32U) * 0x9E3779B97F4A7C15U >> 32U) & (size - 1);
}

/// Lists by number, each content once. The empty list is number 0.
template <PackedCube C>
class ListStore {
 public:
  ListStore() { number({}); }

  /// The number of a content, which must not stand in the store's own memory.
  Number number(std::span<const C> content) {
    if (2 * (ends_.size() + 1) > slots_.size()) grow();
    Number& slot = slots_[slotOf(content)];
    if (slot == none) {
      slot = static_cast<Number>(ends_.size());
      cubes_.insert(cubes_.end(), content.begin(), content.end());
      ends_.push_back(cubes_.size());
      hulls_.push_back(content.empty() ? C() : content.front());
      for (const C& cube : content) hulls_.back() = supercube(hulls_.back(), cube);
    }
    return slot;
  }

  /// The list of a number; it stands until the next call of number().
  std::span<const C> list(Number number) const {
    const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
    return std::span(cubes_).subspan(begin, ends_[number] - begin);
  }

  /// The smallest cube that holds the list.
  const C& hull(Number number) const { return hulls_[number]; }

 private:
  static constexpr Number none = UINT32_MAX;

  std::size_t slotOf(std::span<const C> content) const {
    std::uint64_t hash = 0;
    for (const C& cube : content) hash = mixBits(hash + literalHash(cube));
    std::size_t slot = placeOf(hash, slots_.size());
    while (slots_[slot] != none && !std::ranges::equal(list(slots_[slot]), content)) {
      slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
  }

  void grow() {
    slots_.assign(std::max<std::size_t>(64, 2 * slots_.size()), none);
    for (Number i = 0; i < ends_.size(); ++i) slots_[slotOf(list(i))] = i;
  }

  std::vector<C> cubes_;           // all lists, one behind the other
  std::vector<std::size_t> ends_;  // where each list ends
  std::vector<C> hulls_;           // of each list
  std::vector<Number> slots_;      // numbers by hash of their content
};

/// What became of pairs of different numbers, by hash.
class PairTable {
 public:
  using Pair = std::pair<Number, Number>;

  /// The entry of a pair: the result, or a pair of equal numbers that takes it in. It stands until
  /// the next call.
  Pair& find(Pair pair) {
    if (2 * (used_ + 1) > entries_.size()) grow();
    Entry& entry = entries_[slotOf(pair)];
    if (isFree(entry)) {
      entry.pair = pair;
      ++used_;
    }
    return entry.result;
  }

 private:
  struct Entry {
    Pair pair;  // of equal numbers while the entry is free
    Pair result;
  };

  std::size_t slotOf(Pair pair) const {
    const std::uint64_t key = std::uint64_t{pair.first} << 32U | pair.second;
    std::size_t slot = placeOf(key, entries_.size());
    while (!isFree(entries_[slot]) && entries_[slot].pair != pair) {
      slot = (slot + 1) & (entries_.size() - 1);
    }
    return slot;
  }

  static bool isFree(const Entry& entry) { return entry.pair.first == entry.pair.second; }

  void grow() {
    const std::vector<Entry> old =
        std::exchange(entries_, std::vector<Entry>(std::max<std::size_t>(64, 2 * entries_.size())));
    for (const Entry& entry : old) {
      if (!isFree(entry)) entries_[slotOf(entry.pair)] = entry;
    }
  }

  std::vector<Entry> entries_;
  std::size_t used_ = 0;
};

/// Exclusive-or sums in the making, over cubes that are known from the start.
template <PackedCube C>
class XorExpansion {
  using List = std::vector<C>;

 public:
  /// A list and the smallest cube that holds it.
  struct Slot {
    Number number;
    C hull;
  };

  /// What was taken in so far.
  struct State {
    std::vector<Slot> slots;  // those that still hold a point
    bool isConstant = true;   // no cube with a literal was taken in
    bool isInverted = false;
  };

  XorExpansion(std::span<const C> cubes, std::size_t width) : algebra_(width) {
    for (const C& cube : cubes) numbers_.push_back(lists_.number({&cube, 1}));
  }

  /// Takes one of the cubes in, by its place.
  void take(State& state, std::size_t place) {
    Slot upper = slot(numbers_[place]);
    if (upper.hull.literalCount() == 0) {
      state.isInverted = !state.isInverted;
      return;
    }
    state.isConstant = false;
    bool hasEmpty = false;
    for (Slot& lower : state.slots) {
      // Most slots are far apart.
      if (!cubesIntersect(upper.hull, lower.hull)) continue;
      const auto [upperRest, lowerRest] = separated(upper.number, lower.number);
      if (lowerRest != lower.number) lower = slot(lowerRest);
      if (upperRest != upper.number) upper = slot(upperRest);
      hasEmpty |= lowerRest == 0;
      if (upperRest == 0) break;
    }
    if (hasEmpty) std::erase_if(state.slots, [](const Slot& s) { return s.number == 0; });
    if (upper.number != 0) state.slots.push_back(upper);
  }

  List sum(const State& state) {
    if (state.isConstant) return List(state.isInverted ? 1 : 0);
    List result;
    for (const Slot& slot : state.slots) {
      const std::span<const C> cubes = lists_.list(slot.number);
      result.insert(result.end(), cubes.begin(), cubes.end());
    }
    if (state.isInverted) algebra_.complement(result);
    return result;
  }

 private:
  Slot slot(Number number) const { return {number, lists_.hull(number)}; }

  // Two lists without their common points. Equal lists have nothing else.
  PairTable::Pair separated(Number upper, Number lower) {
    if (upper == lower) return {0, 0};
    PairTable::Pair& result = separated_.find({upper, lower});
    if (result.first == result.second) {
      result = {upper, lower};
      intersect(lists_.list(upper), lists_.list(lower));
      if (common_.size() > 2) algebra_.simplify(common_);
      if (!common_.empty()) result = {withoutCommon(upper), withoutCommon(lower)};
    }
    return result;
  }

  Number withoutCommon(Number number) {
    const std::span<const C> before = lists_.list(number);
    rest_.assign(before.begin(), before.end());
    algebra_.sharp(rest_, common_);
    if (rest_.size() > before.size()) algebra_.simplify(rest_);
    return lists_.number(rest_);
  }

  // The products of all pairs, the last pair first.
  void intersect(std::span<const C> upper, std::span<const C> lower) {
    common_.clear();
    for (auto x = upper.rbegin(); x != upper.rend(); ++x) {
      for (auto y = lower.rbegin(); y != lower.rend(); ++y) {
        if (auto product = intersectCubes(*x, *y)) common_.push_back(std::move(*product));
      }
    }
  }

  ListAlgebra<C> algebra_;
  ListStore<C> lists_;
  PairTable separated_;
  std::vector<Number> numbers_;  // of the single cubes
  List common_;                  // scratch: the points of both lists of a pair
  List rest_;                    // scratch: the list in hand
};

template <PackedCube C>
std::vector<C> expandSum(std::span<const C> cubes, std::size_t width) {
  XorExpansion<C> expansion(cubes, width);
  typename XorExpansion<C>::State state;
  for (std::size_t i = 0; i < cubes.size(); ++i) expansion.take(state, i);
  return expansion.sum(state);
}

template <PackedCube C, class CanBeat>
std::optional<std::pair<std::size_t, std::vector<C>>> expandShortest(
    std::span<const C> cubes, std::span<const std::size_t> places, std::size_t width,
    CanBeat canBeat) {
  std::optional<std::pair<std::size_t, std::vector<C>>> best;
  XorExpansion<C> expansion(cubes, width);
  typename XorExpansion<C>::State front;  // the cubes in front of the place
  typename XorExpansion<C>::State whole;
  std::size_t taken = 0;
  for (const std::size_t place : places) {
    if (best && !canBeat(place, best->second.size())) continue;
    while (taken < place) expansion.take(front, taken++);
    whole = front;
    for (std::size_t k = place + 1; k < cubes.size(); ++k) expansion.take(whole, k);
    std::vector<C> sum = expansion.sum(whole);
    if (!best || sum.size() < best->second.size()) best.emplace(place, std::move(sum));
  }
  return best;
}

}  // namespace

CubeList xorExpand(std::span<const Cube> cubes, std::size_t width) {
  if (width > 64) return expandSum(cubes, width);
  CubeList sum;
  widen(expandSum<NarrowCube>(narrowed(cubes), width), sum);
  return sum;
}

std::optional<LeftOut> shortestLeftOut(
    std::span<const Cube> cubes, std::span<const std::size_t> places, std::size_t width,
    const std::function<bool(std::size_t place, std::size_t length)>& canBeat) {
  if (width > 64) {
    auto best = expandShortest(cubes, places, width, canBeat);
    if (!best) return std::nullopt;
    return LeftOut{best->first, std::move(best->second)};
  }
  const std::vector<NarrowCube> light = narrowed(cubes);
  const auto best = expandShortest<NarrowCube>(light, places, width, canBeat);
  if (!best) return std::nullopt;
  LeftOut result{best->first, {}};
  widen(best->second, result.sum);
  return result;
}

}  // namespace ostrel
