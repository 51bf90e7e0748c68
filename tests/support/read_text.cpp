#include "support/read_text.h"

#include <sstream>

Reading readText(const std::string& text) {
  std::istringstream stream(text);
  std::ostringstream out;
  std::ostringstream err;
  Reading reading;
  reading.status = ostrel::readPla(stream, {out, err}, reading.file);
  reading.out = out.str();
  reading.err = err.str();
  return reading;
}
