// The algebra of whole lists, on cubes of either form and with memory that is kept from one
// operation to the next.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "minimizer/cube_groups.h"
#include "minimizer/effort.h"

namespace ostrel {

/// The operations on lists of one width. sum_of_products.h says what they do to their lists.
template <PackedCube C>
class ListAlgebra {
  using List = std::vector<C>;

 public:
  explicit ListAlgebra(std::size_t width) : groups_(width) {}

  /// Without an effort there is no bound. Where the effort ends, the list of simplify stands for
  /// the same function, that of sharp is somewhere in between, and complement leaves it unchanged;
  /// the answer is false then.
  void simplify(List& list);
  bool simplify(List& list, Effort& effort);
  void sharp(List& list, std::span<const C> taken);
  bool sharp(List& list, std::span<const C> taken, Effort& effort);
  void complement(List& list);
  bool complement(List& list, Effort& effort);

 private:
  void sharpOne(List& list, const C& taken);
  void merge(List& list);

  CubeGroups<C> groups_;
  List pieces_;  // scratch: the pieces that a sharp product leaves of the cubes it cuts
};

}  // namespace ostrel
