// What a run may have lost because it was told to.
//
// Some steps of the optimizer give a function up or change it under certain options or inputs. That
// is a difference like any other; where the files look like one of these steps, the user is told
// which. Nothing here takes part in a verdict.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "run/options.h"
#include "verify/compare/finding.h"
#include "verify/model/correspondence.h"

namespace ostrel::verify {

/// A step: the heading of its paragraph in docs/decisions.md, and what it does.
struct Loss {
  std::string_view id;
  std::string_view sentence;
  bool (*fits)(const Correspondence&, const Options&, const Finding&);
};

std::span<const Loss> losses();

/// Gives each difference of a Signal the first loss that fits it. One without any that reads a
/// Signal with a loss shares it.
void nameLosses(const Correspondence& correspondence, const Options& options,
                std::vector<Finding>& findings);

}  // namespace ostrel::verify
