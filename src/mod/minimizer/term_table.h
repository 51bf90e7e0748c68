// The unique table of product terms: one entry for each cube that a design ever holds.
//
// Terms are compared, counted and looked up far more often than they are looked into. So each
// distinct cube is stored once and named by a small handle, a Term; equal terms have equal
// handles, whatever Equation they stand in. A new column at the end costs nothing, since a cube
// stores no dashes.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/column_set.h"
#include "minimizer/cube.h"
#include "minimizer/effort.h"
#include "minimizer/hash_index.h"

namespace ostrel {

/// One product term: a handle into the TermTable of its design. Two Terms are the same term
/// exactly when they are equal.
struct Term {
  std::uint32_t index = 0;
  friend bool operator==(Term, Term) = default;
  friend bool operator<(Term a, Term b) { return a.index < b.index; }
};

class TermTable {
 public:
  /// An empty table for terms of `width` columns.
  explicit TermTable(std::size_t width = 0) : width_(width) {}

  /// The term of a cube; equal cubes give equal terms.
  Term term(const Cube& cube);

  /// The cube of a term, valid until the next change of the table.
  const Cube& cube(Term term) const {
    assert(term.index < cubes_.size());
    return cubes_[term.index];
  }

  /// Columns of every term.
  std::size_t width() const { return width_; }

  /// Number of distinct terms so far; each Term's index is below it.
  std::size_t size() const { return cubes_.size(); }

  /// Changes with the columns: what was worked out about columns holds for one revision only.
  std::uint32_t revision() const { return revision_; }

  /// Every term gets `count` more columns at its end, all dashes.
  void appendColumns(std::size_t count) {
    width_ += count;
    ++revision_;
  }

  /// The steps that the run still has for working out sets of functions that are wider than the
  /// complexity limit lets through; without a bound until one is granted.
  Effort& reserve() { return reserve_; }

  /// Takes the given columns out of every term; the columns behind move up. Terms can become equal
  /// by that, so all handles change: the answer holds the new Term for each old index.
  std::vector<Term> deleteColumns(const ColumnSet& columns);

  /// Exchanges '0' and '1' in the given columns of every term. Handles stay.
  void invertColumns(const ColumnSet& columns);

 private:
  std::size_t width_;
  std::uint32_t revision_ = 0;
  Effort reserve_;
  std::vector<Cube> cubes_;
  HashIndex index_;  // the terms' numbers by the literals of their cubes
};

}  // namespace ostrel
