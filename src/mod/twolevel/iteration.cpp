// Idea. Each cube of a cover is needed for the points that no other one covers; all primes around
// these are taken together with the cover itself, and the fewest that cover the function are found
// by a covering table. With every way of expanding in it, that is expand, irredundant and last gasp
// in one step. Go on while it helps. (After the loop of Espresso, Brayton et al., 1984, with the
// choices left to a covering problem as in Rudell, Sangiovanni-Vincentelli, Multiple-valued
// minimization for PLA optimization, 1987.)
//
// Example. a' b + b' c + a c' + b c': the last two are needed for a b' c' and nothing, and so on;
// around a b' c' lie the primes a c' and a b', and among all six two rounds of three are left.
//
// Cost. For each round the reduction, a small graph of primes for each cube, a table and its
// solution, all within the effort. Where the table gets too large, fewer primes are taken.
//
// Order. The cover comes first in the table, so that it keeps its cubes where nothing is better.
#include "twolevel/iteration.h"

#include <algorithm>
#include <utility>

#include "minimizer/term_table.h"
#include "twolevel/cover_graph.h"
#include "twolevel/covering.h"
#include "twolevel/covering_table.h"
#include "twolevel/reduce.h"

namespace ostrel {

namespace {

class Iteration {
 public:
  Iteration(const CoverTask& task, Diagram::Edge lower, const WorkLimits& limits)
      : diagram_(task.diagram), lower_(lower), upper_(task.upper), limits_(limits) {}

  /// Gives the steps of covering that it took.
  std::size_t run(CubeList& cover) {
    CoveringWork covering = coveringWork(limits_);
    while (improve(cover, covering)) {
    }
    return stepsOf(covering, limits_);
  }

 private:
  /// True if the cover has become shorter.
  bool improve(CubeList& cover, CoveringWork& covering) {
    const CubeList reduced = reducedCubes(diagram_, lower_, cover);
    for (const std::size_t each : {64U, 8U, 1U}) {
      // A third of what is left is kept for the table, so that primes found late aren't lost.
      const std::size_t kept = diagram_.effort().left() / 3;
      diagram_.effort().spend(kept);
      const CubeList choice = pool(cover, reduced, each);
      diagram_.effort() = Effort(diagram_.effort().left() + kept);
      auto rows = coveringRows(diagram_, lower_, choice, limits_.rows);
      if (!rows) continue;
      const Covering chosen = solveCovering(*rows, choice.size(), cover.size(), covering);
      if (chosen.columns.size() >= cover.size()) return false;
      cover.clear();
      for (const std::uint32_t number : chosen.columns) cover.push_back(choice[number]);
      return true;
    }
    return false;
  }

  /// The cover and, for each reduced cube, at most `each` primes around it, as far as the effort
  /// goes.
  CubeList pool(const CubeList& cover, const CubeList& reduced, std::size_t each) {
    TermTable terms(diagram_.width());
    for (const Cube& cube : cover) terms.term(cube);
    for (const Cube& cube : reduced) {
      CoverGraph graph(limits_.primeNodes, diagram_.effort());
      const CoverGraph::Set primes = primesHolding(diagram_, graph, upper_, cube);
      if (diagram_.effort().isSpent()) break;
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
  const std::size_t steps = Iteration(task, parted.open, limits).run(others);
  const std::size_t bound = parted.essential.size() + (others.empty() ? 0U : 1U);
  CubeList cubes = parted.essential;
  cubes.insert(cubes.end(), others.begin(), others.end());
  MinimizedCover result = boundedCover(std::move(cubes), bound, CoverState::Improved);
  result.steps = steps;
  return result;
}

}  // namespace ostrel
