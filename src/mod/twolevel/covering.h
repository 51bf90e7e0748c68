// The covering problem: the fewest columns of a table that meet every row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/effort.h"
#include "twolevel/covering_table.h"

namespace ostrel {

/// A choice of columns that meets all rows, and a number that no choice can go below. The choice is
/// a smallest one exactly where the two are known to be equal.
struct Covering {
  std::vector<std::uint32_t> columns;
  std::size_t bound = 0;
};

/// The effort for a covering problem: for the first look at each part of the table, which gives
/// most of what is to be had, and for trying columns one by one.
struct CoveringWork {
  Effort firstLook;
  Effort search;
};

/// Meets each of the rows, none of which is empty, with columns below `columnCount`; no column of
/// the answer can be left out. Where the effort ends the choice is the best so far. Only choices of
/// fewer columns than `cutoff` are looked for; the bound may be as low as that where there is none.
Covering solveCovering(const std::vector<CoveringRow>& rows, std::size_t columnCount,
                       std::size_t cutoff, CoveringWork& work);

/// A covering problem after rows and columns went that decide nothing.
struct ReducedTable {
  std::vector<CoveringRow> rows;
  std::vector<std::uint32_t> chosen;  // columns that every answer may as well have
};

/// Takes out, until there is nothing to take: rows that hold another row, columns that meet no row
/// which some other column doesn't meet, and rows with one column, which is chosen. An effort that
/// ends leaves the table somewhere in between.
ReducedTable reduceTable(std::vector<CoveringRow> rows, std::size_t columnCount, Effort& effort);

/// A choice for the rows and a bound from prices for the rows; also the columns that a choice of
/// fewer columns than `cutoff` can't have.
struct PricedCovering {
  Covering covering;
  std::vector<std::uint32_t> excluded;
  std::uint32_t branch = 0;  // the column that the prices like best
};

/// The Lagrangian heuristic and bound of a reduced table that is not empty.
PricedCovering priceCovering(const std::vector<CoveringRow>& rows, std::size_t columnCount,
                             std::size_t cutoff, std::size_t rounds, Effort& effort);

}  // namespace ostrel
