#include "run/out_of_memory.h"

#include <cstdlib>
#include <iostream>
#include <new>

#include "fil/console.h"
#include "run/log.h"
#include "run/output_file.h"
#include "run/system.h"

namespace ostrel {
namespace {

// Nothing in this process gives memory back in the meantime, so a try is for other processes to
// end; a script should not wait long for that.
constexpr int maxTries = 4;

void outOfMemory() {
  static int tries = 0;
  constexpr const char* message = "<ERROR> K52700: failed to allocate memory\n";
  OrderedConsole::passOnLast();
  if (!logText(toErrorAndLog, message)) writeToStandardError(message);
  if (++tries < maxTries) return;
  OutputFile::abandon();
  closeLog();
  std::cout.flush();
  std::_Exit(2);
}

}  // namespace

void installOutOfMemory() {
  std::set_new_handler(outOfMemory);
}

}  // namespace ostrel
