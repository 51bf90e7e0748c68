// The image of one PLA file (.tt2): a Berkeley truth table with `#$` lines that declare pins and
// nodes and carry properties.
//
// A PlaFile is filled once, by read or by an export that calls prepare, and then only read. It
// knows nothing of logic: rows are texts, names are taken apart but not resolved.
#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "fil/console.h"
#include "fil/pla_name.h"
#include "fil/pla_tables.h"
#include "fil/row_table.h"
#include "fil/status.h"

namespace ostrel {

/// Where a name stands: #$ PINS, #$ NODES, .ilb, .ob, #$ FLIPFLOPS.
enum class NameKind : unsigned char { Pin, Node, Input, Output, Flipflop };

/// The value of .type: which planes the rows give. The file always means don't-care by '-' in the
/// output plane; f and fd take everything not listed as OFF, fr and fdr as don't-care.
enum class PlaType : unsigned char { f, fd, fr, fdr };

/// One #$ STATEBITS line. `names` can be shorter than `count`.
struct StateBits {
  int count = 0;
  std::vector<std::string> names;
};

class PlaFile {
 public:
  /// The names of one kind. `count` is what the file announces (.i for .ilb, .o for .ob).
  /// A table that exists holds records up to `capacity`; those not read yet are not stored.
  struct NameTable {
    int count = 0;
    bool exists = false;
    int capacity = 0;
    std::vector<PlaName> records;
  };

  int termCount = 0;     ///< rows stored so far
  int termCapacity = 0;  ///< most rows allowed: the value of .p, or its default
  PlaType type = PlaType::f;
  RowTable inputRows;      ///< '0', '1' and '-'; as wide as .i
  RowTable outputRows;     ///< '0', '1', '-' and '~'; as wide as .o
  SparseRows madeInputs;   ///< the rows of a file that was not read: they follow those above
  SparseRows madeOutputs;  ///< as many
  std::optional<std::string> phase;
  std::optional<std::string> commentPhase;  ///< #.phase; read and kept, used by nothing
  std::array<std::string, propertyWords.size()> properties;  ///< whole lines; empty for none
  std::vector<StateBits> stateBits;

  NameTable& table(NameKind kind) { return tables_[static_cast<std::size_t>(kind)]; }
  const NameTable& table(NameKind kind) const { return tables_[static_cast<std::size_t>(kind)]; }
  int count(NameKind kind) const { return table(kind).count; }

  /// Record i of a kind; an empty name where the table has no such record.
  const PlaName& name(NameKind kind, int i) const;

  /// The phase character of an output column, '1' where the file gives none.
  char phaseOf(int column) const;

  /// Reads a whole file. Messages go straight to the console, in the order of the faults.
  /// Fatal if the file can't be used: a fault that stops the reading, or .i or .o missing.
  Status read(std::istream& stream, const Console& console);

  /// Makes empty row tables at the present counts, in front of the first row. Fatal, with a
  /// message and without tables, if the inputs or outputs are not declared.
  Status allocateRows(const Console& console);

  /// Sets a new file up for an export: tables of cleared records, no rows. A message goes to the
  /// console if there are no inputs or outputs; the file is ready for the export in any case.
  void prepare(int inputs, int outputs, int pins, int nodes, PlaType type, const Console& console);

  /// Writes the file. A DATE property that is empty becomes the present time first. No write is
  /// tested: the state of the stream is the caller's to look at.
  void write(std::ostream& stream);

 private:
  /// Fatal, with a message on the console, if the inputs or outputs are not declared.
  Status checkColumns(const Console& console) const;

  std::array<NameTable, 5> tables_;
};

}  // namespace ostrel
