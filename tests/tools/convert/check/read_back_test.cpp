// The reading of what was written.
#include "convert/check/read_back.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

// What a reader back does not know is a fault of the writer, so nothing may be passed over.
TEST(Convert, WrittenTextIsReadWhole) {
  for (const Format format : {Format::Verilog, Format::Blif}) {
    const std::string text = converted(designs[0], Format::Tt2, format);
    const auto isRead = [&](const std::string& written) {
      Report report;
      if (format == Format::Verilog) readBackVerilog(written, report);
      if (format == Format::Blif) readBackBlif(written, report);
      return report.isClean();
    };
    ASSERT_TRUE(isRead(text));
    for (std::size_t line = text.find('\n') + 1; line < text.size();
         line = text.find('\n', line) + 1) {
      EXPECT_FALSE(isRead(text.substr(0, line) + "something else;\n" + text.substr(line))) << line;
      EXPECT_FALSE(isRead(text.substr(0, line))) << line;
    }
  }
}

}  // namespace
}  // namespace ostrel::convert
