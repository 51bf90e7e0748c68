// A design built from the text of a PLA file, under options of its own.
#pragma once

#include <string>
#include <vector>

#include "design/passes.h"
#include "run/options.h"
#include "support/read_text.h"

namespace ostrel {

using Terms = std::vector<std::string>;

struct Built {
  explicit Built(const std::string& text, const Options& values = {})
      : reading(readText(text)), design(reading.file) {
    setOptions(values);
    status = build(design);
  }
  ~Built() { setOptions({}); }
  Built(const Built&) = delete;
  Built& operator=(const Built&) = delete;

  Signal& signal(const std::string& name) { return *design.find(name); }

  Terms terms(const std::string& name, Slot slot) {
    Terms texts;
    for (const Term term : signal(name).slot(slot)->onSet()) {
      texts.push_back(design.terms().cube(term).text(design.terms().width()));
    }
    return texts;
  }

  Reading reading;
  Design design;
  Status status = Status::Ok;
};

}  // namespace ostrel
