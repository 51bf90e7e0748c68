#include "run/option_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>

#include "fil/text.h"

namespace ostrel {
namespace {

// Option files that name each other multiply with every pass. Real ones have a few hundred
// characters; past this many the rest of a file isn't read.
constexpr std::size_t maxExpandedLength = 1 << 20;

bool isOptionFile(const std::string& word) {
  return word.starts_with('@');
}

/// Appends the text of a file; line ends become word ends where the text is split. False if there
/// is no such file.
bool appendFile(const std::string& name, std::string& buffer) {
  std::ifstream file(name, std::ios::binary);
  std::array<char, 4096> part{};
  while (file && buffer.size() < maxExpandedLength) {
    file.read(part.data(), part.size());
    buffer.append(part.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.is_open();
}

}  // namespace

int expandOptionFiles(std::vector<std::string>& words, int maxLevel, OptionFiles& files) {
  int level = 0;
  while (level <= maxLevel && words.size() > 1 &&
         std::any_of(words.begin() + 1, words.end(), isOptionFile)) {
    std::string buffer = words.front() + " ";
    for (std::size_t i = 1; i < words.size(); ++i) {
      if (!isOptionFile(words[i])) {
        buffer += words[i];
      } else if (words[i].size() > 1) {
        const std::string name = words[i].substr(1);
        (appendFile(name, buffer) ? files.opened : files.missing).insert(name);
      }
      buffer += ' ';
    }
    words = splitWords(buffer);
    ++level;
  }
  return level;
}

}  // namespace ostrel
