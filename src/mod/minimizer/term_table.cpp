#include "minimizer/term_table.h"

#include <utility>

#include "minimizer/cube_index.h"

namespace ostrel {

Term TermTable::term(const Cube& cube) {
  std::size_t slot = findSlot(cube);
  if (slots_[slot] == 0) {
    cubes_.push_back(cube);
    if (2 * cubes_.size() > slots_.size()) {
      enterAll(2 * slots_.size(), cubes_.size() - 1);
      slot = findSlot(cube);
    }
    slots_[slot] = static_cast<std::uint32_t>(cubes_.size());
  }
  return Term{slots_[slot] - 1};
}

/// The slot that holds the cube, or the free one where it belongs.
std::size_t TermTable::findSlot(const Cube& cube) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = static_cast<std::size_t>(mixBits(literalHash(cube))) & mask;
  while (slots_[slot] != 0 && !(cubes_[slots_[slot] - 1] == cube)) slot = (slot + 1) & mask;
  return slot;
}

/// Makes the slots anew and enters the first `cubeCount` cubes, which are distinct.
void TermTable::enterAll(std::size_t slots, std::size_t cubeCount) {
  slots_.assign(slots, 0);
  for (std::size_t i = 0; i < cubeCount; ++i) {
    slots_[findSlot(cubes_[i])] = static_cast<std::uint32_t>(i + 1);
  }
}

std::vector<Term> TermTable::deleteColumns(const ColumnSet& columns) {
  std::vector<std::uint32_t> newColumn(width_);
  std::uint32_t next = 0;
  for (std::size_t c = 0; c < width_; ++c) newColumn[c] = columns.contains(c) ? next : next++;

  const std::vector<Cube> old = std::exchange(cubes_, {});
  slots_.assign(16, 0);
  std::vector<Term> renumbered;
  renumbered.reserve(old.size());
  for (const Cube& cube : old) {
    Cube narrower;
    cube.forEachLiteral([&](std::size_t column, char literal) {
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
  enterAll(slots_.size(), cubes_.size());
}

}  // namespace ostrel
