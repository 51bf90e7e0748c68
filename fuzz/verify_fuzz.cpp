// Feeds pairs of files, with options of a run in front, to the reader and the verifier, with little
// effort. A file that is compared with itself must never differ.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "fil/pla_reader.h"
#include "verify/judge.h"

namespace {

using namespace ostrel;

// The input is three texts with a byte 0 between two: options, INPUT, OUTPUT.
std::string take(std::string_view& rest) {
  const std::size_t end = rest.find('\0');
  const std::string part(rest.substr(0, end));
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return part;
}

bool read(const std::string& text, PlaFile& file) {
  std::istringstream stream(text);
  std::ostringstream lines;
  return readPla(stream, Console{lines, lines}, file) == Status::Ok;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int effort = 50;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::istringstream options(take(rest));
  std::vector<std::string> words;
  for (std::string word; options >> word;) words.push_back(word);
  PlaFile input;
  PlaFile output;
  if (!read(take(rest), input)) return 0;
  for (const verify::Finding& f : verify::verify(input, input, {}, effort).findings) {
    if (f.outcome == verify::Outcome::Different && input.termCapacity == input.termCount)
      std::abort();
  }
  if (!read(take(rest), output)) return 0;
  verify::verify(input, output, verify::readRunOptions(words), effort);
  return 0;
}
