// Idea. Reduce the table, part it into tables that have no column in common, and price each. Where
// the best choice and the bound differ, try the column that the prices like best: all answers with
// it, then all without it, and neither where the bound says that nothing better is there. (Branch
// and bound; for covering Coudert, On solving covering problems, 1996.)
//
// Example. Nothing of the rows {1 2}, {2 3}, {1 3} is reduced; the prices bound at 1.5 and choose
// two columns, so there is nothing to try.
//
// Cost. Exponential in bad cases; effort and depth end it, and the best choice so far stays.
//
// Order. Ties go to what is found first.
#include "twolevel/covering.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace ostrel {

namespace {

constexpr std::size_t maxDepth = 64;
constexpr std::size_t firstRounds = 300;
constexpr std::size_t laterRounds = 40;

using Rows = std::vector<CoveringRow>;

/// The rows without a column, and the rows without those that have the column.
Rows withoutColumn(Rows rows, std::uint32_t column) {
  for (CoveringRow& row : rows) std::erase(row, column);
  return rows;
}
Rows notMetBy(Rows rows, std::uint32_t column) {
  std::erase_if(rows, [&](const CoveringRow& row) {
    return std::binary_search(row.begin(), row.end(), column);
  });
  return rows;
}

bool hasEmpty(const Rows& rows) {
  return std::any_of(rows.begin(), rows.end(), [](const CoveringRow& row) { return row.empty(); });
}

/// Parts the rows into groups of which no two have a column in common.
std::vector<Rows> components(Rows rows, std::size_t columnCount) {
  std::vector<std::uint32_t> parent(columnCount);
  std::iota(parent.begin(), parent.end(), 0U);
  const auto root = [&](std::uint32_t c) {
    while (parent[c] != c) c = parent[c] = parent[parent[c]];
    return c;
  };
  for (const CoveringRow& row : rows) {
    for (const std::uint32_t column : row) parent[root(column)] = root(row[0]);
  }
  std::vector<Rows> result;
  std::vector<std::size_t> place(columnCount, SIZE_MAX);
  for (CoveringRow& row : rows) {
    std::size_t& at = place[root(row[0])];
    if (at == SIZE_MAX) {
      at = result.size();
      result.emplace_back();
    }
    result[at].push_back(std::move(row));
  }
  return result;
}

class Search {
 public:
  Search(std::size_t columnCount, CoveringWork& work) : columnCount_(columnCount), work_(work) {}

  /// A choice, and a bound that holds for all choices of fewer columns than `cutoff`.
  Covering solve(Rows rows, std::size_t cutoff, std::size_t depth) {
    ReducedTable table = reduceTable(std::move(rows), columnCount_, effort(depth));
    Covering result = {std::move(table.chosen), 0};
    result.bound = result.columns.size();
    std::vector<Rows> parts = components(std::move(table.rows), columnCount_);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const std::size_t others = result.bound + parts.size() - 1 - i;
      const Covering part =
          solvePart(std::move(parts[i]), cutoff - std::min(cutoff, others), depth);
      result.columns.insert(result.columns.end(), part.columns.begin(), part.columns.end());
      result.bound += part.bound;
    }
    return result;
  }

 private:
  Effort& effort(std::size_t depth) { return depth == 0 ? work_.firstLook : work_.search; }

  Covering solvePart(Rows rows, std::size_t cutoff, std::size_t depth) {
    PricedCovering priced = priceCovering(rows, columnCount_, cutoff,
                                          depth == 0 ? firstRounds : laterRounds, effort(depth));
    Covering& best = priced.covering;
    const std::size_t limit = std::min(cutoff, best.columns.size());
    if (best.bound >= limit || depth == maxDepth || work_.search.isSpent()) return best;
    for (const std::uint32_t column : priced.excluded)
      rows = withoutColumn(std::move(rows), column);
    if (hasEmpty(rows)) {
      best.bound = limit;
      return best;
    }
    const std::size_t bound = branch(std::move(rows), priced.branch, limit, depth, best);
    best.bound = std::max(best.bound, std::min(bound, best.columns.size()));
    return best;
  }

  /// Tries answers of fewer than `limit` columns with and without `column`, and gives their bound.
  std::size_t branch(Rows rows, std::uint32_t column, std::size_t limit, std::size_t depth,
                     Covering& best) {
    Covering with = solve(notMetBy(rows, column), limit - 1, depth + 1);
    with.columns.push_back(column);
    ++with.bound;
    if (with.columns.size() < best.columns.size()) best.columns = with.columns;
    std::size_t bound = std::min(limit, with.bound);
    if (best.columns.size() == best.bound) return bound;
    rows = withoutColumn(std::move(rows), column);
    if (hasEmpty(rows)) return bound;
    const Covering without =
        solve(std::move(rows), std::min(limit, best.columns.size()), depth + 1);
    if (without.columns.size() < best.columns.size()) best.columns = without.columns;
    return std::min(bound, without.bound);
  }

  std::size_t columnCount_;
  CoveringWork& work_;
};

/// Takes out columns whose rows are all met by others.
void leaveOut(const Rows& rows, std::size_t columnCount, std::vector<std::uint32_t>& columns) {
  std::vector<bool> isChosen(columnCount);
  for (const std::uint32_t column : columns) isChosen[column] = true;
  std::vector<bool> isNeeded(columnCount);
  const auto findNeeded = [&](const CoveringRow& row) {
    const auto chosen = [&](std::uint32_t column) { return isChosen[column]; };
    const auto first = std::find_if(row.begin(), row.end(), chosen);
    if (std::find_if(first + 1, row.end(), chosen) == row.end()) isNeeded[*first] = true;
  };
  std::for_each(rows.begin(), rows.end(), findNeeded);
  std::erase_if(columns, [&](std::uint32_t column) {
    if (isNeeded[column]) return false;
    isChosen[column] = false;
    std::for_each(rows.begin(), rows.end(), findNeeded);
    return true;
  });
}

}  // namespace

Covering solveCovering(const std::vector<CoveringRow>& rows, std::size_t columnCount,
                       std::size_t cutoff, CoveringWork& work) {
  assert(!hasEmpty(rows));
  Covering result = Search(columnCount, work).solve(rows, cutoff, 0);
  leaveOut(rows, columnCount, result.columns);
  std::sort(result.columns.begin(), result.columns.end());
  assert(result.bound <= result.columns.size());
  return result;
}

}  // namespace ostrel
