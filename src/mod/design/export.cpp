// The way back into a file. Nothing is read again from the input but its property lines.
//
// Order. Output columns stand in the order of logic(), those of a Signal in that of its slots. Rows
// stand in the order in which the columns first name their terms; equal terms share a row.
#include "logic/export.h"

#include <algorithm>
#include <cassert>

#include "design/passes.h"
#include "fil/console.h"
#include "logic/row_merger.h"
#include "run/options.h"

namespace ostrel {
namespace {

struct OutputColumn {
  const Signal* signal;
  const Equation* equation;
};

std::vector<OutputColumn> outputColumns(const Design& design) {
  std::vector<OutputColumn> columns;
  for (const Signal* signal : design.logic()) {
    for (const Equation* equation : exportedEquations(*signal)) {
      columns.push_back({signal, equation});
    }
  }
  return columns;
}

PlaFile emptyTarget(const Design& design, int outputs) {
  const auto isNode = [](const auto& signal) { return signal->isNode; };
  const auto nodes = static_cast<int>(std::ranges::count_if(design.signals(), isNode));
  const int pins = static_cast<int>(design.signals().size()) - nodes;
  PlaFile file =
      makePlaFile({static_cast<int>(design.columns().size()), outputs, pins, nodes}, design.type);
  static_cast<void>(checkColumns(file, standardConsole()));  // told, and written all the same
  file.properties = design.source().properties;
  if (!options().module.empty()) {
    file.properties[propertyModule] = "#$ MODULE  " + options().module;
  }
  return file;
}

void exportDeclarations(const Design& design, PlaFile& file) {
  std::size_t pin = 0;
  std::size_t node = 0;
  for (const auto& signal : design.signals()) {
    auto& records = file.table(signal->isNode ? NameKind::Node : NameKind::Pin).records;
    records[signal->isNode ? node++ : pin++] = declarationName(*signal);
  }
  for (std::size_t c = 0; c < design.columns().size(); ++c) {
    file.table(NameKind::Input).records[c] = inputName(design.columns()[c]);
  }
}

/// The literals of all terms that are written, each term counted once.
std::size_t literalCount(std::span<const OutputColumn> outputs, const TermTable& terms) {
  std::vector<bool> isCounted(terms.size());
  std::size_t count = 0;
  for (const OutputColumn& output : outputs) {
    for (const auto* set : {&output.equation->onSet(), &output.equation->offSet()}) {
      for (const Term term : *set) {
        if (!isCounted[term.index]) count += terms.cube(term).literalCount();
        isCounted[term.index] = true;
      }
    }
  }
  return count;
}

void exportRows(std::span<const OutputColumn> outputs, const TermTable& terms, PlaFile& file) {
  file.madeInputs.reserve(literalCount(outputs, terms));
  RowMerger rows(file, terms);
  for (std::size_t k = 0; k < outputs.size(); ++k) {
    rows.writeToRows(outputs[k].equation->onSet(), k, '1');
    rows.writeToRows(outputs[k].equation->offSet(), k, '0');
  }
  file.termCount = static_cast<int>(file.madeInputs.size());
}

}  // namespace

PlaFile toFile(const Design& design) {
  const std::vector<OutputColumn> outputs = outputColumns(design);
  PlaFile file = emptyTarget(design, static_cast<int>(outputs.size()));
  exportDeclarations(design, file);
  for (std::size_t k = 0; k < outputs.size(); ++k) {
    const auto& [signal, equation] = outputs[k];
    file.table(NameKind::Output).records[k] = outputName(*signal, *equation);
    (*file.phase)[k] = equation->phase;
  }
  exportRows(outputs, design.terms(), file);
  assert(file.termCount <= static_cast<int>(design.terms().size()));
  return file;
}

}  // namespace ostrel
