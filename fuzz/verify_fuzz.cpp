// Feeds pairs of files, with options of a run in front, to the readers and the verifier, with
// little effort. No function of a file that is compared with itself may differ.
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "fil/pla_reader.h"
#include "run/command_line.h"
#include "verify/check/strict_reader.h"
#include "verify/compare/judge.h"

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
  std::istringstream options("ostrel -input - " + take(rest));
  std::vector<std::string> words{std::istream_iterator<std::string>(options), {}};
  std::erase_if(words, [](const std::string& word) { return word.starts_with('@'); });
  PlaFile input;
  PlaFile output;
  const std::string text = take(rest);
  verify::readStrictly(text);
  if (!read(text, input)) return 0;
  for (const verify::Finding& f : verify::verify(input, input, {}, {effort, {}}).findings) {
    if (f.outcome == verify::Outcome::Different && f.kind != verify::Kind::Form) std::abort();
  }
  if (!read(take(rest), output)) return 0;
  verify::verify(input, output, parseCommandLine(words).options, {effort, {}});
  return 0;
}
