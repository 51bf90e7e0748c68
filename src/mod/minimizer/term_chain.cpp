#include "minimizer/term_chain.h"

#include <algorithm>
#include <utility>

#include "minimizer/cover_bound.h"
#include "minimizer/cube_list.h"
#include "minimizer/sum_of_products.h"

namespace ostrel {
namespace {

/// A chain narrowed to the columns that it uses.
struct NarrowChain {
  ColumnMap map;
  CubeList cubes;
};

NarrowChain toImplicants(std::span<const Term> chain, const TermTable& terms) {
  ColumnSet used;
  markUsedColumns(chain, terms, used);
  NarrowChain narrow{ColumnMap(used, terms.width()), {}};
  narrow.cubes.reserve(chain.size());
  for (const Term term : chain) narrow.cubes.push_back(narrow.map.narrow(terms.cube(term)));
  return narrow;
}

TermChain fromImplicants(const CubeList& cubes, const ColumnMap& map, TermTable& terms) {
  TermChain chain;
  chain.reserve(cubes.size());
  for (const Cube& cube : cubes) chain.push_back(terms.term(map.widen(cube)));
  return chain;
}

}  // namespace

void markUsedColumns(std::span<const Term> chain, const TermTable& terms, ColumnSet& columns) {
  for (const Term term : chain) terms.cube(term).addSupportTo(columns);
}

bool contains(std::span<const Term> chain, Term term) {
  return std::find(chain.begin(), chain.end(), term) != chain.end();
}

bool sameTerms(std::span<const Term> a, std::span<const Term> b) {
  if (a.size() != b.size()) return false;
  if (std::equal(a.begin(), a.end(), b.begin())) return true;
  // Most chains of equal length differ in their first term already.
  if (!a.empty() && !contains(b, a.front())) return false;
  const auto sorted = [](std::span<const Term> chain) {
    TermChain copy(chain.begin(), chain.end());
    std::sort(copy.begin(), copy.end());
    copy.erase(std::unique(copy.begin(), copy.end()), copy.end());
    return copy;
  };
  return sorted(a) == sorted(b);
}

TermChain minimizeChain(std::span<const Term> chain, TermTable& terms) {
  NarrowChain narrow = toImplicants(chain, terms);
  const std::size_t narrowWidth = narrow.map.narrowWidth();
  const CubeList minimized = minimizeList(std::move(narrow.cubes), narrowWidth, terms.width());
  if (minimized.empty()) return {chain.begin(), chain.end()};
  return fromImplicants(minimized, narrow.map, terms);
}

std::optional<TermChain> complementChain(std::span<const Term> chain, TermTable& terms,
                                         Effort& effort) {
  NarrowChain narrow = toImplicants(chain, terms);
  if (!complementList(narrow.cubes, narrow.map.narrowWidth(), effort)) return std::nullopt;
  return fromImplicants(narrow.cubes, narrow.map, terms);
}

bool complementHasAtLeast(std::size_t count, std::span<const Term> chain, const TermTable& terms) {
  const NarrowChain narrow = toImplicants(chain, terms);
  return CoverBound(narrow.cubes, narrow.map.narrowWidth()).ofXor(Cube(), count) >= count;
}

ColumnMap::ColumnMap(const ColumnSet& used, std::size_t width) : toNarrow_(width, 0) {
  used.forEach([this](std::size_t column) {
    toNarrow_[column] = static_cast<std::uint32_t>(toWide_.size());
    toWide_.push_back(static_cast<std::uint32_t>(column));
  });
}

Cube ColumnMap::narrow(const Cube& wide) const {
  return remapCube(wide, toNarrow_);
}

Cube ColumnMap::widen(const Cube& narrow) const {
  return remapCube(narrow, toWide_);
}

}  // namespace ostrel
