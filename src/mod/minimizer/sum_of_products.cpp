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
  void sharp(List& list, std::span<const C> taken);
  void complement(List& list);

 private:
  void sharpOne(List& list, const C& taken);
  void merge(List& list);

  CubeGroups<C> groups_;
  List whole_;   // scratch: the cubes that a sharp product leaves as they are
  List pieces_;  // scratch: the pieces of the others
};

template <PackedCube C>
void ListAlgebra<C>::simplify(List& list) {
  groups_.groupByDashes(list);
  groups_.expandGroups();
  groups_.mergeGroups(groups_.width());
  groups_.dropRedundant();
  groups_.flattenGroups(list);
}

template <PackedCube C>
void ListAlgebra<C>::merge(List& list) {
  groups_.groupByDashes(list);
  groups_.mergeGroups(groups_.width());
  groups_.flattenGroups(list);
}

template <PackedCube C>
void ListAlgebra<C>::sharp(List& list, std::span<const C> taken) {
  std::size_t merged = 0;
  for (const C& cube : taken) {
    if (list.empty()) return;
    sharpOne(list, cube);
    if (merged < 3) {
      merge(list);
      ++merged;
    } else {
      simplify(list);
      merged = 0;
    }
  }
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
void ListAlgebra<C>::complement(List& list) {
  if (list.empty()) return;
  List rest(1);
  sharp(rest, list);
  list = std::move(rest);
  simplify(list);
}

/// The exclusive OR in the making: slot k starts as cube k, and for each pair of slots the points
/// that both hold are taken out of both. A point of an even number of cubes thus vanishes, and one
/// of an odd number stays in one slot; at the end the slots are disjoint.
template <PackedCube C>
class XorExpansion {
  using List = std::vector<C>;

 public:
  XorExpansion(ListAlgebra<C>& algebra, std::vector<List> slots)
      : algebra_(algebra), slots_(std::move(slots)) {}

  List run() {
    for (std::size_t i = 1; i < slots_.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) separate(slots_[i], slots_[j]);
    }
    List result;
    for (List& slot : slots_) {
      std::move(slot.begin(), slot.end(), std::back_inserter(result));
    }
    return result;
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

  ListAlgebra<C>& algebra_;
  std::vector<List> slots_;
  List common_;  // scratch: the points of both slots of a pair
};

template <PackedCube C>
std::vector<C> expandSum(std::span<const C> cubes, std::size_t width) {
  std::vector<std::vector<C>> slots;
  bool isInverted = false;
  for (const C& cube : cubes) {
    if (cube.literalCount() == 0) {
      isInverted = !isInverted;
    } else {
      slots.emplace_back(1, cube);
    }
  }
  if (slots.empty()) return std::vector<C>(isInverted ? 1 : 0);
  ListAlgebra<C> algebra(width);
  std::vector<C> result = XorExpansion<C>(algebra, std::move(slots)).run();
  if (isInverted) algebra.complement(result);
  return result;
}

std::vector<NarrowCube> narrowed(std::span<const Cube> cubes) {
  return std::vector<NarrowCube>(cubes.begin(), cubes.end());
}

// Replaces the list, whose cubes fit one block as well, and keeps its memory.
void widen(std::span<const NarrowCube> cubes, CubeList& list) {
  list.resize(cubes.size());
  for (std::size_t i = 0; i < cubes.size(); ++i) list[i].setBlock(0, cubes[i].block(0));
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

template <PackedCube C>
ListAlgebra<C> algebraFor(const std::vector<C>& /*list*/, std::size_t width) {
  return ListAlgebra<C>(width);
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
  onLightCubes(list, width, [width](auto& cubes) { algebraFor(cubes, width).simplify(cubes); });
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

void complementList(CubeList& list, std::size_t width) {
  onLightCubes(list, width, [width](auto& cubes) { algebraFor(cubes, width).complement(cubes); });
}

CubeList xorExpand(std::span<const Cube> cubes, std::size_t width) {
  if (width > 64) return expandSum(cubes, width);
  CubeList sum;
  widen(expandSum<NarrowCube>(narrowed(cubes), width), sum);
  return sum;
}

}  // namespace ostrel
