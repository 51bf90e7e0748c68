// Idea. Reduce the cubes of a cover, one after the other, to what they are needed for, and take all
// primes around what is left of each. Among these and the cover itself the fewest that cover the
// function are found by a covering table; with all ways of expanding in it, that is expand,
// irredundant and last gasp in one step. Go on while it helps, in another order when it doesn't.
// (After the loop of Espresso, Brayton et al., 1984, with the choices left to a covering problem as
// in Rudell, Sangiovanni-Vincentelli, Multiple-valued minimization for PLA optimization, 1987.)
//
// Example. a' b + b' c + a c' may also be covered by a b' + b c' + a' c. Reduced, a' b is
// a' b c' at first and lies in a' b and b c'; these and the like for the others are the table.
//
// Cost. For each round the reduction, a small graph of primes for each cube, a table and its
// solution, all within the effort.
//
// Order. Cubes are reduced in the order of the list, in that of falling size, or backwards; each
// order of ties is kept. Equal covers: the first that was found stays.
#include "twolevel/iteration.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "minimizer/term_table.h"
#include "twolevel/cover_graph.h"
#include "twolevel/covering.h"
#include "twolevel/covering_table.h"
#include "twolevel/reduce.h"

namespace ostrel {

namespace {

/// The places of a list in the order of one start.
std::vector<std::size_t> placesOf(const CubeList& cubes, std::size_t start) {
  std::vector<std::size_t> places(cubes.size());
  std::iota(places.begin(), places.end(), 0U);
  if (start % 2 == 1) std::reverse(places.begin(), places.end());
  if (start % 3 != 2) {
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
      return cubes[a].literalCount() < cubes[b].literalCount();
    });
  }
  return places;
}

class Iteration {
 public:
  Iteration(const CoverTask& task, Diagram::Edge lower, const WorkLimits& limits)
      : diagram_(task.diagram), lower_(lower), upper_(task.upper), limits_(limits) {}

  void run(CubeList& cover) {
    CoveringWork covering = coveringWork(limits_);
    for (std::size_t start = 0; start < limits_.starts && !diagram_.effort().isSpent(); ++start) {
      while (improve(cover, start, covering)) {
      }
    }
  }

 private:
  /// True if the cover has become shorter.
  bool improve(CubeList& cover, std::size_t start, CoveringWork& covering) {
    const CubeList reduced = reduceCover(diagram_, lower_, cover, placesOf(cover, start));
    for (const std::size_t each : {64U, 8U, 1U}) {
      const auto choice = pool(cover, reduced, each);
      if (!choice) return false;
      auto rows = coveringRows(diagram_, lower_, *choice, limits_.rows);
      if (!rows) continue;
      const Covering chosen =
          solveCovering(std::move(*rows), choice->size(), cover.size(), covering);
      if (chosen.columns.size() >= cover.size()) return false;
      cover.clear();
      for (const std::uint32_t number : chosen.columns) cover.push_back((*choice)[number]);
      return true;
    }
    return false;
  }

  /// The cover and, for each reduced cube, at most `each` primes around it.
  std::optional<CubeList> pool(const CubeList& cover, const CubeList& reduced, std::size_t each) {
    TermTable terms(diagram_.width());
    for (const Cube& cube : cover) terms.term(cube);
    for (const Cube& cube : reduced) {
      CoverGraph graph(limits_.primeNodes, diagram_.effort());
      const CoverGraph::Set primes = primesHolding(diagram_, graph, upper_, cube);
      if (diagram_.effort().isSpent()) return std::nullopt;
      for (const Cube& prime : graph.first(primes, each)) terms.term(prime);
    }
    CubeList result;
    for (std::uint32_t i = 0; i < terms.size(); ++i) result.push_back(terms.cube(Term{i}));
    return result;
  }

  Diagram& diagram_;
  Diagram::Edge lower_;
  Diagram::Edge upper_;
  const WorkLimits& limits_;
};

}  // namespace

MinimizedCover iterate(const CoverTask& task, const Essentials& parted, const WorkLimits& limits) {
  CubeList others = parted.others;
  Iteration(task, parted.open, limits).run(others);
  const std::size_t bound = parted.essential.size() + (others.empty() ? 0U : 1U);
  CubeList cubes = parted.essential;
  cubes.insert(cubes.end(), others.begin(), others.end());
  return boundedCover(std::move(cubes), bound, CoverState::Improved);
}

}  // namespace ostrel
