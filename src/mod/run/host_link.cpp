#include "run/host_link.h"

#include "run/heart.h"
#include "run/process_link.h"

namespace ostrel {

void linkHost(int exitCode) {
  const int process = WHProcRegister();
  WHProcSetExitCode(process, exitCode);
  setHeartBeat(WHOutputHeartMsg);
}

}  // namespace ostrel
