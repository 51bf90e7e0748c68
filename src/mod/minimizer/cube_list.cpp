#include "minimizer/cube_list.h"

namespace ostrel {

Cube remapCube(const Cube& cube, std::span<const std::size_t> columnMap) {
  Cube result;
  cube.forEachLiteral(
      [&](std::size_t column, char literal) { result.set(columnMap[column], literal); });
  return result;
}

}  // namespace ostrel
