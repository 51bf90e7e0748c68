// A lower bound by independent points: if the smallest cube that holds two points of the complement
// meets the function, no cube of the complement holds both. So a set of points of which this is
// true for any two needs a cube for each of them, in whatever cover.
//
// Example: the complement of "11-", "--1" has the points 100 and 010. The smallest cube of both is
// "--0", which meets "11-": two cubes at least, and "0-0", "-00" is a cover with two.
//
// Good points stand right beside a cube of the function, with one of its literals inverted: two
// such points of one cube are always independent. The search takes each that is independent of all
// before. It is a few hundred tests on two cubes, where a complement costs many thousand.
#include "minimizer/complement_bound.h"

#include <algorithm>
#include <vector>

#include "minimizer/cube_list.h"

namespace ostrel {
namespace {

class IndependentPoints {
 public:
  explicit IndependentPoints(std::span<const NarrowCube> cubes) : cubes_(cubes) {}

  std::size_t size() const { return points_.size(); }

  /// Takes a point, a cube without a dash, if it is none of the function and independent of all
  /// that were taken.
  void offer(const NarrowCube& point) {
    if (meetsFunction(point)) return;
    const auto isIndependent = [&](const NarrowCube& other) {
      return meetsFunction(supercube(point, other));
    };
    if (std::all_of(points_.begin(), points_.end(), isIndependent)) points_.push_back(point);
  }

 private:
  bool meetsFunction(const NarrowCube& cube) const {
    return std::any_of(cubes_.begin(), cubes_.end(),
                       [&cube](const NarrowCube& other) { return cubesIntersect(cube, other); });
  }

  std::span<const NarrowCube> cubes_;
  std::vector<NarrowCube> points_;
};

}  // namespace

bool complementHasAtLeast(std::size_t count, std::span<const Cube> cubes, std::size_t width) {
  if (width == 0 || width > 64) return false;
  const std::vector<NarrowCube> function = narrowed(cubes);
  const std::uint64_t columns = ~std::uint64_t{0} >> (64 - width);
  IndependentPoints points(function);
  for (const NarrowCube& cube : function) {
    const Cube::Block block = cube.block(0);
    for (std::uint64_t rest = block.care; rest != 0; rest &= rest - 1) {
      const std::uint64_t beside = block.value ^ (rest & (~rest + 1));
      for (const std::uint64_t dashes : {std::uint64_t{0}, ~block.care}) {
        NarrowCube point;
        point.setBlock(0, {columns, beside | dashes});
        points.offer(point);
        if (points.size() >= count) return true;
      }
    }
  }
  return false;
}

}  // namespace ostrel
