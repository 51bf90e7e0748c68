// The order of the passes.
#pragma once

#include <string_view>

#include "design/passes.h"

namespace ostrel {

/// What the steps work on, and what one leaves for a later one.
struct Run {
  explicit Run(const PlaFile& source) : design(source) {}

  Design design;
  Readers readers;         ///< as counted last
  bool collapsed = false;  ///< folding has changed who reads whom
  PlaFile target;          ///< the file to be written, from the last step on
  Status status = Status::Ok;
  std::size_t stepsDone = 0;
};

/// Takes the steps that are still to be done, through the one named (the names stand in
/// pipeline.cpp). Not Ok, and at an end, if a step found a fault, which has then been told.
Status runPipeline(Run& run, std::string_view last = "write into a file");

}  // namespace ostrel
