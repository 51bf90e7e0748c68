#include "verify/compare/judge.h"

#include <algorithm>

#include "verify/compare/comparer.h"
#include "verify/compare/form.h"
#include "verify/compare/losses.h"

namespace ostrel::verify {

namespace {

// The enable as a function of its columns, each Signal's two values taken as independent.
bool isAlwaysOn(const Network& network, const Function& enable, SolverWork& work) {
  Graph graph;
  Values values;
  for (std::size_t i = 0; i < network.signals.size(); ++i) {
    values.own.push_back(graph.variable());
    values.pin.push_back(graph.variable());
  }
  View view(graph, network, std::move(values), std::vector<bool>(network.columns.size(), false));
  const Literal on = view.meaning(enable).on;
  Simulation simulation(graph);
  Prover prover(graph, simulation, work);
  prover.setTitle("can an output enable be off?");
  return prover.isNever(!on);
}

std::vector<Finding> unusable(const Network& out) {
  std::vector<Finding> findings;
  for (const std::string& fault : out.faults) findings.push_back(formDifference("OUTPUT", fault));
  return findings;
}

}  // namespace

std::size_t Verdict::count(Outcome outcome) const {
  return static_cast<std::size_t>(
      std::ranges::count_if(findings, [&](const Finding& f) { return f.outcome == outcome; }));
}

Verdict verify(const PlaFile& input, const PlaFile& output, const Options& options,
               const Judging& judging) {
  const Network in = readNetwork(input);
  // OUTPUT may have lost its last pin: the run takes out what stands in no column.
  if (input.count(NameKind::Pin) == 0) return {{}, {"no pins are declared"}};
  if (!in.faults.empty()) return {{}, in.faults};
  const Network out = readNetwork(output);
  if (!out.faults.empty()) return {unusable(out), {}};
  SolverWork work{judging.effort, QuestionFiles(judging.questions)};
  const Correspondence c = correspond(in, out, [&](const Network& network, const Function& enable) {
    return isAlwaysOn(network, enable, work);
  });
  Miter miter(c, options.ffBeforeInverter, work);

  Verdict verdict{headerDifferences(input, output, options), {}};
  const auto append = [&](std::vector<Finding> found) {
    std::ranges::move(found, std::back_inserter(verdict.findings));
  };
  append(formDifferences(c, options));
  if (miter.cycleOfOutput()) {
    append({formDifference(out.signals[*miter.cycleOfOutput()].name,
                           "new nodes of OUTPUT form a loop")});
  }
  append(compareFunctions(miter, options.ffBeforeInverter));
  nameLosses(c, options, verdict.findings);
  if (!work.files.isComplete()) verdict.faults = {"the questions can't be written"};
  return verdict;
}

}  // namespace ostrel::verify
