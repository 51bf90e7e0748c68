#include "run/percent_companion.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "fil/text.h"
#include "run/log.h"
#include "run/output_file.h"
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

namespace {

bool copyCompanion(const std::string& inputName, const std::string& outputName) {
  OutputFile to;
  return to.open(outputName) && to.write([&inputName](std::ostream& stream) {
    std::ifstream from;
    std::error_code ignored;
    // What went into a FIFO is with its reader, and to wait for more would be to wait for ever.
    if (!std::filesystem::is_fifo(inputName, ignored)) from.open(inputName, std::ios::binary);
    copyWithoutPercent(from, stream);
    if (!from.is_open() || from.bad()) stream.setstate(std::ios::badbit);
  });
}

}  // namespace

void writePercentCompanion(const std::string& inputName, const std::string& outputName,
                           std::span<const std::string> sources) {
  const auto isCompanion = [&](const std::string& name) { return isSameFile(name, outputName); };
  const bool isTaken = isCompanion(inputName) || std::ranges::any_of(sources, isCompanion);
  if (!isTaken && copyCompanion(inputName, outputName)) return;
  message(toErrorAndLog, {"<Warning> ", toolTag, ": failed to write ", outputName, "\n"});
}

}  // namespace ostrel
