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

std::optional<std::string> PlaFile::nameText(NameKind kind, int i, NameFormat format) const {
  if (i < 0 || i >= count(kind)) return std::nullopt;
  return name(kind, i).format(format);
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

Status PlaFile::allocateRows(const Console& console) {
  const int inputs = count(NameKind::Input);
  const int outputs = count(NameKind::Output);
  if (inputs == 0) {
    console.err << (outputs == 0
                        ? "Input file is not a correct PLA file.\n"
                        : "no inputs found in PLA. (.ilb must be declared before terms)\n");
    return Status::Fatal;
  }
  if (outputs == 0) {
    console.err << "no outputs found in PLA. (.ob must be declared before terms)\n";
    return Status::Fatal;
  }
  if (termCapacity == 0) {
    termCapacity = static_cast<int>(
        std::min<std::int64_t>(std::int64_t{inputs} * outputs, std::numeric_limits<int>::max()));
  }
  if (!rowsExist_) {
    inputRows = RowTable(static_cast<std::size_t>(inputs), '-');
    outputRows = RowTable(static_cast<std::size_t>(outputs), '~');
    rowsExist_ = true;
  }
  return Status::Ok;
}

Status PlaFile::prepare(int inputs, int outputs, int pins, int nodes, int terms, PlaType plaType,
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
  announce(NameKind::Flipflop, 0);
  termCount = termCapacity = terms;
  type = plaType;
  if (outputs > 0) phase.emplace(static_cast<std::size_t>(outputs), '1');
  commentPhase.reset();
  stateBits.clear();
  // A design without inputs or outputs is reported and written all the same, so the tables have
  // the right width even then.
  inputRows = RowTable(static_cast<std::size_t>(inputs), '-');
  outputRows = RowTable(static_cast<std::size_t>(outputs), '~');
  rowsExist_ = true;
  return allocateRows(console);
}

void PlaFile::truncateRows(int n) {
  termCapacity = n;
  if (termCount == n) return;
  inputRows.truncate(static_cast<std::size_t>(n));
  outputRows.truncate(static_cast<std::size_t>(n));
  termCount = n;
}

}  // namespace ostrel
