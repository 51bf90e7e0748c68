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
#include <utility>

#include "minimizer/cube_groups.h"

namespace ostrel {
namespace {

/// The operations on lists of one width, with the scratch memory that they share.
class ListAlgebra {
 public:
  explicit ListAlgebra(std::size_t width) : groups_(width) {}

  void simplify(CubeList& list);
  void sharp(CubeList& list, std::span<const Cube> taken);
  void complement(CubeList& list);

 private:
  void sharpOne(CubeList& list, const Cube& taken);
  void merge(CubeList& list);

  CubeGroups groups_;
  CubeList whole_;   // scratch: the cubes that a sharp product leaves as they are
  CubeList pieces_;  // scratch: the pieces of the others
};

void ListAlgebra::simplify(CubeList& list) {
  groups_.groupByDashes(list);
  groups_.expandGroups();
  groups_.mergeGroups(groups_.width());
  groups_.dropRedundant();
  groups_.flattenGroups(list);
}

void ListAlgebra::merge(CubeList& list) {
  groups_.groupByDashes(list);
  groups_.mergeGroups(groups_.width());
  groups_.flattenGroups(list);
}

void ListAlgebra::sharp(CubeList& list, std::span<const Cube> taken) {
  std::size_t merged = 0;
  for (const Cube& cube : taken) {
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
void ListAlgebra::sharpOne(CubeList& list, const Cube& taken) {
  whole_.clear();
  pieces_.clear();
  const bool firstIsWhole = !cubesIntersect(list.front(), taken);
  for (Cube& cube : list) {
    if (!sharpCube(cube, taken, pieces_)) whole_.push_back(std::move(cube));
  }
  list.clear();
  if (firstIsWhole) list.push_back(std::move(whole_.front()));
  const auto others = whole_.rend() - (firstIsWhole ? 1 : 0);
  std::move(whole_.rbegin(), others, std::back_inserter(list));
  std::move(pieces_.begin(), pieces_.end(), std::back_inserter(list));
}

void ListAlgebra::complement(CubeList& list) {
  if (list.empty()) return;
  CubeList rest(1);
  sharp(rest, list);
  list = std::move(rest);
  simplify(list);
}

/// The exclusive OR in the making: slot k starts as cube k, and for each pair of slots the points
/// that both hold are taken out of both. A point of an even number of cubes thus vanishes, and one
/// of an odd number stays in one slot; at the end the slots are disjoint.
class XorExpansion {
 public:
  XorExpansion(ListAlgebra& algebra, std::vector<CubeList> slots)
      : algebra_(algebra), slots_(std::move(slots)) {}

  CubeList run() {
    for (std::size_t i = 1; i < slots_.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) separate(slots_[i], slots_[j]);
    }
    CubeList result;
    for (CubeList& slot : slots_) {
      std::move(slot.begin(), slot.end(), std::back_inserter(result));
    }
    return result;
  }

 private:
  void separate(CubeList& upper, CubeList& lower) {
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
  void intersect(const CubeList& upper, const CubeList& lower) {
    common_.clear();
    for (auto x = upper.rbegin(); x != upper.rend(); ++x) {
      for (auto y = lower.rbegin(); y != lower.rend(); ++y) {
        if (auto product = intersectCubes(*x, *y)) common_.push_back(std::move(*product));
      }
    }
  }

  ListAlgebra& algebra_;
  std::vector<CubeList> slots_;
  CubeList common_;  // scratch: the points of both slots of a pair
};

}  // namespace

CubeList minimizeList(CubeList list, std::size_t width, std::size_t wideWidth) {
  CubeGroups groups(width);
  groups.groupByDashes(list);
  groups.mergeGroups(wideWidth);
  groups.dropDuplicates(wideWidth);
  groups.flattenGroups(list);
  return list;
}

void simplifyList(CubeList& list, std::size_t width) {
  ListAlgebra(width).simplify(list);
}

void sharpList(CubeList& list, std::span<const Cube> taken, std::size_t width) {
  ListAlgebra(width).sharp(list, taken);
}

void complementList(CubeList& list, std::size_t width) {
  ListAlgebra(width).complement(list);
}

CubeList xorExpand(std::span<const Cube> cubes, std::size_t width) {
  std::vector<CubeList> slots;
  bool isInverted = false;
  for (const Cube& cube : cubes) {
    if (cube.literalCount() == 0) {
      isInverted = !isInverted;
    } else {
      slots.emplace_back(1, cube);
    }
  }
  if (slots.empty()) return isInverted ? CubeList(1) : CubeList();
  ListAlgebra algebra(width);
  CubeList result = XorExpansion(algebra, std::move(slots)).run();
  if (isInverted) algebra.complement(result);
  return result;
}

}  // namespace ostrel
