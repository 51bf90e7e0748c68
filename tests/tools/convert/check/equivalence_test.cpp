// The proof finds planted faults.
#include "convert/check/equivalence.h"

#include <gtest/gtest.h>

#include "convert/read/tt2_reader.h"
#include "support/netlists.h"

namespace ostrel::convert {
namespace {

// In every function of every net: a literal turned, the whole inverted.
TEST(Convert, ProofFindsPlantedFaults) {
  Report report;
  const Netlist source = readTt2(designs[0], "in", report);
  ASSERT_EQ(complaints(report), "");
  EXPECT_EQ(differences(source, source), "");
  int faults = 0;
  for (std::size_t net = 0; net < source.nets.size(); ++net) {
    std::size_t count = 0;
    forEachFunctionOf(source.nets[net], [&](const Function&, std::string_view) { ++count; });
    for (std::size_t wanted = 0; wanted < count; ++wanted) {
      for (const bool turn : {false, true}) {
        Netlist faulty = source;
        std::size_t at = 0;
        forEachFunctionOf(faulty.nets[net], [&](Function& function, std::string_view) {
          if (at++ != wanted) return;
          Sum& sum = function.operands.back();
          std::size_t column = 0;
          while (turn && sum.on.back().at(column) == '-') ++column;
          if (turn) sum.on.back().invert(column);
          if (!turn) sum.inverted = !sum.inverted;
        });
        EXPECT_NE(differences(source, faulty), "") << source.nets[net].name << wanted << turn;
        ++faults;
      }
    }
  }
  EXPECT_GT(faults, 30);
  Netlist lost = source;
  lost.ports.pop_back();
  EXPECT_EQ(differences(source, lost), "Z: the file lost this port\n");
}

}  // namespace
}  // namespace ostrel::convert
