// What the reader takes in silence.
#include "verify/check/strict_reader.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/verdicts.h"

namespace ostrel::verify {
namespace {

TEST(Check, SaysWhatTheReaderTakesInSilence) {
  const std::string good = plaText("A B Y||f|A B|Y|11 1,0- 1");
  const struct {
    const char *from, *to;
    std::size_t line;
    const char* text;
  } faults[] = {{"PINS 3", "PINS 4", 1, "PINS says 4, and there are 3 names"},
                {"A B Y", "A B Y y", 1, "y is Y of line 1 in another spelling"},
                {"PINS", "PINSS", 1, "unknown property PINSS"},
                {".type f", ".type g", 2, "unknown type, read as f"},
                {".i 2", ".i 3", 5, ".i says 3, and there are 2 names"},
                {".o 1", ".o 0x1", 4, "no decimal number behind .o"},
                {".ilb A B", ".ilb A C", 5, "C is not declared"},
                {".ob Y", ".ob Y.DD", 6, "unknown extension in Y.DD, read as none"},
                {".ob Y", ".obb Y", 6, "unknown directive .obb"},
                {".p 2", ".p 3", 7, ".p says 3, and there are 2 rows"},
                {"11 1", "11", 8, "a row of 2 characters, and .i and .o make 3"},
                {"11 1", "111 1", 8, "a row of 4 characters, and .i and .o make 3"},
                {"11 1", "1\n1 1", 9, "a row of 2 characters, and .i and .o make 3"},
                {"11 1", "1x 1", 8, "the character x in a row"},
                {"11 1", "1- 1", 5, "no row uses B"},
                {"11 1", "stray", 8, "text that is passed over: stray"},
                {".end", ".end\n11 1", 11, "behind .end, which ends nothing: it is read"},
                {".end", "", 10, "the file is cut off: .end is missing"}};
  EXPECT_TRUE(readStrictly(good).empty());
  for (const auto& fault : faults) {
    const std::vector<Complaint> seen = readStrictly(replaced(good, fault.from, fault.to));
    EXPECT_TRUE(std::ranges::any_of(
        seen, [&](const Complaint& c) { return c.line == fault.line && c.text == fault.text; }))
        << fault.to << ": " << (seen.empty() ? "none" : seen[0].text);
  }
}

}  // namespace
}  // namespace ostrel::verify
