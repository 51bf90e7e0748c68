// A lower bound on covers by independent points.
//
// Idea. If the smallest cube that holds two points of a function holds a point outside of it too,
// no cube of a sum of products holds both. So a set of points of which this is true for any two
// needs a cube for each of them: the independent set of the covering problem (Rudell,
// Sangiovanni-Vincentelli, "Multiple-valued minimization for PLA optimization", 1987), found
// without a prime.
//
// A neighbour that lies outside is the cheapest evidence: it lies between its point and each point
// on its side. Neighbours are a set of columns, and an exclusive OR with a cube changes it in a way
// that the place of the point tells. So the points are sought once for a function, from each cube
// one with as many outer neighbours as single steps lead to, and serve for all cubes that are to be
// flipped; what the flipped cube turns on is sought among their outer neighbours.
//
// Example. "11-", "--1" without the cube "-11" leaves the points 110, 001, 101. The smallest cube
// of 110 and 001 is "---", so there are two cubes at least; "110", "-01" has two.
//
// Cost. The search for the points compares each cube, at some dozen places, with each other; after
// that a bound costs some hundred comparisons. It spares most expansions of exclusive-or sums and
// many complements, without which runs take two to four times as long.
//
// Order. The bound only decides what is not worked out, never what comes out: any other bound that
// holds would do.
#include "minimizer/cover_bound.h"

#include <algorithm>

#include "minimizer/budgets.h"
#include "minimizer/column_set.h"

namespace ostrel {
namespace {

/// The columns in which a point is not in a cube.
std::uint64_t mismatch(std::uint64_t values, const Cube::Block& cube) {
  return cube.care & (values ^ cube.value);
}

/// The columns of a point's neighbours in a cube.
std::uint64_t neighboursIn(std::uint64_t values, const Cube::Block& cube) {
  const std::uint64_t away = mismatch(values, cube);
  if (away == 0) return ~cube.care;
  return isSingleBit(away) ? away : 0;
}

}  // namespace

template <PackedCube C>
CoverBound::CoverBound(std::span<const C> cubes, std::size_t width) {
  if (width == 0 || width > 64) return;
  columns_ = ~std::uint64_t{0} >> (64 - width);
  for (const C& cube : cubes) cubes_.push_back(cube.block(0));
  for (const Cube::Block& cube : std::span(cubes_).first(std::min(cubes_.size(), boundPoints))) {
    points_.push_back(remotePoint(cube));
  }
}

std::size_t CoverBound::ofXor(const Cube::Block& cube, std::size_t enough) {
  chosen_.clear();
  for (const Point& point : points_) {
    if (offer(point, cube) && chosen_.size() >= enough) return enough;
  }
  for (const Point& point : points_) {
    for (std::uint64_t rest = point.offNeighbours; rest != 0; rest &= rest - 1) {
      const std::uint64_t neighbour = point.values ^ lowestBit(rest);
      if (mismatch(neighbour, cube) != 0) continue;
      if (offer(look(neighbour), cube) && chosen_.size() >= enough) return enough;
    }
  }
  return chosen_.size();
}

CoverBound::Point CoverBound::look(std::uint64_t values) const {
  std::uint64_t onNeighbours = 0;
  bool isOn = false;
  for (const Cube::Block& cube : cubes_) {
    onNeighbours |= neighboursIn(values, cube);
    isOn |= mismatch(values, cube) == 0;
  }
  return {values, columns_ & ~onNeighbours, isOn};
}

// A point of the cube with no fewer outer neighbours than those that differ from it in one column.
CoverBound::Point CoverBound::remotePoint(const Cube::Block& cube) const {
  Point best = look(cube.value);
  for (bool isBetter = true; isBetter;) {
    isBetter = false;
    for (std::uint64_t rest = columns_ & ~cube.care; rest != 0; rest &= rest - 1) {
      const Point other = look(best.values ^ lowestBit(rest));
      if (bitCount(other.offNeighbours) <= bitCount(best.offNeighbours)) continue;
      best = other;
      isBetter = true;
    }
  }
  return best;
}

// Chooses a point, with its neighbours in the given function, if it lies in the one in hand and is
// independent of all that were chosen.
bool CoverBound::offer(Point point, const Cube::Block& flipped) {
  const bool isFlipped = mismatch(point.values, flipped) == 0;
  if (point.isOn == isFlipped) return false;
  point.offNeighbours ^= columns_ & neighboursIn(point.values, flipped);
  for (const Point& other : chosen_) {
    const std::uint64_t between = point.values ^ other.values;
    if ((between & (point.offNeighbours | other.offNeighbours)) != 0) continue;
    if (!holdsFlippedOn(point.values, other.values, flipped)) return false;
  }
  chosen_.push_back(point);
  return true;
}

// True if the smallest cube of two points holds a point that the flipped cube takes out.
bool CoverBound::holdsFlippedOn(std::uint64_t a, std::uint64_t b,
                                const Cube::Block& flipped) const {
  const std::uint64_t care = columns_ & ~(a ^ b);
  if ((care & mismatch(a, flipped)) != 0) return false;
  const Cube::Block common = {care | flipped.care, (a & care) | flipped.value};
  return std::any_of(cubes_.begin(), cubes_.end(), [&common](const Cube::Block& cube) {
    return (common.care & mismatch(common.value, cube)) == 0;
  });
}

template CoverBound::CoverBound(std::span<const Cube>, std::size_t);
template CoverBound::CoverBound(std::span<const Cube64>, std::size_t);

}  // namespace ostrel
