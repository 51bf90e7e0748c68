// One conversion, from text to text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "convert/model/report.h"
#include "convert/structure/fold.h"

namespace ostrel::convert {

enum class Format : unsigned char { Json, Pla, Tt2, Verilog, Blif };

/// The format of a word such as "json" or of a file's suffix; none for any other.
std::optional<Format> formatOf(std::string_view word);
bool canRead(Format format);
bool canWrite(Format format);

struct Conversion {
  Format from = Format::Tt2;
  Format to = Format::Tt2;
  Folding folding;
  bool check = true;
};

/// The text of the target. It means nothing unless the report is clean. `file` names the input.
std::string convert(std::string_view text, const std::string& file, const Conversion& conversion,
                    Report& report);

}  // namespace ostrel::convert
