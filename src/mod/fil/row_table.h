// One half of a truth table: rows of characters, all of one width.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace ostrel {

/// Rows are appended as they are met, so memory follows the rows that are there and never a count
/// that a file announces. Rows without content in front of the first real one are only counted.
class RowTable {
 public:
  RowTable() = default;
  /// No rows yet; each will have `width` characters, at first `fill`.
  RowTable(std::size_t width, char fill) : width_(width), blank_(width, fill) {}

  std::size_t size() const { return blankRows_ + storedRows_; }

  /// Row i, below size().
  std::string_view row(std::size_t i) const {
    if (i < blankRows_) return blank_;
    return std::string_view(cells_).substr((i - blankRows_) * width_, width_);
  }

  /// True if row i is one of the rows in front that have no content.
  bool isBlank(std::size_t i) const { return i < blankRows_; }

  /// Makes room for that many rows from append.
  void reserve(std::size_t rows) { cells_.reserve(rows * width_); }

  /// Appends a row of fill characters that will never be changed.
  void appendBlank();

  /// Appends a row of fill characters and gives it for writing, until the next append.
  std::span<char> append();

  /// Sets a character of row i, which came from append.
  void set(std::size_t i, std::size_t column, char c) {
    cells_[(i - blankRows_) * width_ + column] = c;
  }

 private:
  std::size_t width_ = 0;
  std::string blank_;
  std::size_t blankRows_ = 0;
  std::size_t storedRows_ = 0;
  std::string cells_;  // the stored rows, one behind the other
};

}  // namespace ostrel
