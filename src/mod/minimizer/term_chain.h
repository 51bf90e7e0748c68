// Chains of product terms: the ON or OFF set of an Equation, in order.
//
// The order of a chain is significant: it is the order of the rows in the file, and every tie of
// the later passes goes to the term that stands first.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "minimizer/column_set.h"
#include "minimizer/cube_list.h"
#include "minimizer/effort.h"
#include "minimizer/term_table.h"

namespace ostrel {

using TermChain = std::vector<Term>;

/// The cubes of the terms, in their order.
CubeList cubesOf(std::span<const Term> chain, const TermTable& terms);

/// Adds every column that a term of the chain reads to `columns`, which keeps what it has.
void markUsedColumns(std::span<const Term> chain, const TermTable& terms, ColumnSet& columns);

/// True if some term of the chain equals `term`.
bool contains(std::span<const Term> chain, Term term);

/// True if the chains are equally long and every term of each stands in the other.
bool sameTerms(std::span<const Term> a, std::span<const Term> b);

/// The chain minimised over the columns that it uses, by joining of neighbours and subsumption;
/// its order is that of minimizeList.
TermChain minimizeChain(std::span<const Term> chain, TermTable& terms);

/// What the chain doesn't cover, over the columns that it uses; empty for a tautology. None if that
/// takes more than the effort, as complementList spends it.
std::optional<TermChain> complementChain(std::span<const Term> chain, TermTable& terms,
                                         Effort& effort);

/// True if every point of the terms of `chain` lies in `cover`; false, whatever the answer would
/// be, where that takes more than the effort.
bool isCoveredBy(std::span<const Term> chain, std::span<const Term> cover, const TermTable& terms,
                 Effort& effort);

/// True if complementChain is proven to give `count` terms or more; false says nothing.
bool complementHasAtLeast(std::size_t count, std::span<const Term> chain, const TermTable& terms);

}  // namespace ostrel
