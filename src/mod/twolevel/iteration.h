// The loop of reduce, expand and irredundant, for functions with too many primes to list.
#pragma once

#include "twolevel/minimum_cover.h"

namespace ostrel {

/// The cover of the task improved, one cube after the other, until nothing helps or the effort
/// ends: never longer than it was.
MinimizedCover iterate(const CoverTask& task, const Essentials& parted, const WorkLimits& limits);

}  // namespace ostrel
