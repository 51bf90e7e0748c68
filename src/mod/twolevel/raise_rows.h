// What is left to do where no diagram of a function fits.
#pragma once

#include "twolevel/partial_function.h"
#include "twolevel/work_limits.h"

namespace ostrel {

/// The rows of the ON set, some of them raised, without those that others cover.
MinimizedCover raiseRows(const PartialFunction& function, const WorkLimits& limits);

}  // namespace ostrel
