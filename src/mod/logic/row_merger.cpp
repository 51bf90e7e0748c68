#include "logic/row_merger.h"

namespace ostrel {

void RowMerger::writeToRows(std::span<const Cover> chain, std::size_t column, char mark) {
  for (const Cover cover : chain) {
    int& row = rowOf_[cover.index];
    if (row == none) {
      row = static_cast<int>(file_->inputRows.size());
      const std::span<char> text = file_->inputRows.append();
      terms_->cube(cover).forEachLiteral([&](std::size_t c, char literal) { text[c] = literal; });
      file_->outputRows.append();
    }
    file_->outputRows.set(static_cast<std::size_t>(row), column, mark);
  }
}

}  // namespace ostrel
