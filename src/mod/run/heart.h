// The progress tick of long loops.
#pragma once

#include <string_view>

namespace ostrel {

/// A tick; what it returns is not used.
using HeartBeat = int (*)();

/// Called from inside what can take long. It does nothing unless a monitoring host
/// is linked or the step is shown on a terminal.
void heartMsg();

/// The step of the run that is under way, empty between runs, for whoever shows it at the ticks;
/// the text has to stay.
void setCurrentStep(std::string_view name);
std::string_view currentStep();

/// Sets what heartMsg calls; null stops the ticks.
void setHeartBeat(HeartBeat beat);

}  // namespace ostrel
