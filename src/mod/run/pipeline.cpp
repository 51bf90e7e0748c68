#include "run/pipeline.h"

#include <array>

namespace ostrel {
namespace {

/// What one step leaves for a later one.
struct Progress {
  Design& design;
  bool collapsed = false;
};

using Step = Status (*)(Progress&);

/// A step that can't stop the run.
template <void (Design::*pass)()>
Status always(Progress& progress) {
  (progress.design.*pass)();
  return Status::Ok;
}

/// A step whose fault stops the run.
template <Status (Design::*pass)()>
Status stopping(Progress& progress) {
  return (progress.design.*pass)();
}

template <int pass>
Status synthesizeXor(Progress& progress) {
  progress.design.synthesizeXor(pass);
  return Status::Ok;
}

Status refreshFanout(Progress& progress) {
  progress.design.refreshFanout(false);
  return Status::Ok;
}

Status collapseFeedback(Progress& progress) {
  progress.collapsed = progress.design.collapseFeedback();
  return Status::Ok;
}

Status refreshAfterCollapse(Progress& progress) {
  return progress.collapsed ? refreshFanout(progress) : Status::Ok;
}

// Every step runs on every run; each pass looks at the options that concern it.
constexpr std::array<Step, 19> pipeline = {
    stopping<&Design::build>,
    stopping<&Design::checkLogic>,
    always<&Design::removeUnusedSignals>,
    always<&Design::orderXorPairs>,
    synthesizeXor<1>,
    always<&Design::choosePolarity>,
    refreshFanout,
    collapseFeedback,
    always<&Design::normalizePolarity>,
    refreshAfterCollapse,
    always<&Design::removeDeadNodes>,
    always<&Design::splitControlEquations>,
    always<&Design::splitEquations>,
    synthesizeXor<2>,
    always<&Design::choosePolarity>,
    always<&Design::swapXorPairs>,
    always<&Design::assignFeedbackExtensions>,
    always<&Design::absorbInversions>,
    always<&Design::exportTo>,
};

}  // namespace

Status runPipeline(Design& design) {
  Progress progress{design};
  for (const Step step : pipeline) {
    if (const Status status = step(progress); status != Status::Ok) return status;
  }
  return Status::Ok;
}

}  // namespace ostrel
