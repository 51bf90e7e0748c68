// A whole run on a design made from bytes, behind the bytes that choose the options.
#include <array>

#include "support/checked_run.h"
#include "support/make_design.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes({data, size});
  std::array<std::uint8_t, optionBytes> options{};
  for (auto& byte : options) byte = static_cast<std::uint8_t>(bytes.next());
  runChecked(options, makeDesign(bytes));
  return 0;
}
