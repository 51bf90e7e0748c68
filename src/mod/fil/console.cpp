#include "fil/console.h"

#include <iostream>

namespace ostrel {

Console standardConsole() {
  return {std::cout, std::cerr};
}

}  // namespace ostrel
