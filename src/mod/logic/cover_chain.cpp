#include "logic/cover_chain.h"

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

NarrowChain toImplicants(std::span<const Cover> chain, const TermTable& terms) {
  ColumnSet used;
  markUsedColumns(chain, terms, used);
  NarrowChain narrow{ColumnMap(used, terms.width()), {}};
  narrow.cubes.reserve(chain.size());
  for (const Cover cover : chain) narrow.cubes.push_back(narrow.map.narrow(terms.cube(cover)));
  return narrow;
}

CoverChain fromImplicants(const CubeList& cubes, const ColumnMap& map, TermTable& terms) {
  CoverChain chain;
  chain.reserve(cubes.size());
  for (const Cube& cube : cubes) chain.push_back(terms.cover(map.widen(cube)));
  return chain;
}

}  // namespace

void markUsedColumns(std::span<const Cover> chain, const TermTable& terms, ColumnSet& columns) {
  for (const Cover cover : chain) terms.cube(cover).addSupportTo(columns);
}

bool chainHasText(std::span<const Cover> chain, Cover cover) {
  return std::find(chain.begin(), chain.end(), cover) != chain.end();
}

bool sameTerms(std::span<const Cover> a, std::span<const Cover> b) {
  if (a.size() != b.size()) return false;
  if (std::equal(a.begin(), a.end(), b.begin())) return true;
  // Most chains of equal length differ in their first term already.
  if (!a.empty() && !chainHasText(b, a.front())) return false;
  const auto sorted = [](std::span<const Cover> chain) {
    CoverChain copy(chain.begin(), chain.end());
    std::sort(copy.begin(), copy.end());
    copy.erase(std::unique(copy.begin(), copy.end()), copy.end());
    return copy;
  };
  return sorted(a) == sorted(b);
}

CoverChain minimizeChain(std::span<const Cover> chain, TermTable& terms) {
  NarrowChain narrow = toImplicants(chain, terms);
  const std::size_t narrowWidth = narrow.map.narrowWidth();
  const CubeList minimized = minimizeList(std::move(narrow.cubes), narrowWidth, terms.width());
  if (minimized.empty()) return {chain.begin(), chain.end()};
  return fromImplicants(minimized, narrow.map, terms);
}

std::optional<CoverChain> complementChain(std::span<const Cover> chain, TermTable& terms,
                                          std::size_t effort) {
  NarrowChain narrow = toImplicants(chain, terms);
  if (!complementList(narrow.cubes, narrow.map.narrowWidth(), effort)) return std::nullopt;
  return fromImplicants(narrow.cubes, narrow.map, terms);
}

bool complementHasAtLeast(std::size_t count, std::span<const Cover> chain, const TermTable& terms) {
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
