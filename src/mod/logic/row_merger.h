// The rows of a file that is being filled: equal terms of all output columns share one row.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "fil/pla_file.h"
#include "minimizer/term_table.h"

namespace ostrel {

/// Rows are numbered in the order in which their terms are first met.
class RowMerger {
 public:
  /// Fills the rows of `file`, whose tables were prepared and are empty.
  RowMerger(PlaFile& file, const TermTable& terms)
      : file_(&file), terms_(&terms), rowOf_(terms.size(), none) {}

  /// Sets `mark` in output column `column` of the row of each term, in chain order.
  void writeToRows(std::span<const Term> chain, std::size_t column, char mark);

 private:
  static constexpr int none = -1;

  PlaFile* file_;
  const TermTable* terms_;
  std::vector<int> rowOf_;  // by term
};

}  // namespace ostrel
