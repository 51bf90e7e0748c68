#include "fil/row_table.h"

#include <cassert>

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

std::size_t SparseRows::append() {
  rows_.emplace_back();
  return rows_.size() - 1;
}

void SparseRows::set(std::size_t i, std::size_t column, char c) {
  const auto cell = static_cast<std::uint32_t>(cells_.size());
  cells_.push_back({static_cast<std::uint32_t>(column), none, c});
  assert(i < rows_.size());
  Row& row = rows_[i];
  (row.first == none ? row.first : cells_[row.last].next) = cell;
  row.last = cell;
}

void SparseRows::appendText(std::size_t i, std::size_t width, char fill, std::string& text) const {
  const std::size_t begin = text.size();
  text.append(width, fill);
  assert(i < rows_.size());
  for (std::uint32_t cell = rows_[i].first; cell != none; cell = cells_[cell].next) {
    assert(cells_[cell].column < width);
    text[begin + cells_[cell].column] = cells_[cell].character;
  }
}

}  // namespace ostrel
