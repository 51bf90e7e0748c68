// The size and the shape of a design at one moment: literals, who reads whom, depth.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "report/history.h"

namespace ostrel {

struct MeasuredColumn {
  std::string name;               ///< as the file has it
  std::vector<std::size_t> rows;  ///< of the file, the first is 1; in the order of its terms
};

struct MeasuredFunction {
  FunctionState state;
  std::size_t literals = 0;
  std::size_t support = 0;         ///< columns that it reads
  std::vector<std::string> reads;  ///< of those the Signals with functions of their own, each once
  std::vector<MeasuredColumn> columns;
  /// Functions on the longest way from a pin or a register, this one counted; none behind a loop.
  std::optional<std::size_t> depth;
};

struct MeasuredSignal {
  std::string name;
  bool isNode = false;
  std::array<std::optional<MeasuredFunction>, roleCount> functions;  ///< those that are written
};

struct Measure {
  std::vector<MeasuredSignal> signals;  ///< in the order of creation
  std::vector<std::string> inputs;      ///< the input columns
  /// The rows of the file: a literal is the number of its column, the first is 1, and negative for
  /// a 0.
  std::vector<std::vector<long>> rows;
};

Measure measure(const Design& design);

/// Finds a Signal's function in a measure that outlives the index.
class MeasureIndex {
 public:
  explicit MeasureIndex(const Measure& measure);

  /// Null if there is none that is written.
  const MeasuredFunction* find(std::string_view signal, std::size_t role) const;

 private:
  std::unordered_map<std::string_view, const MeasuredSignal*> signals_;
};

struct Totals {
  std::size_t pins = 0;
  std::size_t nodes = 0;
  std::size_t functions = 0;
  std::size_t pairs = 0;
  std::size_t terms = 0;  ///< over all functions, each on its own
  std::size_t rows = 0;   ///< terms that are equal counted once
  std::size_t literals = 0;
  std::size_t widest = 0;  ///< most terms of a function
  std::size_t depth = 0;   ///< of the deepest function that isn't behind a loop
};
Totals totalsOf(const Measure& measure);

}  // namespace ostrel
