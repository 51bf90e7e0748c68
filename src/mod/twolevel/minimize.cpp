// Idea. A diagram of the function, in the first order of columns that gives a small one, yields an
// irredundant cover of both sets and tells how long each is before it is listed. The set that
// promises fewer cubes is worked on: by all primes where they are few, else by the loop of reduce,
// expand and irredundant.
//
// Example. 9 columns, 1 where three to six of them are: 148 and 90 cubes are counted. OFF has 72
// primes worth a look, all essential, so 72 is proven.
//
// Cost. That of the steps, each within its limit (work_limits.h); the rows given are read once for
// each order that is tried.
//
// Order. The first order of columns in which the diagram stays small decides among equal covers.
#include "twolevel/minimize.h"

#include <algorithm>
#include <cassert>
#include <memory>
#include <utility>

#include "minimizer/list_checks.h"
#include "twolevel/cover_graph.h"
#include "twolevel/iteration.h"
#include "twolevel/minimum_cover.h"
#include "twolevel/raise_rows.h"
#include "twolevel/renamed.h"

namespace ostrel {

namespace {

CubeList allCubes(const PartialFunction& function) {
  CubeList all = function.on;
  const CubeList& others = function.off ? *function.off : function.dontCare;
  all.insert(all.end(), others.begin(), others.end());
  return all;
}

/// The function as diagrams, with an irredundant cover of each set.
class World {
 public:
  World(const PartialFunction& function, ColumnOrder order, std::size_t nodes)
      : names_(allCubes(function), order),
        granted_(nodes * 40 + 2 * names_.width() * function.on.size()),
        effort_(granted_),
        diagram_(names_.width(), nodes, effort_),
        covers_(nodes, effort_) {
    const Diagram::Edge on = diagram_.sum(names_.toLevels(function.on));
    const CubeList rest = names_.toLevels(function.off ? *function.off : function.dontCare);
    const Diagram::Edge other = diagram_.sum(rest);
    const Diagram::Edge isFree = function.off ? Diagram::negation(other) : other;
    on_ = {on, diagram_.disjunction(on, isFree), {}};
    off_ = {Diagram::negation(on_.upper), Diagram::negation(on), {}};
    for (Set* set : {&on_, &off_}) {
      set->cover = irredundantCover(diagram_, covers_, set->lower, set->upper);
    }
  }

  bool isDone() const { return !effort_.isSpent(); }
  std::size_t steps() const { return stepsBefore_ + (granted_ - effort_.left()) * diagramStep; }
  bool hasFree() const { return on_.lower != on_.upper; }
  std::uint64_t count(bool isOn) const { return covers_.count(set(isOn).cover.cubes); }

  /// The irredundant cover as it is.
  MinimizedCover irredundant(bool isOn, std::size_t limit) const {
    const auto cubes = covers_.list(set(isOn).cover.cubes, limit);
    if (!cubes) return {};
    return boundedCover(names_.toColumns(*cubes), cubes->empty() ? 0U : 1U,
                        CoverState::Irredundant);
  }

  /// The cover after all work that the limits allow; what comes out with `cutoff` cubes or more is
  /// of no use to the caller.
  MinimizedCover improved(bool isOn, std::size_t cutoff, const WorkLimits& limits) {
    const auto cubes = covers_.list(set(isOn).cover.cubes, limits.listedCubes);
    if (!cubes) return {};
    const CoverTask task = {diagram_, set(isOn).lower, set(isOn).upper, *cubes};
    MinimizedCover result = improved(task, cutoff, limits);
    result.cubes = names_.toColumns(result.cubes);
    return result;
  }

 private:
  struct Set {
    Diagram::Edge lower;
    Diagram::Edge upper;
    IrredundantCover cover;
  };

  const Set& set(bool isOn) const { return isOn ? on_ : off_; }

  MinimizedCover improved(const CoverTask& task, std::size_t cutoff, const WorkLimits& limits) {
    allowWork(limits.tableSteps, limits);
    const Essentials parted = partEssentials(task);
    if (effort_.isSpent())
      return boundedCover(task.cover, task.cover.empty() ? 0U : 1U, CoverState::Irredundant);
    if (parted.essential.size() >= cutoff) {
      return boundedCover(task.cover, parted.essential.size(), CoverState::Irredundant);
    }
    allowWork(limits.tableSteps, limits);
    if (auto minimum = minimumCover(task, parted, cutoff, limits)) return *std::move(minimum);
    allowWork(limits.iterationSteps, limits);
    return iterate(task, parted, limits);
  }

  void allowWork(std::size_t steps, const WorkLimits& limits) {
    stepsBefore_ = this->steps();
    granted_ = steps;
    effort_ = Effort(steps);
    diagram_.allowMoreNodes(limits.workNodes);
  }

  Renamed names_;
  std::size_t stepsBefore_ = 0;  // of the efforts before the present one
  std::size_t granted_;          // to the present one
  Effort effort_;
  Diagram diagram_;
  CoverGraph covers_;
  Set on_ = {};
  Set off_ = {};
};

/// The function in the first order that needs few nodes; none where all need too many. Adds the
/// steps of the others.
std::unique_ptr<World> findWorld(const PartialFunction& function, const WorkLimits& limits,
                                 std::size_t& steps) {
  for (const std::size_t nodes : limits.diagramNodes) {
    for (const ColumnOrder order : columnOrders) {
      if (Renamed(allCubes(function), order).width() > maxDiagramColumns) return nullptr;
      auto world = std::make_unique<World>(function, order, nodes);
      if (world->isDone()) return world;
      steps += world->steps();
    }
  }
  return nullptr;
}

/// Whether one set promises so many cubes more than the other that it isn't worth the work. Free
/// points make the promise worth less.
bool isHopeless(const World& world, bool isOn) {
  const std::uint64_t own = world.count(isOn);
  const std::uint64_t other = world.count(!isOn);
  return world.hasFree() ? own / 5 > other : own / 9 * 5 > other;
}

}  // namespace

MinimizedFunction minimize(const PartialFunction& function, WantedSets wanted,
                           Thoroughness thoroughness) {
  const WorkLimits& limits = workLimits(thoroughness);
  MinimizedFunction result;
  if (function.on.size() + (function.off ? function.off->size() : function.dontCare.size()) >
      maxRows) {
    result.on = {function.on, CoverState::Given, 0, 0};
    return result;
  }
  const auto world = findWorld(function, limits, result.steps);
  if (world == nullptr) {
    result.on = raiseRows(function, limits);
    result.steps += result.on.steps;
    return result;
  }
  // The set that promises less first: what it reaches is what the other one has to beat.
  const bool isOnFirst = world->count(true) <= world->count(false);
  std::size_t cutoff = SIZE_MAX;
  for (const bool isOn : {isOnFirst, !isOnFirst}) {
    MinimizedCover& cover = isOn ? result.on : result.off;
    const bool isWanted = wanted == WantedSets::Both ||
                          wanted == (isOn ? WantedSets::On : WantedSets::Off) ||
                          (wanted == WantedSets::Smaller && !isHopeless(*world, isOn));
    if (isWanted) cover = world->improved(isOn, cutoff, limits);
    result.steps += cover.steps;
    const std::size_t limit =
        isOn ? std::max(limits.listedCubes, function.on.size()) : limits.listedCubes;
    if (cover.state == CoverState::Unknown) cover = world->irredundant(isOn, limit);
    if (wanted == WantedSets::Smaller) cutoff = cover.cubes.size();
  }
  const bool isLonger = result.on.cubes.size() > function.on.size();
  if (result.on.state == CoverState::Unknown || isLonger) {
    const std::size_t bound = result.on.bound;
    result.on = raiseRows(function, limits);
    result.on.bound = bound;
    result.steps += result.on.steps;
  }
  result.steps += world->steps();
  assert(result.on.state != CoverState::Unknown);
  // Points that are free may lie in both covers.
  assert(function.off || !function.dontCare.empty() ||
         haveNoCommonPoint<Cube>(result.on.cubes, result.off.cubes));
  return result;
}

}  // namespace ostrel
