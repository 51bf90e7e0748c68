// Idea. A set of cubes is a node that parts them by their literal in one column: 0, 1 or none.
// Equal parts are one node, so that sets are compared by number and a set of 3.7e19 cubes needs a
// few hundred nodes. (Minato, Zero-suppressed BDDs for set manipulation, 1993, with the two
// literals and the dash of a column in one node.)
//
// Example. The cubes 0-1, 1-1 and --1: a node for the first column whose three parts are the one
// node "1 in the last column".
//
// Cost. A difference takes at most the product of the sizes; counting nothing, since each node
// carries its count; listing as many steps as there are cubes times columns.
//
// Order. Lists come in the order of the literals 0, 1, dash from the first column on: the order
// decides later ties and so the output.
#include "twolevel/cover_graph.h"

#include <algorithm>
#include <cassert>

namespace ostrel {

namespace {

std::uint64_t sumOf(std::uint64_t a, std::uint64_t b) {
  return a + b < a ? UINT64_MAX : a + b;
}

}  // namespace

CoverGraph::CoverGraph(std::size_t nodeLimit, Effort& effort)
    : nodeLimit_(nodeLimit), effort_(effort) {
  nodes_.number({UINT32_MAX, none, none, none});
  nodes_.number({UINT32_MAX, none, none, universal});
  counts_ = {0, 1};
}

CoverGraph::Set CoverGraph::node(std::uint32_t level, Set zeros, Set ones, Set dashes) {
  assert(level < std::min({nodes_[zeros][0], nodes_[ones][0], nodes_[dashes][0]}));
  if (zeros == none && ones == none) return dashes;
  if (nodes_.size() >= nodeLimit_) {
    effort_.spend(effort_.left());
    return none;
  }
  const Set set = nodes_.number({level, zeros, ones, dashes});
  if (set == counts_.size()) {
    counts_.push_back(sumOf(sumOf(counts_[zeros], counts_[ones]), counts_[dashes]));
  }
  return set;
}

CoverGraph::Set CoverGraph::difference(Set a, Set b) {
  if (a == none || a == b) return none;
  if (b == none) return a;
  if (const auto known = differences_.find(a, b)) return static_cast<Set>(*known);
  if (!effort_.spend(1)) return none;
  const std::uint32_t level = std::min(nodes_[a][0], nodes_[b][0]);
  const auto part = [&](Set set, std::size_t literal) -> Set {
    if (nodes_[set][0] == level) return nodes_[set][literal];
    return literal == 3 ? set : none;
  };
  Set parts[4] = {};
  for (const std::size_t literal : {1U, 2U, 3U}) {
    parts[literal] = difference(part(a, literal), part(b, literal));
  }
  const Set result = node(level, parts[1], parts[2], parts[3]);
  if (!effort_.isSpent()) differences_.store(a, b, result);
  return result;
}

std::optional<CubeList> CoverGraph::list(Set set, std::size_t limit) const {
  if (counts_[set] > limit) return std::nullopt;
  CubeList cubes = first(set, limit);
  assert(cubes.size() == counts_[set]);
  return cubes;
}

CubeList CoverGraph::first(Set set, std::size_t limit) const {
  CubeList cubes;
  Cube cube;
  listFrom(set, limit, cube, cubes);
  return cubes;
}

void CoverGraph::listFrom(Set set, std::size_t limit, Cube& cube, CubeList& cubes) const {
  if (set == none || cubes.size() == limit) return;
  if (set == universal) {
    cubes.push_back(cube);
    return;
  }
  for (const std::size_t literal : {1U, 2U, 3U}) {
    cube.set(nodes_[set][0], "01-"[literal - 1]);
    listFrom(nodes_[set][literal], limit, cube, cubes);
  }
}

struct CoverGraph::Listing {
  Diagram& diagram;
  std::size_t limit;
  Cube cube = {};
  CubeList cubes = {};
};

std::optional<CubeList> CoverGraph::listMeeting(Set set, Diagram& diagram, Diagram::Edge f,
                                                std::size_t limit) {
  Listing listing = {diagram, limit};
  if (!listMeetingFrom(set, f, listing)) return std::nullopt;
  return std::move(listing.cubes);
}

// False where there is one cube too many, or no effort left.
bool CoverGraph::listMeetingFrom(Set set, Diagram::Edge f, Listing& listing) {
  if (set == none || f == Diagram::zero) return true;
  if (set == universal) {
    listing.cubes.push_back(listing.cube);
    return listing.cubes.size() <= listing.limit;
  }
  if (!effort_.spend(1)) return false;
  Diagram& diagram = listing.diagram;
  const std::uint32_t level = nodes_[set][0];
  const auto either = [&](std::uint32_t at) {
    return diagram.disjunction(diagram.low(f, at), diagram.high(f, at));
  };
  while (diagram.level(f) < level) f = either(diagram.level(f));
  const Diagram::Edge parts[3] = {diagram.low(f, level), diagram.high(f, level), either(level)};
  for (const std::size_t literal : {1U, 2U, 3U}) {
    listing.cube.set(level, "01-"[literal - 1]);
    if (!listMeetingFrom(nodes_[set][literal], parts[literal - 1], listing)) return false;
  }
  return true;
}

}  // namespace ostrel
