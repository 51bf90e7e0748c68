// The way back into a file. Nothing is read again from the input but its property lines.
#include <algorithm>

#include "design/design.h"
#include "fil/console.h"
#include "run/options.h"

namespace ostrel {
namespace {

void exportProperties(const PlaFile& source, PlaFile& target) {
  target.properties = source.properties;
  if (!options().module.empty()) {
    target.properties[propertyModule] = "#$ MODULE  " + options().module;
  }
}

}  // namespace

void Design::exportTo() {
  int outputs = 0;
  std::size_t terms = 0;
  for (const Signal* signal : logicList_) {
    outputs += signal->outputColumnCount();
    terms += signal->exportedTermCount();
  }
  int nodes = 0;
  for (const auto& signal : signals_) nodes += signal->isNode ? 1 : 0;
  const int pins = static_cast<int>(signals_.size()) - nodes;
  // A design without inputs or outputs earns the console's line here and is written all the same.
  targetPla.prepare(static_cast<int>(columns_.size()), outputs, pins, nodes, plaType_,
                    standardConsole());
  exportProperties(sourcePla_, targetPla);

  std::size_t pin = 0;
  std::size_t node = 0;
  for (const auto& signal : signals_) {
    auto& records = targetPla.table(signal->isNode ? NameKind::Node : NameKind::Pin).records;
    records[signal->isNode ? node++ : pin++] = signal->exportDeclaration();
  }
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    targetPla.table(NameKind::Input).records[c] = columns_[c].exportName();
  }
  int column = 0;
  for (const Signal* signal : logicList_) signal->exportColumns(targetPla, column);
  column = 0;
  const std::size_t mostRows = std::min(terms, terms_.size());
  targetPla.inputRows.reserve(mostRows);
  targetPla.outputRows.reserve(mostRows);
  RowMerger rows(targetPla, terms_);
  for (const Signal* signal : logicList_) signal->exportRows(rows, column);
  targetPla.termCount = static_cast<int>(targetPla.inputRows.size());
}

}  // namespace ostrel
