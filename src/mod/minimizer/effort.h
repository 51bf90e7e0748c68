// How much work may still be done. Effort counts steps and never looks at a clock, so that a run
// gives the same bytes on every machine.
#pragma once

#include <cstddef>
#include <limits>

namespace ostrel {

class Effort {
 public:
  /// Without a number there is no bound.
  explicit constexpr Effort(std::size_t steps = std::numeric_limits<std::size_t>::max())
      : left_(steps) {}

  /// Takes the steps. False, and from then on nothing is left, where there are not so many.
  bool spend(std::size_t steps) {
    const bool isEnough = steps < left_;
    left_ = isEnough ? left_ - steps : 0;
    return isEnough;
  }

  bool isSpent() const { return left_ == 0; }
  std::size_t left() const { return left_; }

 private:
  std::size_t left_;
};

}  // namespace ostrel
