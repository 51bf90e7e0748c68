// How thoroughly the functions of a run are minimised: as --minimize says, and less so once much
// work is done, so that a design of many hard functions doesn't take as many times as long.
#pragma once

#include <cstddef>

#include "run/options.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// The work of one pass. It goes on at the lower levels of thoroughness with what these allow.
class Diligence {
 public:
  Diligence() : level_(asTold()), left_(workLimits(level_).passSteps) {}

  /// False once there is no work left.
  bool isLeft() const { return left_ > 0; }

  /// For the next function.
  Thoroughness level() const { return level_; }

  void spend(std::size_t steps) {
    if (steps < left_) {
      left_ -= steps;
    } else if (level_ == Thoroughness::Fast) {
      left_ = 0;
    } else {
      level_ = level_ == Thoroughness::Deep ? Thoroughness::Normal : Thoroughness::Fast;
      left_ = workLimits(level_).passSteps;
    }
  }

 private:
  static Thoroughness asTold() {
    if (options().minimize == MinimizeEffort::Fast) return Thoroughness::Fast;
    return options().minimize == MinimizeEffort::Deep ? Thoroughness::Deep : Thoroughness::Normal;
  }

  Thoroughness level_;
  std::size_t left_;
};

}  // namespace ostrel
