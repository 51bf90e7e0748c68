// Proof that a written file means what was to be written.
#pragma once

#include <cstdint>

#include "convert/model/netlist.h"
#include "convert/model/report.h"

namespace ostrel::convert {

/// The most conflicts of the solver that a check may cost: minutes.
inline constexpr std::int64_t checkEffort = 1'000'000;

/// Compares every port bit and register of the source with that of the same name in the file read
/// again. Where the source doesn't care the file may say anything. A difference, with the values
/// that show it, or a question that the effort does not suffice for is a problem.
void checkEquivalence(const Netlist& source, const Netlist& written, std::int64_t effort,
                      Report& report);

}  // namespace ostrel::convert
