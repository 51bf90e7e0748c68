// Idea. The essential primes are in every cover, so they are in this one. Of the other primes,
// which hold a point that those leave open, the fewest are wanted that hold all such points: a
// covering problem. (Quine, 1952; McCluskey, 1956.)
//
// Example. a b + a' c + b c: a b and a' c are essential and leave nothing open.
//
// Cost. That of the primes, which may be 3^n/n, of the table and of its solution; each has a limit.
//
// Order. The essential cubes come first, in the order of the cover given, then the others, those
// with few literals first; among these ties of the covering problem go to the shorter cube.
#include "twolevel/minimum_cover.h"

#include <algorithm>
#include <utility>

#include "twolevel/cover_graph.h"
#include "twolevel/covering_table.h"
#include "twolevel/essential.h"

namespace ostrel {

Essentials partEssentials(const CoverTask& task) {
  Diagram& diagram = task.diagram;
  Essentials result;
  for (const Cube& cube : task.cover) {
    const bool isOne = isEssential(diagram, task.lower, task.upper, cube);
    (isOne ? result.essential : result.others).push_back(cube);
  }
  result.open = diagram.difference(task.lower, diagram.sum(result.essential));
  return result;
}

namespace {

/// The primes of `upper` that hold a point of `open`.
std::optional<CubeList> primesMeeting(Diagram& diagram, Diagram::Edge upper, Diagram::Edge open,
                                      const WorkLimits& limits) {
  CoverGraph graph(limits.primeNodes, diagram.effort());
  const CoverGraph::Set all = allPrimes(diagram, graph, upper);
  if (diagram.effort().isSpent()) return std::nullopt;
  auto primes = graph.listMeeting(all, diagram, open, limits.primes);
  if (!primes || diagram.effort().isSpent()) return std::nullopt;
  std::stable_sort(primes->begin(), primes->end(), [](const Cube& a, const Cube& b) {
    return a.literalCount() < b.literalCount();
  });
  return primes;
}

}  // namespace

std::optional<MinimizedCover> minimumCover(const CoverTask& task, const Essentials& parted,
                                           std::size_t cutoff, const WorkLimits& limits) {
  const std::size_t known = parted.essential.size();
  if (parted.open == Diagram::zero) {
    return MinimizedCover{parted.essential, CoverState::Minimum, known, 0};
  }
  const auto primes = primesMeeting(task.diagram, task.upper, parted.open, limits);
  if (!primes) return std::nullopt;
  auto rows = coveringRows(task.diagram, parted.open, *primes, limits.rows);
  if (!rows) return std::nullopt;
  CoveringWork work = coveringWork(limits);
  const Covering covering =
      solveCovering(*rows, primes->size(), cutoff - std::min(cutoff, known), work);
  CubeList cubes = parted.essential;
  for (const std::uint32_t number : covering.columns) cubes.push_back((*primes)[number]);
  MinimizedCover result =
      boundedCover(std::move(cubes), known + covering.bound, CoverState::Improved);
  result.steps = stepsOf(work, limits);
  return result;
}

}  // namespace ostrel
