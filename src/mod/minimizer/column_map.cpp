#include "minimizer/column_map.h"

#include <cassert>

namespace ostrel {
Cube remapCube(const Cube& cube, const std::uint32_t* targets) {
  // Neighbours mostly stay neighbours: a block is written when the next literal is in another one.
  Cube result;
  Cube::Block block;
  std::size_t index = 0;
  cube.forEachLiteral([&](std::size_t column, char literal) {
    const std::size_t target = targets[column];
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
  assert(result.literalCount() == cube.literalCount());  // no two of them have one target
  return result;
}

ColumnMap::ColumnMap(const ColumnSet& used, std::size_t width)
    : ranks_(std::make_unique_for_overwrite<std::uint32_t[]>(width)) {
  used.forEach([this, width](std::size_t column) {
    assert(column < width);
    ranks_[column] = static_cast<std::uint32_t>(used_.size());
    used_.push_back(static_cast<std::uint32_t>(column));
  });
}

Cube ColumnMap::compact(const Cube& cube) const {
  const Cube result = remapCube(cube, ranks_.get());
  assert(widthOf(result) <= compactWidth());
  return result;
}

Cube ColumnMap::restore(const Cube& cube) const {
  assert(widthOf(cube) <= compactWidth());
  return remapCube(cube, used_.data());
}

}  // namespace ostrel
