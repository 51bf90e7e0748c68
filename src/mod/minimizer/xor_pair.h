// Exclusive-or synthesis of one function.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

#include "minimizer/cube_list.h"

namespace ostrel {

/// A function as the exclusive OR of one product and a sum of products.
struct XorPair {
  Cube left;
  CubeList right;
};

struct XorPairLimits {
  /// Cubes tried as left operands, times the cubes of the exclusive-or sum; one is always tried.
  std::size_t effort;
  /// A function is left alone if each of its pairs is proven to have as many terms or more.
  std::size_t terms;
  /// Whether the cube without a literal may be the left operand.
  bool universalIsAllowed;
};

/// The pair with the shortest right operand of a function, the OR of `cubes` of that width; of
/// equally short ones the first that is tried, those with the most literals first. None if the
/// function has no exclusive-or cover, if no cube may be tried, or if no pair is worth it. `tick`
/// is called again and again meanwhile.
std::optional<XorPair> bestXorPair(std::span<const Cube> cubes, std::size_t width,
                                   const XorPairLimits& limits, const std::function<void()>& tick);

}  // namespace ostrel
