// Whether two names mean one file.
#pragma once

#include <string>

namespace ostrel {

/// True if the names lead to one file, through whatever links, or would once it is made. An empty
/// name leads to none.
bool isSameFile(const std::string& a, const std::string& b);

}  // namespace ostrel
