#include "minimizer/cube_list.h"

namespace ostrel {

Cube remapCube(const Cube& cube, std::span<const std::uint32_t> columnMap) {
  // Neighbours mostly stay neighbours: a block is written when the next literal is in another one.
  Cube result;
  Cube::Block block;
  std::size_t index = 0;
  cube.forEachLiteral([&](std::size_t column, char literal) {
    const std::size_t target = columnMap[column];
    if (target / 64 != index) {
      result.setBlock(index, block);
      index = target / 64;
      block = result.block(index);
    }
    const std::uint64_t bit = std::uint64_t{1} << (target % 64);
    block.care |= bit;
    if (literal == '1') block.value |= bit;
  });
  result.setBlock(index, block);
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
