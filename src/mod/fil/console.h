// The console streams of the file reader, whose messages go past the log.
#pragma once

#include <iosfwd>

namespace ostrel {

/// Where a reader writes its messages; the streams outlive the reader.
struct Console {
  std::ostream& out;
  std::ostream& err;
};

/// Standard output and standard error.
Console standardConsole();

}  // namespace ostrel
