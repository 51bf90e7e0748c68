#include "logic/row_merger.h"

#include <cassert>

namespace ostrel {

void RowMerger::writeToRows(std::span<const Term> chain, std::size_t column, char mark) {
  for (const Term term : chain) {
    assert(term.index < rowOf_.size());
    int& row = rowOf_[term.index];
    if (row == none) {
      const std::size_t made = file_->madeInputs.append();
      terms_->cube(term).forEachLiteral(
          [&](std::size_t c, char literal) { file_->madeInputs.set(made, c, literal); });
      file_->madeOutputs.append();
      row = static_cast<int>(made);
    }
    file_->madeOutputs.set(static_cast<std::size_t>(row), column, mark);
  }
}

}  // namespace ostrel
