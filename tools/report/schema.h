// Whether a JSON value is what a schema says.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace ostrel::report {

/// The place and the kind of the first fault, such as "/signals/3/name: must be string"; empty if
/// there is none. Of JSON Schema it knows the words that docs/report-schema.json uses.
std::string faultOf(const nlohmann::json& value, const nlohmann::json& schema);

/// Likewise whether numbers of rows, columns and messages name some that are there.
std::string danglingIn(const nlohmann::json& report);

}  // namespace ostrel::report
