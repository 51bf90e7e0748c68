// From the tables of a file to a design: Signals, their Equations, the column table.
#include <algorithm>
#include <utility>

#include "design/design.h"
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
  const auto columns =
      static_cast<std::size_t>(file.count(NameKind::Input) + file.count(NameKind::Output));
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
  for (std::size_t row = 0; row < file.outputRows.size(); ++row) {
    if (file.outputRows.isBlank(row)) continue;
    const std::string_view marks = file.outputRows.row(row);
    if (marks.find_first_of("01") == std::string_view::npos) continue;
    const bool isBlank = file.inputRows.isBlank(row);
    const Term term = terms.term(isBlank ? Cube() : Cube(file.inputRows.row(row)));
    for (std::size_t k = 0; k < columns.size(); ++k) {
      if (marks[k] == '1') columns[k].on.push_back(term);
      if (marks[k] == '0') columns[k].off.push_back(term);
    }
  }
  return columns;
}

}  // namespace

Design::Design(const PlaFile& source)
    : sourcePla_(source),
      plaType_(source.type),
      terms_(source.table(NameKind::Input).exists
                 ? static_cast<std::size_t>(source.count(NameKind::Input))
                 : 0) {
  terms_.reserve() = Effort(reserveFor(source));
}

Status Design::build() {
  if (sourcePla_.count(NameKind::Pin) == 0) {
    logMessage(toErrorAndLog, "<ERROR> %s: reading #$ PINS in design file %s\n", toolTag,
               options().input.c_str());
    return Status::Fatal;
  }
  for (const NameKind kind : {NameKind::Pin, NameKind::Node}) {
    for (const PlaName& record : sourcePla_.table(kind).records) {
      if (declareSignal(record, kind == NameKind::Node) == nullptr) return Status::Fatal;
    }
  }
  if (const Status status = readFunctions(); status != Status::Ok) return status;
  if (const Status status = readInputColumns(); status != Status::Ok) return status;
  classifySignals();
  // The read relations start from the terms as they were read.
  for (Signal* signal : logicList_) {
    ColumnSet scratch;
    signal->collectColumns(scratch, true);
  }
  return Status::Ok;
}

Signal* Design::declareSignal(const PlaName& record, bool isNode) {
  if (findSignal(record.base) != nullptr) {
    logMessage(toErrorAndLog, "<ERROR> %s : duplicated %s in design declaration\n", toolTag,
               record.base.c_str());
    return nullptr;
  }
  signals_.push_back(std::make_unique<Signal>(terms_, record, isNode));
  Signal* signal = signals_.back().get();
  names_.emplace(signal->name, signal);
  return signal;
}

Status Design::readFunctions() {
  std::vector<ColumnSets> sets = readOutputPlane(sourcePla_, terms_);
  for (int k = 0; k < functionCount(sourcePla_); ++k) {
    const PlaName& name = sourcePla_.name(NameKind::Output, k);
    Signal* signal = findSignal(name.base);
    if (signal == nullptr) {
      logMessage(toErrorAndLog, "<ERROR> %s: Undeclared signal %s in design file %s\n", toolTag,
                 name.base.c_str(), options().input.c_str());
      return Status::Fatal;
    }
    if (name.polarity == Polarity::Inverted) signal->columnPolarity = Polarity::Inverted;
    const auto index = static_cast<std::size_t>(k);
    const Status status = signal->addEquation(
        sourcePla_, k, name, index < sets.size() ? std::move(sets[index]) : ColumnSets());
    if (status != Status::Ok) return status;
  }
  return Status::Ok;
}

Status Design::readInputColumns() {
  const auto columnCount = static_cast<int>(terms_.width());
  for (int k = 0; k < columnCount; ++k) {
    const PlaName& name = sourcePla_.name(NameKind::Input, k);
    Signal* signal = findSignal(name.base);
    if (signal == nullptr) {
      logMessage(toErrorAndLog, "<ERROR> %s: Undeclared signal %s in design file %s\n", toolTag,
                 name.base.c_str(), options().input.c_str());
      return Status::Failed;
    }
    if (name.polarity == Polarity::Inverted) signal->columnPolarity = Polarity::Inverted;
    columns_.push_back({signal, name.extension});
    signal->columns.push_back(static_cast<std::size_t>(k));
    if (!acceptInputExtension(*signal, k, name.extension)) return Status::Failed;
  }
  return Status::Ok;
}

/// Notes what the column reads: the pin or the internal feedback. False, with a message, for an
/// extension that can't be read.
bool Design::acceptInputExtension(Signal& signal, int column, Extension extension) {
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
        logMessage(toLog,
                   "<Warning> %s: %s has conflicting functions or DOT extensions (%s and %s)\n",
                   toolTag, signal.name.c_str(), ".Q", ".FB");
      }
      return true;
    default:
      logMessage(toLog, "<ERROR> %s: %s has wrong DOT extension as input\n", toolTag,
                 signal.name.c_str());
      return false;
  }
}

void Design::classifySignals() {
  logicList_.clear();
  for (const auto& signal : signals_) {
    if (!signal->hasNoLogic()) logicList_.add(*signal);
  }
  logicListIsCurrent_ = true;
}

Status Design::checkLogic() {
  Status status = Status::Ok;
  for (const auto& signal : signals_) {
    if (signal->checkLogic() != Status::Ok) status = Status::Fatal;
  }
  return status;
}

Signal* Design::findSignal(std::string_view name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? nullptr : found->second;
}

}  // namespace ostrel
