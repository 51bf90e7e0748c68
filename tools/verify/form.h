// What is judged without any proof: the form of OUTPUT.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "verify/excuses.h"

namespace ostrel::verify {

/// Logic columns with more terms than equation splitting promises. Each text names its Signal in
/// front of a colon.
std::vector<std::string> tooWide(const Pairing& pairing, const RunOptions& options,
                                 const Excuses& excuses);

/// The columns that a function reads, or the value of a Signal for Slot::Logic; in order.
std::vector<std::size_t> columnsOf(const Network& network, const Signal& signal, Slot slot);

}  // namespace ostrel::verify
