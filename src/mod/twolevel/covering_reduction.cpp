// Idea. A row that holds another one is met with it. A column whose rows another column meets too
// can be left to that one. A row with one column decides. Each of the three makes room for the
// others. (McCluskey, Minimization of Boolean functions, 1956.)
//
// Example. Rows {1 2}, {1 2 3}, {3 4}: the second row holds the first; then column 2 is like 1
// and 4 like 3, and the rows {1} and {3} decide.
//
// Cost. A row is compared with the rows of its rarest column only, a column with the columns of its
// shortest row; a signature of 64 bits settles most comparisons.
//
// Order. Of equal rows, and of columns with equal rows, the first stays: callers put what they
// like better in front.
#include <algorithm>
#include <utility>

#include "twolevel/covering.h"

namespace ostrel {

namespace {

using List = std::vector<std::uint32_t>;

class Reduction {
 public:
  Reduction(std::vector<CoveringRow> rows, std::size_t columnCount, Effort& effort)
      : effort_(effort), columnRows_(columnCount) {
    table_.rows = std::move(rows);
  }

  ReducedTable run() {
    bool hasChanged = true;
    while (hasChanged && !effort_.isSpent()) {
      listColumns();
      hasChanged = chooseLone();
      if (!hasChanged) hasChanged = dropRows();
      if (!hasChanged) hasChanged = dropColumns();
    }
    return std::move(table_);
  }

 private:
  void listColumns() {
    for (List& list : columnRows_) list.clear();
    for (std::size_t r = 0; r < table_.rows.size(); ++r) {
      for (const std::uint32_t column : table_.rows[r]) {
        columnRows_[column].push_back(static_cast<std::uint32_t>(r));
      }
      effort_.spend(table_.rows[r].size());
    }
  }

  bool chooseLone() {
    List lone;
    for (const CoveringRow& row : table_.rows) {
      if (row.size() == 1) lone.push_back(row[0]);
    }
    std::sort(lone.begin(), lone.end());
    lone.erase(std::unique(lone.begin(), lone.end()), lone.end());
    table_.chosen.insert(table_.chosen.end(), lone.begin(), lone.end());
    gone_.assign(table_.rows.size(), false);
    for (const std::uint32_t column : lone) {
      for (const std::uint32_t r : columnRows_[column]) gone_[r] = true;
    }
    return eraseGoneRows();
  }

  bool eraseGoneRows() {
    std::size_t kept = 0;
    for (std::size_t r = 0; r < gone_.size(); ++r) {
      if (gone_[r]) continue;
      if (kept != r) table_.rows[kept] = std::move(table_.rows[r]);
      ++kept;
    }
    table_.rows.resize(kept);
    return kept < gone_.size();
  }

  static std::uint64_t signature(const List& list) {
    std::uint64_t bits = 0;
    for (const std::uint32_t x : list) bits |= std::uint64_t{1} << ((x * 0x9E3779B1U) >> 26U);
    return bits;
  }

  bool holds(const List& outer, const List& inner) {
    effort_.spend(inner.size());
    return std::includes(outer.begin(), outer.end(), inner.begin(), inner.end());
  }

  /// The list that belongs to the element of `list` with the fewest entries in `lists`.
  static const List& shortest(const List& list, const std::vector<List>& lists) {
    return lists[*std::min_element(list.begin(), list.end(), [&](std::uint32_t a, std::uint32_t b) {
      return lists[a].size() < lists[b].size();
    })];
  }

  bool dropRows() {
    gone_.assign(table_.rows.size(), false);
    sign(table_.rows);
    for (std::size_t r = 0; r < table_.rows.size(); ++r) {
      const CoveringRow& row = table_.rows[r];
      if (gone_[r]) continue;
      const List& rivals = shortest(row, columnRows_);
      if (!effort_.spend(rivals.size())) break;
      for (const std::uint32_t s : rivals) {
        const CoveringRow& other = table_.rows[s];
        if (s == r || gone_[s] || (signatures_[r] & ~signatures_[s]) != 0) continue;
        if (other.size() < row.size() || (other.size() == row.size() && s < r)) continue;
        if (holds(other, row)) gone_[s] = true;
      }
    }
    return eraseGoneRows();
  }

  bool dropColumns() {
    gone_.assign(columnRows_.size(), false);
    sign(columnRows_);
    bool hasGone = false;
    for (std::size_t c = 0; c < columnRows_.size(); ++c) {
      if (columnRows_[c].empty()) continue;
      const List& rivals = shortest(columnRows_[c], table_.rows);
      if (!effort_.spend(rivals.size())) break;
      gone_[c] = std::any_of(rivals.begin(), rivals.end(),
                             [&](std::uint32_t d) { return isReplaced(c, d); });
      hasGone = hasGone || gone_[c];
    }
    if (!hasGone) return false;
    for (CoveringRow& row : table_.rows) {
      std::erase_if(row, [&](std::uint32_t column) { return gone_[column]; });
    }
    return true;
  }

  bool isReplaced(std::size_t c, std::uint32_t d) {
    const List& own = columnRows_[c];
    const List& other = columnRows_[d];
    if (d == c || gone_[d] || (signatures_[c] & ~signatures_[d]) != 0) return false;
    if (other.size() < own.size() || (other.size() == own.size() && d > c)) return false;
    return holds(other, own);
  }

  void sign(const std::vector<List>& lists) {
    signatures_.clear();
    for (const List& list : lists) signatures_.push_back(signature(list));
  }

  Effort& effort_;
  ReducedTable table_;
  std::vector<List> columnRows_;
  std::vector<bool> gone_;
  std::vector<std::uint64_t> signatures_;
};

}  // namespace

ReducedTable reduceTable(std::vector<CoveringRow> rows, std::size_t columnCount, Effort& effort) {
  return Reduction(std::move(rows), columnCount, effort).run();
}

}  // namespace ostrel
