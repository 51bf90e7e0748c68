// Idea. The rest that belongs to a cube on the left is the function XOR the cube. With a diagram
// its irredundant covers are counted without being listed, so many cubes can be tried: single
// literals, pairs of literals, the cubes of both covers, and these without one of their literals.
// The few that promise most are minimised. (Counting as in Minato, 1992.)
//
// Example. Of l d + l' (q XOR a b), the cubes l d, l' q a', l' q b' and l' q' a b are a cover. The
// last one without q' leaves l d + l' q on the right: three cubes for four.
//
// Cost. An exclusive OR and a cover for each candidate, within the effort; what it doesn't reach is
// not tried.
//
// Order. Literals by column come first, then pairs, then cubes in their order. Ties go to the
// candidate that was tried first.
#include "twolevel/cube_xor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "twolevel/cover_graph.h"
#include "twolevel/minimize.h"
#include "twolevel/renamed.h"

namespace ostrel {

namespace {

constexpr std::size_t maxColumnsOfPairs = 12;
constexpr std::size_t maxCubesTried = 40;  // of a cover; longer ones aren't tried
constexpr std::size_t finalists = 4;

/// The cubes to try on the left, in the levels of a diagram.
CubeList candidatesOf(std::size_t width, std::span<const CubeList> covers) {
  CubeList result;
  const auto addLiteral = [&](Cube cube, std::size_t column, char literal) {
    cube.set(column, literal);
    result.push_back(std::move(cube));
  };
  for (std::size_t i = 0; i < width; ++i) {
    for (const char literal : {'0', '1'}) addLiteral(Cube(), i, literal);
  }
  const std::size_t singles = width <= maxColumnsOfPairs ? result.size() : 0;
  for (std::size_t i = 0; i < singles; ++i) {
    for (std::size_t j = i / 2 + 1; j < width; ++j) {
      for (const char literal : {'0', '1'}) addLiteral(result[i], j, literal);
    }
  }
  for (const CubeList& cover : covers) {
    if (cover.size() > maxCubesTried) continue;
    for (const Cube& cube : cover) {
      result.push_back(cube);
      cube.forEachLiteral([&](std::size_t column, char) { addLiteral(cube, column, '-'); });
    }
  }
  return result;
}

/// A candidate and how many cubes its rest, or the complement of that, was counted with.
struct Ranked {
  std::uint64_t count;
  Cube left;
  CubeList right;
  bool isTurned;
};

class Ranking {
 public:
  Ranking(std::span<const Cube> on, ColumnOrder order, const WorkLimits& limits)
      : names_(on, order),
        effort_(limits.xorSteps),
        diagram_(names_.width(), limits.workNodes, effort_),
        function_(diagram_.sum(names_.toLevels(on))) {}

  bool isBuilt() const { return !effort_.isSpent(); }
  std::size_t stepsLeft() const { return effort_.left(); }

  /// The best few, the best first, each with fewer than `limit` cubes on the right or not many
  /// more.
  std::vector<Ranked> best(std::span<const Cube> on, std::span<const Cube> off, std::size_t limit,
                           bool mayTurn) {
    const CubeList covers[] = {names_.toLevels(on), names_.toLevels(readable(off))};
    for (const Cube& left : candidatesOf(names_.width(), covers)) {
      for (const bool isTurned : {false, true}) {
        if (!isTurned || mayTurn) rank(left, isTurned, limit + limit / 2);
      }
      if (effort_.isSpent()) break;
    }
    return std::move(best_);
  }

 private:
  /// Those that read no other columns than the function does.
  CubeList readable(std::span<const Cube> cubes) const {
    ColumnSet known;
    for (const Cube& cube : names_.toColumns(everyLevel())) cube.addSupportTo(known);
    CubeList result;
    for (const Cube& cube : cubes) {
      bool isKnown = true;
      cube.forEachLiteral(
          [&](std::size_t column, char) { isKnown = isKnown && known.contains(column); });
      if (isKnown) result.push_back(cube);
    }
    return result;
  }
  CubeList everyLevel() const {
    CubeList all(1);
    for (std::size_t i = 0; i < names_.width(); ++i) all[0].set(i, '1');
    return all;
  }

  void rank(const Cube& left, bool isTurned, std::size_t limit) {
    const Diagram::Edge cube = diagram_.sum(std::span(&left, 1));
    const Diagram::Edge f = isTurned ? Diagram::negation(function_) : function_;
    const Diagram::Edge rest =
        diagram_.disjunction(diagram_.difference(f, cube), diagram_.difference(cube, f));
    CoverGraph covers(diagram_.size() * 4 + 1000, effort_);
    const CoverGraph::Set set = irredundantCover(diagram_, covers, rest, rest).cubes;
    const std::uint64_t count = covers.count(set);
    if (effort_.isSpent() || count == 0 || count > limit) return;
    if (best_.size() == finalists && count >= best_.back().count) return;
    const auto place = std::find_if(best_.begin(), best_.end(),
                                    [&](const Ranked& other) { return other.count > count; });
    best_.insert(place, {count, names_.toColumns(std::span(&left, 1)).front(),
                         names_.toColumns(covers.first(set, limit)), isTurned});
    if (best_.size() > finalists) best_.pop_back();
  }

  Renamed names_;
  Effort effort_;
  Diagram diagram_;
  Diagram::Edge function_;
  std::vector<Ranked> best_;
};

}  // namespace

std::optional<CubeXor> findCubeXor(std::span<const Cube> on, std::span<const Cube> off,
                                   std::size_t limit, bool mayTurn, Thoroughness thoroughness,
                                   std::size_t& steps) {
  const WorkLimits& limits = workLimits(thoroughness);
  std::vector<Ranked> ranked;
  for (const ColumnOrder order : columnOrders) {
    if (Renamed(on, order).width() > maxDiagramColumns) return std::nullopt;
    Ranking ranking(on, order, limits);
    const bool isBuilt = ranking.isBuilt();
    if (isBuilt) ranked = ranking.best(on, off, limit, mayTurn);
    steps += (limits.xorSteps - ranking.stepsLeft()) * diagramStep;
    if (isBuilt) break;
  }
  std::optional<CubeXor> best;
  for (Ranked& pair : ranked) {
    MinimizedFunction rest =
        minimize({std::move(pair.right), {}, std::nullopt}, WantedSets::On, thoroughness);
    steps += rest.steps;
    CubeList right = std::move(rest.on.cubes);
    if (right.empty() || right.size() >= limit) continue;
    limit = right.size();
    best = {std::move(pair.left), std::move(right), pair.isTurned};
  }
  return best;
}

}  // namespace ostrel
