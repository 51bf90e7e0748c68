#include "run/pipeline.h"

#include <array>
#include <string_view>

namespace ostrel {
namespace {

/// What one step leaves for a later one.
struct Progress {
  Design& design;
  bool collapsed = false;
};

struct Step {
  std::string_view name;
  Status (*run)(Progress&);
};

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
constexpr std::array<Step, 19> pipeline = {{
    {"build", stopping<&Design::build>},
    {"checkLogic", stopping<&Design::checkLogic>},
    {"removeUnusedSignals", always<&Design::removeUnusedSignals>},
    {"orderXorPairs", always<&Design::orderXorPairs>},
    {"synthesizeXor, first pass", synthesizeXor<1>},
    {"choosePolarity", always<&Design::choosePolarity>},
    {"refreshFanout", refreshFanout},
    {"collapseFeedback", collapseFeedback},
    {"normalizePolarity", always<&Design::normalizePolarity>},
    {"refreshFanout, if a Signal collapsed", refreshAfterCollapse},
    {"removeDeadNodes", always<&Design::removeDeadNodes>},
    {"splitControlEquations", always<&Design::splitControlEquations>},
    {"splitEquations", always<&Design::splitEquations>},
    {"synthesizeXor, second pass", synthesizeXor<2>},
    {"choosePolarity", always<&Design::choosePolarity>},
    {"swapXorPairs", always<&Design::swapXorPairs>},
    {"assignFeedbackExtensions", always<&Design::assignFeedbackExtensions>},
    {"absorbInversions", always<&Design::absorbInversions>},
    {"exportTo", always<&Design::exportTo>},
}};

}  // namespace

Status runPipeline(Design& design) {
  Progress progress{design};
  for (const Step& step : pipeline) {
    if (const Status status = step.run(progress); status != Status::Ok) return status;
  }
  return Status::Ok;
}

}  // namespace ostrel
