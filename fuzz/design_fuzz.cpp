// A whole run on a design made from bytes, behind the bytes that choose the options.
#include <array>

#include "support/checked_run.h"
#include "support/make_design.h"

namespace {

constexpr std::uint8_t keepsFunctions = 0b1101'1011;  // without -ff_inv yes and -reduce none

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes({data, size});
  std::array<std::uint8_t, optionBytes> options{};
  for (auto& byte : options) byte = static_cast<std::uint8_t>(bytes.next());
  // Without the options that make a run give functions up: whatever differs here is a fault.
  options[0] &= keepsFunctions;
  options[3] = 0;
  runChecked(options, makeDesign(bytes));
  return 0;
}
