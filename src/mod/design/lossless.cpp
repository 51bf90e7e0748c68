// The two ends of a run that loses nothing; what stands between asks logic/lossless.h.
#include "logic/lossless.h"

#include "design/passes.h"
#include "run/options.h"

namespace ostrel {

void completeFunctions(Design& design) {
  if (!options().lossless) return;
  for (const auto& signal : design.signals()) complete(*signal, design.type);
  design.listLogic();
  computeSupports(design);
}

Status settleFunctions(Design& design) {
  if (!options().lossless) return Status::Ok;
  Status status = Status::Ok;
  for (Signal* signal : design.logic()) {
    if (settle(*signal) != Status::Ok) status = Status::Failed;
  }
  return status;
}

}  // namespace ostrel
