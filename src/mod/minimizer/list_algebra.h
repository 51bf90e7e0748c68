// The algebra of whole lists, on cubes of either form and with memory that is kept from one
// operation to the next.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "minimizer/cube_groups.h"

namespace ostrel {

/// No bound on an effort.
inline constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// The operations on lists of one width. sum_of_products.h says what they do to their lists.
template <PackedCube C>
class ListAlgebra {
  using List = std::vector<C>;

 public:
  explicit ListAlgebra(std::size_t width) : groups_(width) {}

  void simplify(List& list);

  /// False, with the list in between, once the steps had more pairs of cubes to merge than the
  /// effort.
  bool sharp(List& list, std::span<const C> taken, std::size_t effort = unlimited);

  bool complement(List& list, std::size_t effort = unlimited);

 private:
  void sharpOne(List& list, const C& taken);
  void merge(List& list);

  CubeGroups<C> groups_;
  List pieces_;  // scratch: the pieces that a sharp product leaves of the cubes it cuts
};

}  // namespace ostrel
