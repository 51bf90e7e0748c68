#include "logic/row_merger.h"

namespace ostrel {

void RowMerger::writeToRows(std::span<const Term> chain, std::size_t column, char mark) {
  for (const Term term : chain) {
    int& row = rowOf_[term.index];
    if (row == none) {
      row = static_cast<int>(file_->inputRows.size());
      const std::span<char> text = file_->inputRows.append();
      terms_->cube(term).forEachLiteral([&](std::size_t c, char literal) { text[c] = literal; });
      file_->outputRows.append();
    }
    file_->outputRows.set(static_cast<std::size_t>(row), column, mark);
  }
}

}  // namespace ostrel
