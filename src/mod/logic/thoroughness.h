// The effort that --minimize names, in the words of the two-level minimisation.
#pragma once

#include "run/options.h"
#include "twolevel/work_limits.h"

namespace ostrel {

inline Thoroughness thoroughness() {
  switch (options().minimize) {
    case MinimizeEffort::Fast:
      return Thoroughness::Fast;
    case MinimizeEffort::Deep:
      return Thoroughness::Deep;
    default:
      return Thoroughness::Normal;
  }
}

}  // namespace ostrel
