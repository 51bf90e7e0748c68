// The present time as the log and the DATE line show it.
#pragma once

#include <ctime>
#include <string>

namespace ostrel {

/// Local time in the form "Wed Mar 17 16:36:12 1999", without a newline.
std::string timeText(std::time_t time);

}  // namespace ostrel
