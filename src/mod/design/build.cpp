// From the tables of a file to a design: Signals, their Equations, the column table.
//
// Order: Signals stand in the order of their declarations, pins first, and terms in that of their
// rows; both are seen in the output. The checks follow the order of the file's tables, so that the
// first fault is the one that is told.
#include <algorithm>
#include <utility>

#include "design/passes.h"
#include "logic/columns.h"
#include "run/log.h"
#include "run/options.h"

namespace ostrel {
namespace {

/// The functions of the file: its output columns, or none if no names say what they are.
int functionCount(const PlaFile& file) {
  return file.table(NameKind::Output).exists ? file.count(NameKind::Output) : 0;
}

/// What a run may spend on sets of functions that are wider than the complexity limit should let
/// through: enough for two of the widest, and for more in step with the size of the file.
std::size_t reserveFor(const PlaFile& file) {
  const auto rows = static_cast<std::size_t>(std::max(file.termCount, 0));
  const auto columns = static_cast<std::size_t>(file.count(NameKind::Input)) +
                       static_cast<std::size_t>(file.count(NameKind::Output));
  return (std::size_t{1} << 32U) + (rows * columns << 14U);
}

/// The terms of every output column, each column's in row order. One walk over the rows serves all
/// columns, and each row's term is looked up once.
std::vector<ColumnSets> readOutputPlane(const PlaFile& file, TermTable& terms) {
  // Columns beyond the table of names have no terms.
  std::vector<ColumnSets> columns(file.table(NameKind::Output).records.size());
  for (std::size_t k = 0; k < columns.size(); ++k) {
    const PlaName& name = file.name(NameKind::Output, static_cast<int>(k));
    columns[k].on.reserve(static_cast<std::size_t>(name.onTerms));
    columns[k].off.reserve(static_cast<std::size_t>(name.offTerms));
  }
  const bool readsFree = options().minimize != MinimizeEffort::None &&
                         (file.type == PlaType::fd || file.type == PlaType::fdr);
  for (std::size_t row = 0; row < file.outputRows.size(); ++row) {
    if (file.outputRows.isBlank(row)) continue;
    const std::string_view marks = file.outputRows.row(row);
    if (marks.find_first_of(readsFree ? "01-" : "01") == std::string_view::npos) continue;
    const bool isBlank = file.inputRows.isBlank(row);
    const Term term = terms.term(isBlank ? Cube() : Cube(file.inputRows.row(row)));
    for (std::size_t k = 0; k < columns.size(); ++k) {
      if (marks[k] == '1') columns[k].on.push_back(term);
      if (marks[k] == '0') columns[k].off.push_back(term);
      if (readsFree && marks[k] == '-') columns[k].free.push_back(term);
    }
  }
  return columns;
}

Status declareSignals(Design& design) {
  for (const NameKind kind : {NameKind::Pin, NameKind::Node}) {
    for (const PlaName& record : design.source().table(kind).records) {
      if (design.declare(record, kind == NameKind::Node) != nullptr) continue;
      message(toErrorAndLog,
              {"<ERROR> ", toolTag, " : duplicated ", record.base, " in design declaration\n"});
      return Status::Fatal;
    }
  }
  return Status::Ok;
}

/// The Signal that a column names, with the column's inversion noted; null, with a message, if it
/// isn't declared.
Signal* findColumnSignal(const Design& design, const PlaName& name) {
  Signal* signal = design.find(name.base);
  if (signal == nullptr) {
    error({"Undeclared signal ", name.base, " in design file ", options().input});
  } else if (name.polarity == Polarity::Inverted) {
    signal->columnPolarity = Polarity::Inverted;
  }
  return signal;
}

Status readFunctions(Design& design) {
  const PlaFile& file = design.source();
  std::vector<ColumnSets> sets = readOutputPlane(file, design.terms());
  for (int k = 0; k < functionCount(file); ++k) {
    Signal* signal = findColumnSignal(design, file.name(NameKind::Output, k));
    if (signal == nullptr) return Status::Fatal;
    const auto index = static_cast<std::size_t>(k);
    const Status status =
        readColumn(*signal, file, k, index < sets.size() ? std::move(sets[index]) : ColumnSets());
    if (status != Status::Ok) return status;
  }
  return Status::Ok;
}

/// Notes what the column reads: the pin or the internal feedback. False, with a message, for an
/// extension that can't be read.
bool acceptInputExtension(Signal& signal, int column, Extension extension) {
  switch (extension) {
    case Extension::None:
    case Extension::PIN:
      signal.pinColumn = column;
      return true;
    case Extension::D:
    case Extension::FB:
    case Extension::REG:
    case Extension::COM:
      signal.feedbackColumn = column;
      return true;
    case Extension::Q:
      if (signal.feedbackColumn < 0) {
        signal.feedbackColumn = column;
      } else {
        warning({signal.name, " has conflicting functions or DOT extensions (.Q and .FB)"});
      }
      return true;
    default:
      message(toLog,
              {"<ERROR> ", toolTag, ": ", signal.name, " has wrong DOT extension as input\n"});
      return false;
  }
}

Status readInputColumns(Design& design) {
  const PlaFile& file = design.source();
  const int count = file.table(NameKind::Input).exists ? file.count(NameKind::Input) : 0;
  for (int k = 0; k < count; ++k) {
    const PlaName& name = file.name(NameKind::Input, k);
    Signal* signal = findColumnSignal(design, name);
    if (signal == nullptr) return Status::Failed;
    design.addColumn(*signal, name.extension);
    if (!acceptInputExtension(*signal, k, name.extension)) return Status::Failed;
  }
  return Status::Ok;
}

}  // namespace

Status build(Design& design) {
  if (design.source().count(NameKind::Pin) == 0) {
    error({"reading #$ PINS in design file ", options().input});
    return Status::Fatal;
  }
  design.terms().reserve() = Effort(reserveFor(design.source()));
  for (const auto step : {declareSignals, readFunctions, readInputColumns}) {
    if (const Status status = step(design); status != Status::Ok) return status;
  }
  design.listLogic();
  computeSupports(design);  // the read relations start from the terms as they were read
  return Status::Ok;
}

Status checkLogic(Design& design) {
  Status status = Status::Ok;
  for (const auto& signal : design.signals()) {
    if (checkLogic(*signal) != Status::Ok) status = Status::Fatal;
  }
  return status;
}

}  // namespace ostrel
