// Coverage by tautology, as in coverage.cpp, with the cofactors written down: a short list of cubes
// of one block is done with in fewer steps than its columns are.
//
// Each pass over the cubes of a question finds the columns that occur in one sense only (the cubes
// that use them vanish) and those in which a cube has its only literal (cubes with that literal
// vanish, the others lose the column). What no pass can settle is split on a column of the cube
// with the fewest literals. Each split removes a column, so no more questions than columns wait.
#include "minimizer/row_coverage.h"

#include <bit>

namespace ostrel {

bool RowCoverage::isCovered(const NarrowCube& narrow, std::size_t number, Effort& effort) {
  const Row cube = narrow.block(0);
  open_.clear();
  for (std::uint64_t rest = present_ & ~(std::uint64_t{1} << number); rest != 0; rest &= rest - 1) {
    const Row& row = rows_[static_cast<std::size_t>(std::countr_zero(rest))];
    if ((row.care & cube.care & (row.value ^ cube.value)) != 0) continue;
    const Row cofactor = {row.care & ~cube.care, row.value & ~cube.care};
    if (cofactor.care == 0) return true;
    open_.push_back(cofactor);
  }
  return isTautology(effort);
}

bool RowCoverage::isTautology(Effort& effort) {
  begins_.assign(1, 0);
  while (!begins_.empty()) {
    const std::size_t begin = begins_.back();
    switch (judge(begin, effort)) {
      case Verdict::Uncovered:
        return false;
      case Verdict::Covered:
        open_.resize(begin);
        begins_.pop_back();
        break;
      case Verdict::Open:
        split(begin);
        break;
    }
  }
  return true;
}

// Settles columns of the last question until there is none to settle.
RowCoverage::Verdict RowCoverage::judge(std::size_t begin, Effort& effort) {
  while (open_.size() > begin && effort.spend(open_.size() - begin)) {
    Row any;   // the literals of all cubes: "1" in value, "0" in care
    Row lone;  // likewise those of cubes with a single literal
    for (std::size_t i = begin; i < open_.size(); ++i) {
      const std::uint64_t zeros = open_[i].care ^ open_[i].value;
      any.value |= open_[i].value;
      any.care |= zeros;
      if (!isSingleBit(open_[i].care)) continue;
      lone.value |= open_[i].value;
      lone.care |= zeros;
    }
    if ((lone.value & lone.care) != 0) return Verdict::Covered;
    const std::uint64_t oneSided = any.value ^ any.care;
    const std::uint64_t settled = lone.value | lone.care;
    if ((oneSided | settled) == 0) return Verdict::Open;
    std::size_t kept = begin;
    for (std::size_t i = begin; i < open_.size(); ++i) {
      const Row row = open_[i];
      const std::uint64_t zeros = row.care ^ row.value;
      if (((row.care & oneSided) | (row.value & lone.value) | (zeros & lone.care)) != 0) continue;
      open_[kept] = {row.care & ~settled, row.value & ~settled};
      if (open_[kept].care == 0) return Verdict::Covered;
      ++kept;
    }
    open_.resize(kept);
  }
  return Verdict::Uncovered;
}

// Leaves one half of the last question in its place and puts the other behind it.
void RowCoverage::split(std::size_t begin) {
  const std::size_t end = open_.size();
  Row shortest = open_[begin];
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (bitCount(open_[i].care) < bitCount(shortest.care)) shortest = open_[i];
  }
  const std::uint64_t column = shortest.care & (~shortest.care + 1);
  std::size_t kept = begin;
  for (std::size_t i = begin; i < end; ++i) {
    const Row row = open_[i];
    const Row rest = {row.care & ~column, row.value & ~column};
    if (((row.care ^ row.value) & column) == 0) open_.push_back(rest);  // true where it is 1
    if ((row.value & column) == 0) open_[kept++] = rest;
  }
  open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(kept),
              open_.begin() + static_cast<std::ptrdiff_t>(end));
  begins_.push_back(kept);
}

}  // namespace ostrel
