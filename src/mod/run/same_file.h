// Whether two names mean one file.
#pragma once

#include <string>

namespace ostrel {

/// True if the names are equal, or if both files exist and are one, through whatever links.
bool isSameFile(const std::string& a, const std::string& b);

}  // namespace ostrel
