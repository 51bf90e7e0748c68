#include "fil/row_table.h"

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

}  // namespace ostrel
