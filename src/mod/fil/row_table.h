// One half of a truth table: rows of characters, all of one width.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

  /// Appends a row of fill characters that will never be changed.
  void appendBlank();

  /// Appends a row of fill characters and gives it for writing, until the next append.
  std::span<char> append();

 private:
  std::size_t width_ = 0;
  std::string blank_;
  std::size_t blankRows_ = 0;
  std::size_t storedRows_ = 0;
  std::string cells_;  // the stored rows, one behind the other
};

/// Rows of which only the characters are stored that were set, in order. Cutting one function of n
/// terms makes n rows over as many columns with a few literals each: as text they are quadratic.
class SparseRows {
 public:
  std::size_t size() const { return rows_.size(); }

  /// Makes room for characters still to be set. Without it the memory may be twice what is needed.
  void reserve(std::size_t characters) { cells_.reserve(characters); }

  /// Appends a row of which nothing is set, and gives its number.
  std::size_t append();

  /// Sets a character of row i; the last one that a column gets counts.
  void set(std::size_t i, std::size_t column, char c);

  /// Appends the text of row i to `text`: `width` characters, `fill` where nothing was set.
  void appendText(std::size_t i, std::size_t width, char fill, std::string& text) const;

 private:
  static constexpr std::uint32_t none = UINT32_MAX;

  struct Cell {
    std::uint32_t column;
    std::uint32_t next;  // of the row, none behind the last
    char character;
  };
  struct Row {
    std::uint32_t first = none;
    std::uint32_t last = none;
  };

  std::vector<Row> rows_;
  std::vector<Cell> cells_;
};

}  // namespace ostrel
