// The order of the passes.
#pragma once

#include <functional>
#include <string_view>

#include "design/passes.h"

namespace ostrel {

/// What the steps work on, and what one leaves for a later one.
struct Run {
  explicit Run(const PlaFile& source) : design(source) {}

  Design design;
  Readers readers;         ///< as counted last
  bool collapsed = false;  ///< folding has changed who reads whom
  bool isTrial = false;    ///< taken for nobody, to see where the steps lead
  Names fixed;             ///< Signals that --lossless found to have to keep their sense
  PlaFile target;          ///< the file to be written, from the last step on
  Status status = Status::Ok;
  std::size_t stepsDone = 0;
};

inline constexpr std::string_view firstStep = "build";
inline constexpr std::string_view lastStep = "write into a file";

/// Whoever looks on: called behind each step, the one that found a fault included.
using StepWatch = std::function<void(std::string_view step, const Design& design)>;

/// Takes the steps that are still to be done, through the one named (the names stand in
/// pipeline.cpp). Not Ok, and at an end, if a step found a fault, which has then been told.
Status runPipeline(
    Run& run, std::string_view last = lastStep,
    const StepWatch& watch = [](std::string_view, const Design&) {});

}  // namespace ostrel
