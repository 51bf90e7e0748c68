// The operations on lists of cubes as callers see them, which choose the form of the cubes.
#include "minimizer/sum_of_products.h"

#include "minimizer/list_algebra.h"

namespace ostrel {
namespace {

/// Runs work(list), on plain values where the cubes fit one block, as almost all do: the time of
/// the algebra is that of moving cubes between lists.
template <class Work>
void onLightCubes(CubeList& list, std::size_t width, Work work) {
  if (width > 64) {
    work(list);
    return;
  }
  std::vector<NarrowCube> light = narrowed(list);
  work(light);
  widen(light, list);
}

}  // namespace

CubeList minimizeList(CubeList list, std::size_t width, std::size_t wideWidth) {
  onLightCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    CubeGroups<C> groups(width);
    groups.groupByDashes(cubes);
    groups.mergeGroups(wideWidth);
    groups.dropDuplicates(wideWidth);
    groups.flattenGroups(cubes);
  });
  return list;
}

void simplifyList(CubeList& list, std::size_t width) {
  onLightCubes(list, width, [width]<PackedCube C>(std::vector<C>& cubes) {
    ListAlgebra<C>(width).simplify(cubes);
  });
}

void sharpList(CubeList& list, std::span<const Cube> taken, std::size_t width) {
  if (width > 64) {
    ListAlgebra<Cube>(width).sharp(list, taken);
    return;
  }
  std::vector<NarrowCube> light = narrowed(list);
  ListAlgebra<NarrowCube>(width).sharp(light, narrowed(taken));
  widen(light, list);
}

void complementList(CubeList& list, std::size_t width) {
  Effort unbounded;
  complementList(list, width, unbounded);
}

bool complementList(CubeList& list, std::size_t width, Effort& effort) {
  bool isDone = false;
  onLightCubes(list, width, [&]<PackedCube C>(std::vector<C>& cubes) {
    isDone = ListAlgebra<C>(width).complement(cubes, effort);
  });
  return isDone;
}

}  // namespace ostrel
