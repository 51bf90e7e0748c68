// A list of product terms with the number of times that each one was met.
#pragma once

#include <span>
#include <unordered_map>
#include <vector>

#include "logic/term_table.h"

namespace ostrel {

/// Distinct terms in the order in which they were first added.
class CoverList {
 public:
  bool isEmpty() const { return covers_.empty(); }

  /// Counts the term if it stands in the list, otherwise adds it at the end with the count 1.
  void add(Cover cover) {
    if (++useCounts_[cover.index] == 1) covers_.push_back(cover);
  }

  bool contains(Cover cover) const { return useCounts_.contains(cover.index); }

  /// How often the term was added, -1 if it isn't there.
  int useCountOf(Cover cover) const {
    const auto entry = useCounts_.find(cover.index);
    return entry == useCounts_.end() ? -1 : entry->second;
  }

  std::span<const Cover> covers() const { return covers_; }

 private:
  std::vector<Cover> covers_;
  std::unordered_map<std::uint32_t, int> useCounts_;
};

}  // namespace ostrel
