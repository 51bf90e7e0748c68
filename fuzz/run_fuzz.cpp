// A whole run on arbitrary bytes as the input file, behind the bytes that choose the options.
#include "support/checked_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < optionBytes) return 0;
  runChecked(std::span<const std::uint8_t, optionBytes>(data, optionBytes),
             std::string(data + optionBytes, data + size));
  return 0;
}
