// The writer of PLA files.
#pragma once

#include <iosfwd>
#include <string_view>

#include "fil/pla_file.h"

namespace ostrel {

/// Writes the file. `date` stands in the DATE line if the file has no such property. No write is
/// tested: the state of the stream is the caller's to look at.
void writePla(const PlaFile& file, std::ostream& stream, std::string_view date);

}  // namespace ostrel
