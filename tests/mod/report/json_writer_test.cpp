// Texts that JSON can hold.
#include "report/json_writer.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(JsonWriter, QuotesWhatNamesCanHold) {
  EXPECT_EQ(quotedJson("a\"\\\n\x7f"), R"("a\"\\\u000a\u007f")");
  EXPECT_EQ(quotedJson("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
            "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\"");
  EXPECT_EQ(quotedJson("\xE9\xC3"), R"("\u00e9\u00c3")");  // no UTF-8, cut off
  EXPECT_EQ(quotedJson("\xED\xA0\x80\xC0\xAF"), R"("\u00ed\u00a0\u0080\u00c0\u00af")");
}

}  // namespace
}  // namespace ostrel
