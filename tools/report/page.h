// The page: a text that needs nothing else.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ostrel::report {

/// Says what is wrong with the text of a report; empty if it is one.
std::string faultInReport(std::string_view text);

/// The page of one or two reports, whose texts are without a fault.
std::string makePage(std::span<const std::string> reports);

}  // namespace ostrel::report
