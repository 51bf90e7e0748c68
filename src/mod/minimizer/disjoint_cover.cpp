// Disjoint covers: cubes of which no two share a point, so that their OR is their exclusive OR.
//
// Idea. The disjoint sharp product (Hong, Cain, Ostapko, "MINI: a heuristic approach for logic
// minimization", 1974), cube by cube. The cubes are brought into a work group one by one, those
// with the most dashes first. A cube that is disjoint from the whole work group joins it. Where two
// cubes meet, the one with more dashes (the work cube, if they have equally many) stays whole, and
// the other becomes what is left of it: one piece in place, further pieces in the pending group,
// which is worked off in the same way when all cubes have had their turn. The pieces of a cube
// overlap each other, and so each of them must pass the work group like any other cube.
//
// Example. "-11" stands in the work group when "11-" comes. The work cube stays, "11-" becomes
// "110", which is disjoint and joins. With "1--" against "-00" the latter becomes "000"; with
// "11--" against "--11" the latter leaves the pieces "0-11" in place and "-011" pending.
//
// Cost. A scan costs the list times the work group, a few word operations for each pair, and there
// are about as many scans as times that a cube can be cut. The work group is counted after each
// scan of the pending pieces: above 128 cubes there is no cover.
//
// Order. Part of the output, do not tidy, however much of it reads like an oversight:
// - Only the first cube of each group removes what it contains before the scans; what else is
//   contained goes when it meets its container.
// - A scan of a list stops as soon as the cube in hand turns out to lie inside a work cube while
//   other work cubes are still to come; the list is then purged and scanned again from its front.
// - In the first scan of a group a cube that joins the work group stays in its own group as well.
// - A cube that was cut is looked at in a later scan only, while the work cubes behind the cut are
//   compared with what is left of it.
// - Pieces that arrive during a scan of the pending ones stand in front of them in the next.
#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

#include "minimizer/list_checks.h"
#include "minimizer/marked_lists.h"

namespace ostrel {
namespace {

template <PackedCube C>
class DisjointCover {
 public:
  DisjointCover(std::span<const C> cubes, std::size_t width);

  bool build();
  const MarkedList<C>& cubes() const { return work_; }

 private:
  void removeContained();
  void placeGroup(MarkedList<C>& group);
  bool placePieces();
  void scan(MarkedList<C>& list, bool isFirstScan);
  bool fitCube(MarkedCube<C>& cube, bool isFirstScan);
  void splitPair(MarkedCube<C>& a, MarkedCube<C>& b);

  std::size_t width_;
  MarkedGroups<C> inputs_;  // the given cubes by number of dashes
  MarkedList<C> work_;      // the disjoint cover; deleted cubes stand in it until it is purged
  MarkedList<C> pending_;   // pieces of split cubes that wait for their turn
};

template <PackedCube C>
DisjointCover<C>::DisjointCover(std::span<const C> cubes, std::size_t width)
    : width_(width), inputs_(width + 1) {
  for (const C& cube : cubes) pushCube(inputs_[dashCount(cube, width)], cube);
}

template <PackedCube C>
bool DisjointCover<C>::build() {
  removeContained();
  for (std::size_t d = inputs_.size(); d-- > 0;) placeGroup(inputs_[d]);
  return placePieces();
}

// Only the first cube of each group removes cubes here. What else is contained in some cube goes
// when it meets that cube in the work group.
template <PackedCube C>
void DisjointCover<C>::removeContained() {
  for (std::size_t d = width_; d > 0; --d) {
    if (inputs_[d].empty()) continue;
    const C& first = inputs_[d].back().cube;
    for (std::size_t lower = d; lower-- > 0;) {
      std::erase_if(inputs_[lower],
                    [&](const MarkedCube<C>& inner) { return cubeContains(first, inner.cube); });
    }
  }
}

// In the first scan a cube that joins the work group stays in its own group as well; the next scan
// finds it inside its copy. Later scans take it out at once.
template <PackedCube C>
void DisjointCover<C>::placeGroup(MarkedList<C>& group) {
  bool isFirstScan = true;
  while (!group.empty()) {
    scan(group, isFirstScan);
    isFirstScan = false;
    purgeGroup(group);
    purgeGroup(work_);
    if (work_.empty() && !group.empty()) {
      work_.push_back(std::move(group.back()));
      group.pop_back();
    }
  }
}

template <PackedCube C>
bool DisjointCover<C>::placePieces() {
  purgeGroup(work_);
  if (work_.size() > xorGroupLimit) return false;
  MarkedList<C> list;
  while (!pending_.empty()) {
    list.clear();
    std::swap(list, pending_);
    scan(list, false);
    // Pieces that arrived during the scan stand in front of the list.
    std::move(pending_.begin(), pending_.end(), std::back_inserter(list));
    std::swap(list, pending_);
    purgeGroup(pending_);
    purgeGroup(work_);
    if (work_.size() > xorGroupLimit) return false;
  }
  return true;
}

template <PackedCube C>
void DisjointCover<C>::scan(MarkedList<C>& list, bool isFirstScan) {
  for (std::size_t i = list.size(); i-- > 0;) {
    if (!fitCube(list[i], isFirstScan)) return;
  }
}

// Tries to bring one cube into the work group; false if the scan has to stop. A cube that met
// another one is looked at again, in the form it then has, in a later scan.
template <PackedCube C>
bool DisjointCover<C>::fitCube(MarkedCube<C>& cube, bool isFirstScan) {
  if (work_.empty()) {
    pushCube(work_, cube.cube);
    return true;
  }
  bool touched = false;
  for (std::size_t i = work_.size(); i-- > 0;) {
    MarkedCube<C>& work = work_[i];
    if (work.deleted) continue;
    if (cube.deleted) return false;
    if (!cubesIntersect(work.cube, cube.cube)) continue;
    touched = true;
    splitPair(work, cube);
  }
  if (touched) return true;
  pushCube(work_, cube.cube);
  cube.deleted = !isFirstScan;
  return true;
}

// Takes the cube with more dashes (a, if they have equally many) away from the other one.
template <PackedCube C>
void DisjointCover<C>::splitPair(MarkedCube<C>& a, MarkedCube<C>& b) {
  const bool aIsBig = a.cube.literalCount() <= b.cube.literalCount();
  const C& big = aIsBig ? a.cube : b.cube;
  MarkedCube<C>& small = aIsBig ? b : a;
  if (cubeContains(big, small.cube)) {
    small.deleted = true;
    return;
  }
  const C whole = small.cube;
  bool isFirst = true;
  big.forEachLiteral([&](std::size_t column, char literal) {
    if (whole.at(column) != '-') return;
    const char inverse = literal == '1' ? '0' : '1';
    if (isFirst) {
      small.cube.set(column, inverse);
    } else {
      pushCube(pending_, whole);
      pending_.back().cube.set(column, inverse);
    }
    isFirst = false;
  });
}

// A merged cube comes to the front of the next group, where it can merge again when the walk gets
// there.
template <PackedCube C>
void mergeAdjacent(MarkedGroups<C>& groups) {
  for (MarkedList<C>& group : groups) {
    removePairs(group, [&](const C& a, const C& b) {
      const auto column = adjacentColumn(a, b);
      if (!column) return false;
      C merged = a;
      merged.set(*column, '-');
      pushCube(groups, std::move(merged));
      return true;
    });
  }
}

}  // namespace

template <PackedCube C>
bool buildDisjointCover(std::span<const C> cubes, MarkedGroups<C>& groups) {
  const std::size_t width = groups.size() - 1;
  DisjointCover<C> cover(cubes, width);
  if (!cover.build()) return false;
  for (std::size_t i = cover.cubes().size(); i-- > 0;) pushCube(groups, cover.cubes()[i].cube);
  assert(isDisjoint<C>(unmarked(groups)));
  mergeAdjacent(groups);
  assert(agree<C>(cubes, PointsOf::AnyCube, unmarked(groups), PointsOf::OddCubes));
  return true;
}

template bool buildDisjointCover(std::span<const Cube>, MarkedGroups<Cube>&);
template bool buildDisjointCover(std::span<const Cube64>, MarkedGroups<Cube64>&);

}  // namespace ostrel
