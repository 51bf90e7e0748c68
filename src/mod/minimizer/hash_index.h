// An index by hash of things that stand elsewhere, numbered in the order in which they are added.
//
// It holds keys and numbers only. Equal keys are a hint and no proof: whoever looks up says which
// number it means, by looking at the thing itself. Numbers of one key are met in ascending order,
// so that the first that fits is the first in the order of the list that they stand for.
#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrel {

class HashIndex {
 public:
  static constexpr std::uint32_t none = UINT32_MAX;

  HashIndex() { reset(0); }

  /// Empties the index and makes room for so many keys; more may come. It keeps its memory.
  void reset(std::size_t expected) {
    keys_.clear();
    next_.clear();
    makeBuckets(expected);
  }

  /// The number of keys that were added.
  std::size_t size() const { return keys_.size(); }

  /// Adds a key under the next number, which is the answer.
  std::uint32_t add(std::uint64_t key) {
    const auto number = static_cast<std::uint32_t>(keys_.size());
    assert(number != none);
    keys_.push_back(key);
    next_.push_back(number);
    if (keys_.size() > last_.size()) {
      makeBuckets(keys_.size());
      for (std::uint32_t n = 0; n <= number; ++n) link(n);
    } else {
      link(number);
    }
    return number;
  }

  /// The first number of a key for which isMeant(number) is true, or `none`.
  template <class IsMeant>
  std::uint32_t find(std::uint64_t key, IsMeant isMeant) const {
    const std::uint32_t last = last_[key >> shift_];
    if (last == none) return none;
    for (std::uint32_t number = next_[last];; number = next_[number]) {
      if (keys_[number] == key && isMeant(number)) return number;
      if (number == last) return none;
    }
  }

 private:
  void makeBuckets(std::size_t expected) {
    const std::size_t count = std::bit_ceil(std::max<std::size_t>(expected, 16));
    last_.assign(count, none);
    shift_ = 64 - std::countr_zero(count);
  }

  /// Puts a number behind the others of its bucket.
  void link(std::uint32_t number) {
    std::uint32_t& last = last_[keys_[number] >> shift_];
    next_[number] = last == none ? number : next_[last];
    if (last != none) next_[last] = number;
    last = number;
  }

  // The numbers of a bucket form a ring: the last of them leads to the first. It is the high bits
  // of a key that choose its bucket, since hashes are sums of products and mixed best there.
  std::vector<std::uint64_t> keys_;  // of each number
  std::vector<std::uint32_t> next_;  // of each number
  std::vector<std::uint32_t> last_;  // of each bucket; as many buckets as numbers, or more
  int shift_ = 0;
};

}  // namespace ostrel
