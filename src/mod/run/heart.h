// The progress tick of long loops.
#pragma once

namespace ostrel {

/// A tick; what it returns is not used.
using HeartBeat = int (*)();

/// Called from inside what can take long. It does nothing unless a monitoring host is linked.
void heartMsg();

/// Sets what heartMsg calls; null stops the ticks.
void setHeartBeat(HeartBeat beat);

}  // namespace ostrel
