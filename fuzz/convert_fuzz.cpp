// Feeds texts to the converter: the first two bytes choose the formats, the rest is the file. What
// is written must be what was read, so a difference that the proof finds is a fault.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "convert/convert.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrel::convert;
  constexpr std::array from = {Format::Json, Format::Pla, Format::Tt2};
  constexpr std::array to = {Format::Tt2, Format::Verilog, Format::Blif, Format::Pla};
  constexpr std::size_t head = 2;
  if (size < head) return 0;
  Conversion conversion;
  conversion.from = from[data[0] % from.size()];
  conversion.to = to[data[1] % to.size()];
  conversion.folding.flat = (data[1] & 0x80U) != 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + head, size - head);
  Report report;
  convert(text, "fuzz", conversion, report);
  for (const std::string& problem : report.problems) {
    const bool isWrong = problem.find("differs from the source") != std::string::npos ||
                         problem.find("to be written is wrong") != std::string::npos ||
                         problem.find("the file lost") != std::string::npos;
    if (isWrong) std::abort();
  }
  return 0;
}
