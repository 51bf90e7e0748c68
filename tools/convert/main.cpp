#include <iostream>
#include <new>

#include "convert/command.h"
#include "run/system.h"

int main(int argc, char* argv[]) {
  ostrel::guardStreams();
  try {
    return ostrel::convert::convertMain({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cin,
                                        std::cout, std::cerr);
  } catch (const std::bad_alloc&) {
    std::cerr << "ostrel-convert: out of memory\n";
    return 2;
  }
}
