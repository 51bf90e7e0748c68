// How many cubes a sum of products must have, without working one out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/cube.h"

namespace ostrel {

/// Lower bounds for functions that differ from a given one inside one cube, or everywhere.
class CoverBound {
 public:
  /// The given function is the OR of `cubes`, which have `width` columns. With more than 64 of
  /// them there is no bound but 0.
  template <PackedCube C>
  CoverBound(std::span<const C> cubes, std::size_t width);

  /// Every sum of products of the exclusive OR of the function and the cube `flipped` has at
  /// least as many cubes as the answer. A cube without a literal stands for the complement of the
  /// function. The search for a better bound ends at `enough`.
  std::size_t ofXor(const Cube::Block& flipped, std::size_t enough);

 private:
  /// A point and its neighbours, those that differ in one column.
  struct Point {
    std::uint64_t values;
    std::uint64_t offNeighbours;  // the columns of the neighbours outside of a function
    bool isOn;                    // lies in the function itself
  };

  Point look(std::uint64_t values) const;
  Point remotePoint(const Cube::Block& cube) const;
  bool offer(Point point, const Cube::Block& flipped);
  bool holdsFlippedOn(std::uint64_t a, std::uint64_t b, const Cube::Block& flipped) const;

  std::uint64_t columns_ = 0;
  std::vector<Cube::Block> cubes_;
  std::vector<Point> points_;  // of the function, one from each of the first cubes
  std::vector<Point> chosen_;  // scratch: independent points of the function in hand
};

}  // namespace ostrel
