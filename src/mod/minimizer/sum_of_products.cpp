// Sharp products of lists, and the operations that stand on them.
//
// Example: the complement of "10", "01" starts from "--". Taking "10" away leaves the pieces "0-"
// and "-1"; merging keeps both, in reverse order. Taking "01" away from "-1" leaves "11", from
// "0-" it leaves "00". The complement is "11", "00".
//
// The plain sharp product makes overlapping pieces, at most one for each literal of the cube that
// is taken away. What keeps them few is the merging after each cube and the simplification, which
// costs more, after every fourth; their order follows from the order in which pieces and untouched
// cubes are put together, and ties go to the first cube everywhere below.
#include "minimizer/sum_of_products.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "minimizer/cube_groups.h"

namespace ostrel {
namespace {

/// The operations on lists of one width, with the scratch memory that they share.
template <PackedCube C>
class ListAlgebra {
  using List = std::vector<C>;

 public:
  explicit ListAlgebra(std::size_t width) : groups_(width) {}

  void simplify(List& list);
  bool sharp(List& list, std::span<const C> taken, std::size_t effort = unlimited);
  bool complement(List& list, std::size_t effort = unlimited);

 private:
  void sharpOne(List& list, const C& taken);
  void merge(List& list);

  CubeGroups<C> groups_;
  List whole_;   // scratch: the cubes that a sharp product leaves as they are
  List pieces_;  // scratch: the pieces of the others
};

template <PackedCube C>
void ListAlgebra<C>::simplify(List& list) {
  if (list.size() < 2) return;
  groups_.groupByDashes(list);
  groups_.expandGroups();
  groups_.mergeGroups(groups_.width());
  groups_.dropRedundant();
  groups_.flattenGroups(list);
}

template <PackedCube C>
void ListAlgebra<C>::merge(List& list) {
  if (list.size() < 2) return;
  groups_.groupByDashes(list);
  groups_.mergeGroups(groups_.width());
  groups_.flattenGroups(list);
}

// False, with the list in between, once the steps had more pairs of cubes to merge than the effort.
template <PackedCube C>
bool ListAlgebra<C>::sharp(List& list, std::span<const C> taken, std::size_t effort) {
  std::size_t merged = 0;
  for (const C& cube : taken) {
    if (list.empty()) return true;
    sharpOne(list, cube);
    const std::size_t pairs = list.size() * list.size();
    if (pairs > effort) return false;
    effort -= pairs;
    if (merged < 3) {
      merge(list);
      ++merged;
    } else {
      simplify(list);
      merged = 0;
    }
  }
  return true;
}

// The new list: the first cube if it was left whole, the other whole cubes in reverse order, then
// the pieces in the order in which they were made.
template <PackedCube C>
void ListAlgebra<C>::sharpOne(List& list, const C& taken) {
  whole_.clear();
  pieces_.clear();
  const bool firstIsWhole = !cubesIntersect(list.front(), taken);
  for (C& cube : list) {
    if (!sharpCube(cube, taken, pieces_)) whole_.push_back(std::move(cube));
  }
  list.clear();
  if (firstIsWhole) list.push_back(std::move(whole_.front()));
  const auto others = whole_.rend() - (firstIsWhole ? 1 : 0);
  std::move(whole_.rbegin(), others, std::back_inserter(list));
  std::move(pieces_.begin(), pieces_.end(), std::back_inserter(list));
}

template <PackedCube C>
bool ListAlgebra<C>::complement(List& list, std::size_t effort) {
  if (list.empty()) return true;
  List rest(1);
  if (!sharp(rest, list, effort)) return false;
  list = std::move(rest);
  simplify(list);
  return true;
}

/// What became of pairs of numbers, by hash.
class PairTable {
 public:
  using Number = std::uint32_t;
  using Pair = std::pair<Number, Number>;

  /// The entry of a pair: the result, or a pair of equal numbers that takes it in. It stands until
  /// the next call.
  Pair& find(Pair pair) {
    if (2 * ++used_ > entries_.size()) grow();
    Entry& entry = entries_[slotOf(pair)];
    if (entry.pair == pair) --used_;
    entry.pair = pair;
    return entry.result;
  }

 private:
  struct Entry {
    Pair pair;  // of equal numbers while the entry is free
    Pair result;
  };

  std::size_t slotOf(Pair pair) const {
    const std::uint64_t key = std::uint64_t{pair.first} << 32U | pair.second;
    std::size_t slot = key * 0x9E3779B97F4A7C15U >> 20U & (entries_.size() - 1);
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

/// The exclusive OR in the making: each cube that is taken in becomes a slot of its own, and for
/// each slot before it the points that both hold are taken out of both. A point of an even number
/// of cubes thus vanishes, and one of an odd number stays in one slot; the slots are disjoint.
/// Cubes without a literal are no slots, they invert the result.
///
/// Lists never change once they are made and go by their number: sums that share cubes meet the
/// same pairs of lists again and again, and what became of a pair is looked up.
template <PackedCube C>
class XorExpansion {
  using List = std::vector<C>;
  using Number = PairTable::Number;

 public:
  /// What was taken in so far.
  struct State {
    std::vector<Number> slots;
    bool isInverted = false;
  };

  XorExpansion(std::span<const C> cubes, std::size_t width)
      : algebra_(width), cubes_(cubes.begin(), cubes.end()) {
    for (std::size_t i = 0; i <= cubes.size(); ++i) begins_.push_back(i);
    for (std::size_t i = 0; i < cubes.size(); ++i) origins_.push_back(static_cast<Number>(i));
  }

  /// Takes one of the cubes in, by its number.
  void take(State& state, std::size_t cube) {
    if (cubes_[cube].literalCount() == 0) {
      state.isInverted = !state.isInverted;
      return;
    }
    auto upper = static_cast<Number>(cube);
    for (Number& lower : state.slots) separate(upper, lower);
    state.slots.push_back(upper);
  }

  List sum(const State& state) {
    if (state.slots.empty()) return List(state.isInverted ? 1 : 0);
    List result;
    for (const Number slot : state.slots) {
      const std::span<const C> cubes = list(slot);
      result.insert(result.end(), cubes.begin(), cubes.end());
    }
    if (state.isInverted) algebra_.complement(result);
    return result;
  }

 private:
  std::span<const C> list(Number number) const {
    return std::span(cubes_).subspan(begins_[number], begins_[number + 1] - begins_[number]);
  }

  void separate(Number& upper, Number& lower) {
    // Most pairs are apart because the cubes are that they were cut from.
    if (!cubesIntersect(cubes_[origins_[upper]], cubes_[origins_[lower]])) return;
    PairTable::Pair& result = separated_.find({upper, lower});
    if (result.first == result.second) {
      result = {upper, lower};
      intersect(list(upper), list(lower));
      if (common_.size() > 2) algebra_.simplify(common_);
      if (!common_.empty()) {
        result.second = withoutCommon(lower);
        result.first = withoutCommon(upper);
      }
    }
    std::tie(upper, lower) = result;
  }

  // Makes the list without the common points.
  Number withoutCommon(Number number) {
    const std::span<const C> before = list(number);
    rest_.assign(before.begin(), before.end());
    algebra_.sharp(rest_, common_);
    if (rest_.size() > before.size()) algebra_.simplify(rest_);
    cubes_.insert(cubes_.end(), rest_.begin(), rest_.end());
    begins_.push_back(cubes_.size());
    origins_.push_back(origins_[number]);
    return static_cast<Number>(begins_.size() - 2);
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
  std::vector<C> cubes_;             // all lists, one behind the other; first the single cubes
  std::vector<std::size_t> begins_;  // where each list begins, and the end of the last
  std::vector<Number> origins_;      // the cube that each list was cut from
  PairTable separated_;
  List common_;  // scratch: the points of both lists of a pair
  List rest_;    // scratch: the list in hand
};

template <PackedCube C>
std::vector<C> expandSum(std::span<const C> cubes, std::size_t width) {
  XorExpansion<C> expansion(cubes, width);
  typename XorExpansion<C>::State state;
  for (std::size_t i = 0; i < cubes.size(); ++i) expansion.take(state, i);
  return expansion.sum(state);
}

/// Calls visit(i, sum) for the first `count` sums of all cubes but the i-th.
template <PackedCube C, class Visit>
void expandLeftOut(std::span<const C> cubes, std::size_t count, std::size_t width, Visit visit) {
  XorExpansion<C> expansion(cubes, width);
  typename XorExpansion<C>::State front;
  for (std::size_t i = 0; i < count; ++i) {
    auto whole = front;
    for (std::size_t k = i + 1; k < cubes.size(); ++k) expansion.take(whole, k);
    visit(i, expansion.sum(whole));
    expansion.take(front, i);
  }
}

/// Runs work(list), on plain values where the cubes fit one block, as almost all do: the time of
/// the algebra is that of moving cubes between lists.
template <class Work>
void onLightCubes(CubeList& list, std::size_t width, Work work) {
  if (width > 64) {
    work(list);
    return;
  }
  std::vector<NarrowCube> light = narrowed(list);
  work(light);
  widen(light, list);
}

}  // namespace

CubeList minimizeList(CubeList list, std::size_t width, std::size_t wideWidth) {
  onLightCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    CubeGroups<C> groups(width);
    groups.groupByDashes(cubes);
    groups.mergeGroups(wideWidth);
    groups.dropDuplicates(wideWidth);
    groups.flattenGroups(cubes);
  });
  return list;
}

void simplifyList(CubeList& list, std::size_t width) {
  onLightCubes(list, width, [width]<PackedCube C>(std::vector<C>& cubes) {
    ListAlgebra<C>(width).simplify(cubes);
  });
}

void sharpList(CubeList& list, std::span<const Cube> taken, std::size_t width) {
  if (width > 64) {
    ListAlgebra<Cube>(width).sharp(list, taken);
    return;
  }
  std::vector<NarrowCube> light = narrowed(list);
  ListAlgebra<NarrowCube>(width).sharp(light, narrowed(taken));
  widen(light, list);
}

bool complementList(CubeList& list, std::size_t width, std::size_t effort) {
  bool isDone = false;
  onLightCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    isDone = ListAlgebra<C>(width).complement(cubes, effort);
  });
  return isDone;
}

CubeList xorExpand(std::span<const Cube> cubes, std::size_t width) {
  if (width > 64) return expandSum(cubes, width);
  CubeList sum;
  widen(expandSum<NarrowCube>(narrowed(cubes), width), sum);
  return sum;
}

void forEachLeftOut(std::span<const Cube> cubes, std::size_t count, std::size_t width,
                    const std::function<void(std::size_t, CubeList)>& visit) {
  if (width > 64) {
    expandLeftOut(cubes, count, width, visit);
    return;
  }
  const std::vector<NarrowCube> light = narrowed(cubes);
  expandLeftOut<NarrowCube>(light, count, width, [&](std::size_t i, const auto& lightSum) {
    CubeList sum;
    widen(lightSum, sum);
    visit(i, std::move(sum));
  });
}

}  // namespace ostrel
