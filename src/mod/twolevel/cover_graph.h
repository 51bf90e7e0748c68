// Sets of cubes as shared graphs, which are counted before they are listed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "minimizer/cube_list.h"
#include "minimizer/effort.h"
#include "twolevel/diagram.h"
#include "twolevel/node_table.h"

namespace ostrel {

/// Sets of cubes over the columns of one diagram. Equal sets have equal numbers. Recursion goes as
/// deep as there are columns.
class CoverGraph {
 public:
  using Set = std::uint32_t;
  static constexpr Set none = 0;       // no cube
  static constexpr Set universal = 1;  // the cube without a literal

  /// A set has at most `nodeLimit` nodes together with all others; what would need more is `none`,
  /// and the effort is spent then.
  CoverGraph(std::size_t nodeLimit, Effort& effort);

  /// The cubes of `zeros` with the literal 0 in the column, those of `ones` with 1, and those of
  /// `dashes`, all of which have literals in later columns only.
  Set node(std::uint32_t level, Set zeros, Set ones, Set dashes);

  /// The cubes of a that are not in b.
  Set difference(Set a, Set b);

  /// How many cubes there are; 2^64 - 1 where they are as many or more.
  std::uint64_t count(Set set) const { return counts_[set]; }

  /// The cubes, those with 0 in the first column first, then 1, then dash, and so on inward. None
  /// if there are more than `limit`.
  std::optional<CubeList> list(Set set, std::size_t limit) const;

  /// The first `limit` cubes of that list.
  CubeList first(Set set, std::size_t limit) const;

  /// Of the list only the cubes that have a point of `f` in them; none if there are more than
  /// `limit` of these or the effort ends.
  std::optional<CubeList> listMeeting(Set set, Diagram& diagram, Diagram::Edge f,
                                      std::size_t limit);

 private:
  struct Listing;
  void listFrom(Set set, std::size_t limit, Cube& cube, CubeList& cubes) const;
  bool listMeetingFrom(Set set, Diagram::Edge f, Listing& listing);

  std::size_t nodeLimit_;
  Effort& effort_;
  NodeTable nodes_;  // level, zeros, ones, dashes
  std::vector<std::uint64_t> counts_;
  ResultCache differences_;
};

/// An irredundant cover of primes, and the function that it covers.
struct IrredundantCover {
  CoverGraph::Set cubes;
  Diagram::Edge function;
};

/// A cover of prime implicants of `upper` that covers all of `lower` and none of which can be left
/// out. `lower` implies `upper`. Anything where the effort ends.
IrredundantCover irredundantCover(Diagram& diagram, CoverGraph& covers, Diagram::Edge lower,
                                  Diagram::Edge upper);

/// All prime implicants of f. Anything where the effort ends.
CoverGraph::Set allPrimes(Diagram& diagram, CoverGraph& covers, Diagram::Edge f);

/// Those prime implicants of f that hold the whole of `cube`, which is an implicant.
CoverGraph::Set primesHolding(Diagram& diagram, CoverGraph& covers, Diagram::Edge f,
                              const Cube& cube);

}  // namespace ostrel
