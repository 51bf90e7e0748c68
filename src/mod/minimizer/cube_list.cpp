#include "minimizer/cube_list.h"

namespace ostrel {

Cube remapCube(const Cube& cube, std::span<const std::size_t> columnMap) {
  Cube result;
  cube.forEachLiteral(
      [&](std::size_t column, char literal) { result.set(columnMap[column], literal); });
  return result;
}

std::optional<Cube> intersectCubes(const Cube& a, const Cube& b) {
  if (!cubesIntersect(a, b)) return std::nullopt;
  const bool aIsLonger = a.blockCount() >= b.blockCount();
  Cube result = aIsLonger ? a : b;
  const Cube& other = aIsLonger ? b : a;
  for (std::size_t i = 0; i < other.blockCount(); ++i) {
    const Cube::Block x = result.block(i);
    const Cube::Block y = other.block(i);
    result.setBlock(i, {x.care | y.care, x.value | y.value});
  }
  return result;
}

bool sharpCube(const Cube& a, const Cube& b, CubeList& pieces) {
  if (!cubesIntersect(a, b)) return false;
  for (std::size_t i = 0; i < b.blockCount(); ++i) {
    const Cube::Block x = a.block(i);
    const Cube::Block y = b.block(i);
    for (std::uint64_t rest = y.care & ~x.care; rest != 0; rest &= rest - 1) {
      const std::uint64_t bit = rest & (~rest + 1);
      pieces.push_back(a);
      pieces.back().setBlock(i, {x.care | bit, x.value | (~y.value & bit)});
    }
  }
  return true;
}

}  // namespace ostrel
