// Characters and words.
#include "fil/text.h"

#include <cctype>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(Text, KnowsTheSpacesOfTheCLocale) {
  for (int c = 0; c < 128; ++c) {
    EXPECT_EQ(isSpace(static_cast<char>(c)), std::isspace(c) != 0) << c;
  }
}

}  // namespace
}  // namespace ostrel
