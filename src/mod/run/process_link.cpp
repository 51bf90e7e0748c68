// The stand-in for a host's process link: counts the ticks in one line on a terminal's standard
// error, and is silent where nobody watches.
#include "run/process_link.h"

#include <cstdio>

#include "run/system.h"

int WHProcRegister() {
  return 0;
}

int WHProcSetExitCode(int /*process*/, int /*exitCode*/) {
  return 0;
}

int WHOutputHeartMsg() {
  static const bool watched = ostrel::isErrorWatched();
  static long ticks = 0;
  ++ticks;
  if (watched) std::fprintf(stderr, "\rworking: %ld\r\033[K", ticks);
  return 0;
}
