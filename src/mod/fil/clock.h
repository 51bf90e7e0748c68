// The present time as the log and the DATE line show it.
#pragma once

#include <ctime>
#include <string>

namespace ostrel {

/// Local time in the form "Wed Mar 17 16:36:12 1999", without a newline.
std::string timeText(std::time_t time);

/// The date of a file that is written now: the present local time, or the one that the environment
/// variable SOURCE_DATE_EPOCH fixes for builds that have to be repeated, in universal time.
std::string fileDate();

}  // namespace ostrel
