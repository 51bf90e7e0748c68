// From the output columns of a file to the slots of a Signal.
#pragma once

#include <optional>

#include "equation/equation.h"
#include "fil/pla_file.h"
#include "fil/status.h"
#include "logic/signal.h"

namespace ostrel {

/// Puts output column `column` of the file, whose rows gave `sets`, into the slot that its
/// extension selects, and settles the register type. Failed if the column's register type conflicts
/// with the present one, Fatal if it is not supported or the slot is filled; each with a message.
Status readColumn(Signal& signal, const PlaFile& file, int column, ColumnSets sets);

/// The register type after a column with the extension, none for a conflict with the present one.
std::optional<RegisterType> typeOfColumn(Extension extension, RegisterType present);

/// Fatal, with a message, if there is a clock or an output enable and no function to control. An
/// output enable that is constantly 0 is dropped in that case.
Status checkLogic(Signal& signal);

}  // namespace ostrel
