#include "run/pipeline.h"

#include <array>
#include <cassert>

#include "logic/kept_sets.h"
#include "run/heart.h"
#include "run/log.h"

namespace ostrel {
namespace {

struct Step {
  std::string_view name;
  void (*take)(Run&);
};

constexpr std::string_view settling = "settle functions";

/// Whether a register whose set and reset can't follow comes out inverted is known at the end only,
/// since two inversions cancel. So the steps are taken for nobody, until none does that needn't.
Names sensesToKeep(const PlaFile& source) {
  constexpr int trials = 4;  // each keeps more senses than the one before; almost all need two
  Names fixed;
  for (int trial = 0;; ++trial) {
    const LogPause pause;
    Run run(source);
    run.isTrial = true;
    run.fixed = fixed;
    runPipeline(run, settling);
    for (const auto& signal : run.design.signals()) {
      const bool isLast = trial == trials && hasFixedInit(*signal);
      if (signal->keepsSense || isLast) fixed.insert(signal->name);
    }
    if (fixed.size() == run.fixed.size() || trial == trials) return fixed;
  }
}

void completeFunctions(Run& run) {
  const std::string_view step = currentStep();
  if (!run.isTrial && hasFixedInits(run.design)) run.fixed = sensesToKeep(run.design.source());
  setCurrentStep(step);
  completeFunctions(run.design, run.fixed);
}

// Every step is taken on every run; each pass looks at the options that concern it. The order is
// part of the output.
constexpr std::array<Step, 24> steps = {{
    {firstStep, [](Run& run) { run.status = build(run.design); }},
    {"check logic", [](Run& run) { run.status = checkLogic(run.design); }},
    {"complete functions", completeFunctions},
    {"minimize functions", [](Run& run) { minimizeFunctions(run.design); }},
    {"remove unused signals", [](Run& run) { removeUnusedSignals(run.design); }},
    {"order XOR pairs", [](Run& run) { orderXorPairs(run.design); }},
    {"synthesize XOR", [](Run& run) { synthesizeXor(run.design, XorTurn::First); }},
    {"choose polarity", [](Run& run) { choosePolarity(run.design); }},
    {"count readers", [](Run& run) { run.readers = countReaders(run.design); }},
    {"collapse feedback",
     [](Run& run) { run.collapsed = collapseFeedback(run.design, run.readers); }},
    {"normalize polarity", [](Run& run) { normalizePolarity(run.design); }},
    {"count readers again",
     [](Run& run) {
       if (run.collapsed) run.readers = countReaders(run.design);
     }},
    {"remove dead nodes", [](Run& run) { removeDeadNodes(run.design, run.readers); }},
    {"split control equations", [](Run& run) { splitControlEquations(run.design); }},
    {"factor logic", [](Run& run) { factorLogic(run.design); }},
    {"split equations", [](Run& run) { splitEquations(run.design); }},
    {"minimize new logic", [](Run& run) { minimizeNewLogic(run.design); }},
    {"synthesize XOR of new logic", [](Run& run) { synthesizeXor(run.design, XorTurn::NewLogic); }},
    {"choose polarity again", [](Run& run) { choosePolarity(run.design); }},
    {"swap XOR pairs", [](Run& run) { swapXorPairs(run.design); }},
    {"assign feedback extensions", [](Run& run) { assignFeedbackExtensions(run.design); }},
    {settling, [](Run& run) { run.status = settleFunctions(run.design); }},
    {"absorb inversions", [](Run& run) { absorbInversions(run.design); }},
    {lastStep, [](Run& run) { run.target = toFile(run.design); }},
}};

}  // namespace

Status runPipeline(Run& run, std::string_view last, const StepWatch& watch) {
  assert(run.stepsDone <= steps.size());
  while (run.status == Status::Ok && run.stepsDone < steps.size()) {
    const Step& step = steps[run.stepsDone++];
    setCurrentStep(step.name);
    heartMsg();
    step.take(run);
    watch(step.name, run.design);
    if (step.name == last) break;
  }
  setCurrentStep({});
  heartMsg();
  return run.status;
}

}  // namespace ostrel
