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

/// The exclusive OR in the making: each cube that is taken in becomes a slot of its own, and for
/// each slot before it the points that both hold are taken out of both. A point of an even number
/// of cubes thus vanishes, and one of an odd number stays in one slot; the slots are disjoint.
/// Cubes without a literal are no slots, they invert the result.
template <PackedCube C>
class XorExpansion {
  using List = std::vector<C>;

 public:
  explicit XorExpansion(std::size_t width) : algebra_(width) {}

  void take(const C& cube) {
    if (cube.literalCount() == 0) {
      isInverted_ = !isInverted_;
      return;
    }
    if (slotCount_ == slots_.size()) slots_.emplace_back();
    List& slot = slots_[slotCount_];
    slot.assign(1, cube);
    for (std::size_t j = 0; j < slotCount_; ++j) separate(slot, slots_[j]);
    ++slotCount_;
  }

  List sum() {
    if (slotCount_ == 0) return List(isInverted_ ? 1 : 0);
    List result;
    for (std::size_t j = 0; j < slotCount_; ++j) {
      result.insert(result.end(), slots_[j].begin(), slots_[j].end());
    }
    if (isInverted_) algebra_.complement(result);
    return result;
  }

  /// Takes over what another expansion has taken in; memory stays.
  void copyFrom(const XorExpansion& other) {
    if (slots_.size() < other.slotCount_) slots_.resize(other.slotCount_);
    std::copy_n(other.slots_.begin(), other.slotCount_, slots_.begin());
    slotCount_ = other.slotCount_;
    isInverted_ = other.isInverted_;
  }

 private:
  void separate(List& upper, List& lower) {
    intersect(upper, lower);
    if (common_.empty()) return;
    if (common_.size() > 2) algebra_.simplify(common_);
    const std::size_t lowerSize = lower.size();
    const std::size_t upperSize = upper.size();
    algebra_.sharp(lower, common_);
    algebra_.sharp(upper, common_);
    if (lower.size() > lowerSize) algebra_.simplify(lower);
    if (upper.size() > upperSize) algebra_.simplify(upper);
  }

  // The products of all pairs, the last pair first.
  void intersect(const List& upper, const List& lower) {
    common_.clear();
    for (auto x = upper.rbegin(); x != upper.rend(); ++x) {
      for (auto y = lower.rbegin(); y != lower.rend(); ++y) {
        if (auto product = intersectCubes(*x, *y)) common_.push_back(std::move(*product));
      }
    }
  }

  ListAlgebra<C> algebra_;
  std::vector<List> slots_;  // those behind slotCount_ only keep their memory
  std::size_t slotCount_ = 0;
  bool isInverted_ = false;
  List common_;  // scratch: the points of both slots of a pair
};

template <PackedCube C>
std::vector<C> expandSum(std::span<const C> cubes, std::size_t width) {
  XorExpansion<C> expansion(width);
  for (const C& cube : cubes) expansion.take(cube);
  return expansion.sum();
}

/// Calls visit(i, sum) for the first `count` sums of all cubes but the i-th.
template <PackedCube C, class Visit>
void expandLeftOut(std::span<const C> cubes, std::size_t count, std::size_t width, Visit visit) {
  XorExpansion<C> front(width);
  XorExpansion<C> whole(width);
  for (std::size_t i = 0; i < count; ++i) {
    whole.copyFrom(front);
    for (const C& cube : cubes.subspan(i + 1)) whole.take(cube);
    visit(i, whole.sum());
    front.take(cubes[i]);
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
