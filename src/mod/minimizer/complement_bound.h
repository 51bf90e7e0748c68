// How many cubes a complement must have, without working it out.
#pragma once

#include <cstddef>
#include <span>

#include "minimizer/cube.h"

namespace ostrel {

/// True if every sum of products of the complement of `cubes` is proven to have `count` cubes or
/// more. False says nothing; it is the answer for more than 64 columns.
bool complementHasAtLeast(std::size_t count, std::span<const Cube> cubes, std::size_t width);

}  // namespace ostrel
