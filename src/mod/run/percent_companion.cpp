#include "run/percent_companion.h"

#include <fstream>
#include <string_view>

#include "fil/text.h"
#include "run/log.h"
#include "run/same_file.h"

namespace ostrel {

void copyWithoutPercent(std::istream& from, std::ostream& to) {
  bool insideBlock = false;
  std::string word;  // one character more than the longest word that means something
  constexpr std::size_t kept = 4;
  for (char c = 0; from.get(c) && c != '\0';) {
    to.put(insideBlock && c == '%' ? '-' : c);
    if (isSpace(c)) {
      if (word == ".ob") insideBlock = true;
      if (word == ".p") insideBlock = false;
      word.clear();
    } else if (word.size() < kept) {
      word += c;
    }
  }
}

void writePercentCompanion(const std::string& inputName, const std::string& outputName,
                           const std::string& runInput) {
  if (!isSameFile(inputName, outputName) && !isSameFile(runInput, outputName)) {
    std::ifstream from(inputName);
    std::ofstream to(outputName, std::ios::trunc);
    if (from.is_open() && to.is_open()) {
      copyWithoutPercent(from, to);
      return;
    }
  }
  logMessage(toErrorAndLog, "<Warning> %s: failed to write %s\n", toolTag, outputName.c_str());
}

}  // namespace ostrel
