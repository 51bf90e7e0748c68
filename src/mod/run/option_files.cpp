#include "run/option_files.h"

#include <algorithm>
#include <fstream>
#include <ios>

namespace ostrel {
namespace {

// Option files that name each other multiply with every pass. Real ones have a few hundred
// characters; past this many the rest of a file isn't read.
constexpr std::size_t maxExpandedLength = 1 << 20;

bool isOptionFile(const std::string& word) {
  return word.starts_with('@');
}

/// Appends the text of a file; a line end becomes a blank where the text is split.
void appendFile(const std::string& name, std::string& buffer) {
  std::ifstream file(name);
  if (!file || buffer.size() >= maxExpandedLength) return;
  std::string text(maxExpandedLength - buffer.size(), '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  buffer.append(text, 0, static_cast<std::size_t>(file.gcount()));
}

std::vector<std::string> splitWords(const std::string& text) {
  constexpr const char* separators = " \t\r\n";
  std::vector<std::string> words;
  for (std::size_t at = text.find_first_not_of(separators); at != std::string::npos;
       at = text.find_first_not_of(separators, at)) {
    const std::size_t stop = std::min(text.find_first_of(separators, at), text.size());
    words.push_back(text.substr(at, stop - at));
    at = stop;
  }
  return words;
}

}  // namespace

int expandOptionFiles(std::vector<std::string>& words, int maxLevel) {
  int level = 0;
  while (level <= maxLevel && words.size() > 1 &&
         std::any_of(words.begin() + 1, words.end(), isOptionFile)) {
    std::string buffer = words.front() + " ";
    for (std::size_t i = 1; i < words.size(); ++i) {
      if (!isOptionFile(words[i])) {
        buffer += words[i];
      } else if (words[i].size() > 1) {
        appendFile(words[i].substr(1), buffer);
      }
      buffer += ' ';
    }
    words = splitWords(buffer);
    ++level;
  }
  return level;
}

}  // namespace ostrel
