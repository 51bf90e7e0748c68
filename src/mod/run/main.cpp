#include <string>
#include <vector>

#include "run/out_of_memory.h"
#include "run/run.h"
#include "run/system.h"

int main(int argc, char* argv[]) {
  ostrel::guardStreams();
  ostrel::installOutOfMemory();
  return ostrel::runProgram(std::vector<std::string>(argv, argv + argc));
}
