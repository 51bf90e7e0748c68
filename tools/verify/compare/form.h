// What is compared without any proof: the form of OUTPUT.
#pragma once

#include <vector>

#include "run/options.h"
#include "verify/compare/finding.h"
#include "verify/model/correspondence.h"

namespace ostrel::verify {

/// What is wrong with OUTPUT as a list of Signals and columns: lost, new and changed Signals,
/// columns that a run doesn't write, more terms than the options allow.
std::vector<Finding> formDifferences(const Correspondence& correspondence, const Options& options);

/// What differs in the lines around the table: properties, the number of rows.
std::vector<Finding> headerDifferences(const PlaFile& input, const PlaFile& output,
                                       const Options& options);

}  // namespace ostrel::verify
