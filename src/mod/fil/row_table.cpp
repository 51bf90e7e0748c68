#include "fil/row_table.h"

#include <algorithm>

namespace ostrel {

void RowTable::appendBlank() {
  if (storedRows_ == 0) {
    ++blankRows_;
  } else {
    append();
  }
}

std::span<char> RowTable::append() {
  cells_ += blank_;
  ++storedRows_;
  return std::span(cells_).last(width_);
}

void RowTable::truncate(std::size_t n) {
  blankRows_ = std::min(blankRows_, n);
  storedRows_ = std::min(storedRows_, n - blankRows_);
  cells_.resize(storedRows_ * width_);
}

}  // namespace ostrel
