#include <iostream>

#include "verify/command.h"

int main(int argc, char* argv[]) {
  return ostrel::verify::verifyMain({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
}
