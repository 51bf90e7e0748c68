#include "minimizer/term_table.h"

#include <cassert>
#include <utility>

#include "minimizer/cube_hash.h"

namespace ostrel {

Term TermTable::term(const Cube& cube) {
  const std::uint64_t key = literalHash(cube);
  const std::uint32_t known = index_.find(key, [&](auto number) { return cubes_[number] == cube; });
  if (known != HashIndex::none) return Term{known};
  cubes_.push_back(cube);
  return Term{index_.add(key)};
}

std::vector<Term> TermTable::deleteColumns(const ColumnSet& columns) {
  std::vector<std::uint32_t> newColumn(width_);
  std::uint32_t next = 0;
  for (std::size_t c = 0; c < width_; ++c) newColumn[c] = columns.contains(c) ? next : next++;

  const std::vector<Cube> old = std::exchange(cubes_, {});
  index_.reset(old.size());
  std::vector<Term> renumbered;
  renumbered.reserve(old.size());
  for (const Cube& cube : old) {
    Cube narrower;
    cube.forEachLiteral([&](std::size_t column, char literal) {
      assert(column < width_);
      if (!columns.contains(column)) narrower.set(newColumn[column], literal);
    });
    renumbered.push_back(term(narrower));
  }
  width_ -= columns.size();
  ++revision_;
  return renumbered;
}

void TermTable::invertColumns(const ColumnSet& columns) {
  for (Cube& cube : cubes_) columns.forEach([&cube](std::size_t c) { cube.invert(c); });
  index_.reset(cubes_.size());
  for (const Cube& cube : cubes_) index_.add(literalHash(cube));
}

}  // namespace ostrel
