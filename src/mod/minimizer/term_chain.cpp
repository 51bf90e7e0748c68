#include "minimizer/term_chain.h"

#include <algorithm>
#include <utility>

#include "minimizer/column_map.h"
#include "minimizer/cover_bound.h"
#include "minimizer/coverage.h"
#include "minimizer/cube_list.h"
#include "minimizer/sum_of_products.h"

namespace ostrel {
namespace {

/// A chain in the columns that it uses.
struct CompactChain {
  ColumnMap map;
  CubeList cubes;
};

CompactChain compactOf(std::span<const Term> chain, const TermTable& terms) {
  ColumnSet used;
  markUsedColumns(chain, terms, used);
  CompactChain compact{ColumnMap(used, terms.width()), {}};
  compact.cubes.reserve(chain.size());
  for (const Term term : chain) compact.cubes.push_back(compact.map.compact(terms.cube(term)));
  return compact;
}

TermChain chainOf(std::span<const Cube> cubes, const ColumnMap& map, TermTable& terms) {
  TermChain chain;
  chain.reserve(cubes.size());
  for (const Cube& cube : cubes) chain.push_back(terms.term(map.restore(cube)));
  return chain;
}

}  // namespace

CubeList cubesOf(std::span<const Term> chain, const TermTable& terms) {
  CubeList cubes;
  cubes.reserve(chain.size());
  for (const Term term : chain) cubes.push_back(terms.cube(term));
  return cubes;
}

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

bool isCoveredBy(std::span<const Term> chain, std::span<const Term> cover, const TermTable& terms,
                 Effort& effort) {
  Coverage<Cube> coverage;
  coverage.reset(terms.width());
  for (const Term term : cover) coverage.add(terms.cube(term));
  return std::ranges::all_of(
      chain, [&](Term term) { return coverage.isCovered(terms.cube(term), cover.size(), effort); });
}

TermChain minimizeChain(std::span<const Term> chain, TermTable& terms) {
  CompactChain compact = compactOf(chain, terms);
  const CubeList minimized = minimizeList(compact.cubes, compact.map.compactWidth(), terms.width());
  if (minimized.empty()) return {chain.begin(), chain.end()};
  return chainOf(minimized, compact.map, terms);
}

std::optional<TermChain> complementChain(std::span<const Term> chain, TermTable& terms,
                                         Effort& effort) {
  CompactChain compact = compactOf(chain, terms);
  if (!complementList(compact.cubes, compact.map.compactWidth(), effort)) return std::nullopt;
  return chainOf(compact.cubes, compact.map, terms);
}

bool complementHasAtLeast(std::size_t count, std::span<const Term> chain, const TermTable& terms) {
  const CompactChain compact = compactOf(chain, terms);
  CoverBound bound(std::span<const Cube>(compact.cubes), compact.map.compactWidth());
  return bound.ofXor({}, count) >= count;
}

}  // namespace ostrel
