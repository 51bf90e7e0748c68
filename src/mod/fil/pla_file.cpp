#include "fil/pla_file.h"

#include <algorithm>
#include <cstdint>
#include <ios>
#include <limits>
#include <ostream>

#include "fil/pla_reader.h"

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

Status PlaFile::read(std::istream& stream, const Console& console) {
  try {
    return PlaReader(*this, stream, console).read();
  } catch (const std::ios_base::failure&) {
    return Status::Fatal;  // the device or directory behind the stream can't be read
  }
}

Status PlaFile::checkColumns(const Console& console) const {
  const bool hasOutputs = count(NameKind::Output) != 0;
  if (count(NameKind::Input) == 0) {
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

Status PlaFile::allocateRows(const Console& console) {
  if (checkColumns(console) != Status::Ok) return Status::Fatal;
  const int inputs = count(NameKind::Input);
  const int outputs = count(NameKind::Output);
  if (termCapacity == 0) {
    termCapacity = static_cast<int>(
        std::min<std::int64_t>(std::int64_t{inputs} * outputs, std::numeric_limits<int>::max()));
  }
  inputRows = RowTable(static_cast<std::size_t>(inputs), '-');
  outputRows = RowTable(static_cast<std::size_t>(outputs), '~');
  return Status::Ok;
}

void PlaFile::prepare(int inputs, int outputs, int pins, int nodes, PlaType plaType,
                      const Console& console) {
  const auto announce = [this](NameKind kind, int n) {
    NameTable& names = table(kind);
    names.count = names.capacity = n;
    names.exists = n > 0;
    names.records.assign(static_cast<std::size_t>(n), PlaName());
  };
  announce(NameKind::Input, inputs);
  announce(NameKind::Output, outputs);
  announce(NameKind::Pin, pins);
  announce(NameKind::Node, nodes);
  type = plaType;
  if (outputs > 0) phase.emplace(static_cast<std::size_t>(outputs), '1');
  // A design without inputs or outputs is reported and written all the same, so the tables have
  // the right width even then.
  inputRows = RowTable(static_cast<std::size_t>(inputs), '-');
  outputRows = RowTable(static_cast<std::size_t>(outputs), '~');
  static_cast<void>(checkColumns(console));
}

}  // namespace ostrel
