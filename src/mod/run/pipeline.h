// The order of the passes.
#pragma once

#include "design/design.h"
#include "fil/status.h"

namespace ostrel {

/// Runs every step over the design, from its construction to the filling of its target file. Not
/// Ok if a step stopped the run, which has then sent its messages.
Status runPipeline(Design& design);

}  // namespace ostrel
