// Signals over columns of their own, whose Equations are given as texts.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "logic/columns.h"
#include "run/options.h"

namespace ostrel {

/// A Signal over columns of its own, whose Equations are given as texts.
class SignalMaker : public testing::Test {
 protected:
  ~SignalMaker() override { setOptions({}); }

  Signal& make(RegisterType type = RegisterType::None, Polarity polarity = Polarity::None) {
    PlaName record;
    record.base = "S";
    record.registerType = type;
    record.polarity = polarity;
    signals_.push_back(std::make_unique<Signal>(terms_, record, false));
    return *signals_.back();
  }

  Status add(Signal& signal, const std::string& word, const std::vector<std::string>& on = {"1---"},
             const std::vector<std::string>& off = {}) {
    const PlaName name = PlaName::parse("S" + word, standardConsole());
    PlaFile file;
    file.type = PlaType::fr;
    file.table(NameKind::Output).records = {name};
    ColumnSets sets;
    for (const std::string& text : on) sets.on.push_back(terms_.term(Cube(text)));
    for (const std::string& text : off) sets.off.push_back(terms_.term(Cube(text)));
    return readColumn(signal, file, 0, sets);
  }

  TermTable terms_{4};
  std::vector<std::unique_ptr<Signal>> signals_;
};

}  // namespace ostrel
