// The operations of the minimizer on lists of cubes, with an effort that never ends.
#pragma once

#include <functional>
#include <span>

#include "minimizer/sum_of_products.h"
#include "minimizer/xor_cover.h"
#include "minimizer/xor_expansion.h"
#include "support/cube_texts.h"

namespace ostrel {

inline void simplifyList(CubeList& list, std::size_t width) {
  Effort unbounded;
  ListAlgebra<Cube>(width, unbounded).simplify(list);
}

inline void sharpList(CubeList& list, const CubeList& taken, std::size_t width) {
  Effort unbounded;
  ListAlgebra<Cube>(width, unbounded).sharp(list, taken);
}

template <PackedCube C = Cube>
CubeList xorExpand(const CubeList& cubes, std::size_t width) {
  Effort unbounded;
  XorExpansion<C> expansion(width, unbounded);
  typename XorExpansion<C>::State state;
  for (const Cube& cube : cubes) expansion.take(state, C(cube));
  const auto sum = expansion.sum(state);
  return CubeList(sum.begin(), sum.end());
}

inline Texts coverByXor(const Texts& texts) {
  const CubeList cubes = cubesOf(texts);
  const auto cover = xorCover(std::span<const Cube>(cubes), widthOf(texts));
  return cover ? textsOf(*cover, widthOf(texts)) : Texts{"none"};
}

}  // namespace ostrel
