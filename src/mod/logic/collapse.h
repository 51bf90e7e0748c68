// A Signal that only repeats another one, and what it takes over from it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "logic/signal.h"

namespace ostrel {

/// The column that SlotLogic repeats in the same sense, if that is all it does. `columns` is the
/// design's column table, `terms` its table of terms.
std::optional<std::size_t> singleLiteral(const Signal& signal, std::span<const InputColumn> columns,
                                         const TermTable& terms);

/// The size of the function, by the smaller sets, for the decision to copy it into a reader.
int bestTermCount(const Signal& signal);

/// Gives the reader the logic of the source, of which it was a plain copy.
void copyLogic(const Signal& source, Signal& reader);

}  // namespace ostrel
