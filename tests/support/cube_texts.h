// Cubes as texts, and functions of few columns by their points.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "minimizer/cube_list.h"

namespace ostrel {

using Texts = std::vector<std::string>;

inline CubeList cubesOf(const Texts& texts) {
  return CubeList(texts.begin(), texts.end());
}

inline Texts textsOf(const CubeList& cubes, std::size_t width) {
  Texts texts;
  for (const Cube& cube : cubes) texts.push_back(cube.text(width));
  return texts;
}

inline Texts randomTexts(std::mt19937& random, std::size_t count, std::size_t width) {
  const auto dashes = random() % 80;  // per cent
  Texts texts(count, std::string(width, '-'));
  for (std::string& text : texts) {
    for (char& c : text) {
      if (random() % 100 >= dashes) c = "01"[random() % 2];
    }
  }
  return texts;
}

inline std::size_t widthOf(const Texts& texts) {
  return texts.empty() ? 2 : texts[0].size();
}

// How many cubes hold each point of up to 256.
inline std::vector<unsigned> countPoints(const Texts& texts, std::size_t width) {
  std::vector<unsigned> counts(std::size_t{1} << width);
  for (unsigned point = 0; point < counts.size(); ++point) {
    for (const std::string& text : texts) {
      bool holds = true;
      for (std::size_t c = 0; c < width; ++c) holds &= text[c] != "10"[(point >> c) & 1U];
      counts[point] += holds ? 1U : 0U;
    }
  }
  return counts;
}

}  // namespace ostrel
