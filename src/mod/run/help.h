// The texts that are printed in place of a run.
#pragma once

#include <iosfwd>
#include <string_view>

namespace ostrel {

inline constexpr std::string_view title = "ostrel PLA optimizer ";
inline constexpr std::string_view release = " R1.1.2 ";
inline constexpr std::string_view buildDate = "Mar 17 1999";
inline constexpr std::string_view notice = "Logic that fits the device, proven to mean the same.";

/// Where to look, in the place of the notice, for a run without words that it could use.
inline constexpr std::string_view whereToLook = "options: ostrel --help; manual: man ostrel";

/// The banner's two lines; the release and the notice stand in the full one only.
void printBanner(std::ostream& stream, bool isFull);

/// The usage text.
void printHelp(std::ostream& stream, std::string_view programName);

}  // namespace ostrel
