// Idea. A literal may go if the other half of the cube, across it, is 1 or free as well. That is
// asked of the rows themselves, without any other form of the function: by coverage, or, where the
// OFF set is given, by whether it is met. At last, rows that the others cover go. (Literal raising
// by tautology, Brayton et al., 1984.)
//
// Example. a b + a' b: across the literal a of the first row, a' b is covered, so the row becomes
// b; the second row lies in it and goes.
//
// Cost. A question about coverage for each literal and each row, exponential in bad cases; the
// effort ends them, and what wasn't asked stays as it is.
//
// Order. Rows are raised and left out in their order, literals from the first column on.
#include "twolevel/raise_rows.h"

#include <algorithm>

#include "minimizer/coverage.h"

namespace ostrel {

namespace {

std::size_t widthOf(const CubeList& cubes) {
  std::size_t width = 1;
  for (const Cube& cube : cubes) width = std::max(width, ostrel::widthOf(cube));
  return width;
}

class Raising {
 public:
  Raising(const PartialFunction& function, std::size_t steps)
      : function_(function), granted_(steps), effort_(steps) {
    CubeList all = function.on;
    if (!function.off) {
      all.insert(all.end(), function.dontCare.begin(), function.dontCare.end());
    }
    fill(all);
  }

  CubeList run() {
    CubeList cubes = function_.on;
    for (std::size_t i = 0; i < cubes.size() && !effort_.isSpent(); ++i) raise(cubes[i], i);
    return cubes;
  }

  std::size_t steps() const { return stepsBefore_ + granted_ - effort_.left(); }

  /// Leaves out what the others cover together with the free points, with an effort of its own.
  void thin(CubeList& cubes, std::size_t steps) {
    stepsBefore_ = this->steps();
    granted_ = steps;
    effort_ = Effort(steps);
    CubeList all = cubes;
    if (!function_.off) {
      all.insert(all.end(), function_.dontCare.begin(), function_.dontCare.end());
    }
    fill(all);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < cubes.size(); ++i) {
      if (isCovered(cubes[i], i)) {
        coverage_.remove(i);
      } else {
        if (kept != i) cubes[kept] = cubes[i];
        ++kept;
      }
    }
    cubes.resize(kept);
  }

 private:
  void fill(const CubeList& cubes) {
    coverage_.reset(widthOf(cubes));
    rows_ = cubes.size();
    for (const Cube& cube : cubes) coverage_.add(cube);
  }

  void raise(Cube& cube, std::size_t number) {
    const Cube original = cube;
    original.forEachLiteral([&](std::size_t column, char) {
      Cube across = cube;
      across.invert(column);
      if (mayHold(across, number)) cube.set(column, '-');
    });
  }

  /// Whether a cube that doesn't meet the row of this number lies in what is 1 or free.
  bool mayHold(const Cube& cube, std::size_t number) {
    if (!function_.off) return isCovered(cube, number);
    const CubeList& off = *function_.off;
    return effort_.spend(off.size()) && std::none_of(off.begin(), off.end(), [&](const Cube& row) {
             return cubesIntersect(row, cube);
           });
  }

  /// The rows are all read before the first step of an answer.
  bool isCovered(const Cube& cube, std::size_t number) {
    return effort_.spend(rows_) && coverage_.isCovered(cube, number, effort_);
  }

  const PartialFunction& function_;
  std::size_t stepsBefore_ = 0;
  std::size_t granted_;
  Effort effort_;
  std::size_t rows_ = 0;
  Coverage<Cube> coverage_;
};

}  // namespace

MinimizedCover raiseRows(const PartialFunction& function, const WorkLimits& limits) {
  Raising raising(function, limits.raisingSteps);
  MinimizedCover result = {raising.run(), CoverState::Given, 0, 0};
  raising.thin(result.cubes, limits.raisingSteps);
  result.steps = raising.steps();
  return result;
}

}  // namespace ostrel
