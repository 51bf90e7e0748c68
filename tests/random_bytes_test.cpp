// The fuzz targets that make something of any bytes, on the same random bytes each time: lists of
// cubes, and well-formed designs whose runs the verifier judges. A breach ends the process.
#include <cstdint>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <vector>

#include "run/options.h"

extern "C" int minimizer_fuzz(const std::uint8_t* data, std::size_t size);
extern "C" int design_fuzz(const std::uint8_t* data, std::size_t size);

namespace ostrel {
namespace {

void feed(int (*target)(const std::uint8_t*, std::size_t), unsigned seed, int rounds) {
  const Options before = options();
  std::mt19937 random(seed);
  for (int round = 0; round < rounds; ++round) {
    std::vector<std::uint8_t> bytes(8 + random() % 200);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    EXPECT_EQ(target(bytes.data(), bytes.size()), 0);
  }
  setOptions(before);
  std::cerr.clear();  // muted for the messages of the runs
}

TEST(RandomBytes, KeepTheFunctionsOfLists) {
  feed(minimizer_fuzz, 26, 1000);
}

TEST(RandomBytes, KeepTheFunctionsOfDesigns) {
  feed(design_fuzz, 27, 200);
}

}  // namespace
}  // namespace ostrel
