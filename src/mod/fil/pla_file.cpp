#include "fil/pla_file.h"

#include <ostream>

namespace ostrel {

const PlaName& PlaFile::name(NameKind kind, int i) const {
  static const PlaName empty;
  const auto& records = table(kind).records;
  const auto index = static_cast<std::size_t>(i);
  return index < records.size() ? records[index] : empty;
}

char PlaFile::phaseOf(int column) const {
  const auto index = static_cast<std::size_t>(column);
  return phase && index < phase->size() ? (*phase)[index] : '1';
}

PlaFile makePlaFile(const PlaShape& shape, PlaType type) {
  PlaFile file;
  const auto announce = [&file](NameKind kind, int n) {
    file.table(kind) = {n, n > 0, std::vector<PlaName>(static_cast<std::size_t>(n))};
  };
  announce(NameKind::Input, shape.inputs);
  announce(NameKind::Output, shape.outputs);
  announce(NameKind::Pin, shape.pins);
  announce(NameKind::Node, shape.nodes);
  file.type = type;
  if (shape.outputs > 0) file.phase.emplace(static_cast<std::size_t>(shape.outputs), '1');
  file.inputRows = RowTable(static_cast<std::size_t>(shape.inputs), '-');
  file.outputRows = RowTable(static_cast<std::size_t>(shape.outputs), '~');
  return file;
}

Status checkColumns(const PlaFile& file, const Console& console) {
  const bool hasOutputs = file.count(NameKind::Output) != 0;
  if (file.count(NameKind::Input) == 0) {
    console.err << (hasOutputs ? "no inputs found in PLA. (.ilb must be declared before terms)\n"
                               : "Input file is not a correct PLA file.\n");
    return Status::Fatal;
  }
  if (!hasOutputs) {
    console.err << "no outputs found in PLA. (.ob must be declared before terms)\n";
    return Status::Fatal;
  }
  return Status::Ok;
}

}  // namespace ostrel
