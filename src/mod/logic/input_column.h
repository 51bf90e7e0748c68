// One input column of the design.
#pragma once

#include "fil/pla_name.h"
#include "logic/signal.h"

namespace ostrel {

struct InputColumn {
  Signal* signal = nullptr;  ///< what the column reads; not owned
  Extension extension = Extension::None;

  /// The column's record in the list of inputs.
  PlaName exportName() const {
    PlaName record;
    record.base = signal->name;
    record.extension = extension;
    return record;
  }
};

}  // namespace ostrel
