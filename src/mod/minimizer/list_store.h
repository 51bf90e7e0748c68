// Lists of cubes that never change once they are made, by number.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "minimizer/cube_hash.h"
#include "minimizer/hash_index.h"

namespace ostrel {

/// Each content has one number, so that what was worked out about lists can be looked up by number.
/// The empty list is number 0.
template <PackedCube C>
class ListStore {
 public:
  using Number = std::uint32_t;

  ListStore() { number({}); }

  /// The number of a content, which must not stand in the store's own memory.
  Number number(std::span<const C> content) {
    std::uint64_t key = 0;
    for (const C& cube : content) key = mixBits(key + literalHash(cube));
    const Number known =
        lists_.find(key, [&](Number n) { return std::ranges::equal(list(n), content); });
    if (known != HashIndex::none) return known;
    cubes_.insert(cubes_.end(), content.begin(), content.end());
    ends_.push_back(cubes_.size());
    return lists_.add(key);
  }

  /// The list of a number; it stands until the next call of number().
  std::span<const C> list(Number number) const {
    assert(number < ends_.size());
    const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
    return std::span(cubes_).subspan(begin, ends_[number] - begin);
  }

 private:
  std::vector<C> cubes_;           // all lists, one behind the other
  std::vector<std::size_t> ends_;  // where each list ends
  HashIndex lists_;                // by content
};

}  // namespace ostrel
