#include "minimizer/cube_list.h"

namespace ostrel {

Cube remapCube(const Cube& cube, std::span<const std::uint32_t> columnMap) {
  Cube result;
  cube.forEachLiteral(
      [&](std::size_t column, char literal) { result.set(columnMap[column], literal); });
  return result;
}

std::vector<NarrowCube> narrowed(std::span<const Cube> cubes) {
  return std::vector<NarrowCube>(cubes.begin(), cubes.end());
}

void widen(std::span<const NarrowCube> cubes, CubeList& list) {
  list.resize(cubes.size());
  for (std::size_t i = 0; i < cubes.size(); ++i) list[i].setBlock(0, cubes[i].block(0));
}

}  // namespace ostrel
