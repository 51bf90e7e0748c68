#include <exception>
#include <iostream>
#include <new>

#include "report/command.h"
#include "run/system.h"

int main(int argc, char* argv[]) {
  ostrel::guardStreams();
  try {
    return ostrel::report::reportMain({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout,
                                      std::cerr);
  } catch (const std::bad_alloc&) {
    std::cerr << "ostrel-report: out of memory\n";
  } catch (const std::exception& fault) {
    std::cerr << "ostrel-report: " << fault.what() << "\n";
  }
  return 2;
}
