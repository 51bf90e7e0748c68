// The image of one PLA file (.tt2): a Berkeley truth table with `#$` lines that declare pins and
// nodes and carry properties.
//
// A PlaFile is filled once, by readPla or by an export, and then only looked at. It knows nothing
// of logic: rows are texts, names are taken apart but not resolved.
#pragma once

#include <array>
#include <cstddef>
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
  /// The names of one kind. `count` is what the file announces (.i for .ilb, .o for .ob); the
  /// records of a table that exists can be fewer.
  struct NameTable {
    int count = 0;
    bool exists = false;
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

 private:
  std::array<NameTable, 5> tables_;
};

/// The sizes of a file that is going to be filled.
struct PlaShape {
  int inputs = 0;
  int outputs = 0;
  int pins = 0;
  int nodes = 0;
};

/// A file with tables of cleared records in that shape, and no rows yet.
PlaFile makePlaFile(const PlaShape& shape, PlaType type);

/// Fatal, with a line on the console, if the file has no inputs or no outputs.
Status checkColumns(const PlaFile& file, const Console& console);

}  // namespace ostrel
