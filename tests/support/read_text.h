// A PLA file from a text.
#pragma once

#include <string>

#include "fil/pla_reader.h"

struct Reading {
  ostrel::PlaFile file;
  ostrel::Status status;
  std::string out;  ///< what the reader said
  std::string err;
};

Reading readText(const std::string& text);
