// The second output of a run with -percent.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace ostrel {

/// Copies a PLA file up to its end or a NUL character, with each '%' of an .ob block replaced by
/// '-'. The block reaches from the word ".ob" to the next word ".p", wherever they stand.
void copyWithoutPercent(std::istream& from, std::ostream& to);

/// Writes the companion `outputName` of the run's output `inputName`, whose name is empty if the
/// run has none. If the names mean one file, or if the companion would replace one of the files
/// `sources` that the run was made from, a warning names the companion and nothing is written; so
/// it is if a file can't be opened, read or written, but then the companion is left empty.
void writePercentCompanion(const std::string& inputName, const std::string& outputName,
                           std::span<const std::string> sources);

}  // namespace ostrel
