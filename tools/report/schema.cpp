// Idea. Value and schema are walked side by side. The way goes as deep as the schema, which leads
// back into itself nowhere, however deep the value is.
//
// Cost. One look at each value.
#include "report/schema.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>

namespace ostrel::report {
namespace {

using nlohmann::json;

/// Whether the value has the JSON type of a name.
bool hasType(const json& value, std::string_view type) {
  return type == "integer" ? value.is_number_integer() : type == value.type_name();
}

std::string at(const std::string& place) {
  return place.empty() ? "it " : place + ": ";
}

class Check {
 public:
  explicit Check(const json& root) : root_(root) {}

  std::string fault(const json& value, const json& schema, const std::string& place) const {
    if (schema.contains("$ref")) return fault(value, target(schema["$ref"]), place);
    std::string found = ownFault(value, schema, place);
    if (found.empty() && value.is_object()) found = memberFault(value, schema, place);
    if (found.empty() && value.is_array() && schema.contains("items")) {
      for (std::size_t i = 0; i < value.size() && found.empty(); ++i) {
        found = fault(value[i], schema["items"], place + "/" + std::to_string(i));
      }
    }
    return found;
  }

 private:
  const json& target(const json& reference) const {
    return root_.at(json::json_pointer(reference.get<std::string>().substr(1)));
  }

  static std::string ownFault(const json& value, const json& schema, const std::string& place) {
    if (schema.contains("type")) {
      const json types = schema["type"].is_array() ? schema["type"] : json::array({schema["type"]});
      const auto fits = [&](const json& type) { return hasType(value, type.get<std::string>()); };
      if (std::none_of(types.begin(), types.end(), fits)) {
        return at(place) + "must be " + (types.size() == 1 ? "" : "one of ") + types.dump();
      }
    }
    if (schema.contains("const") && value != schema["const"]) {
      return at(place) + "must be " + schema["const"].dump();
    }
    if (schema.contains("enum")) {
      const json& values = schema["enum"];
      if (std::find(values.begin(), values.end(), value) == values.end()) {
        return at(place) + "must be one of " + values.dump();
      }
    }
    const bool isLow = schema.contains("minimum") && value.is_number() && value < schema["minimum"];
    return isLow ? at(place) + "must not be below " + schema["minimum"].dump() : "";
  }

  std::string memberFault(const json& value, const json& schema, const std::string& place) const {
    for (const json& name : schema.value("required", json::array())) {
      if (!value.contains(name.get<std::string>())) return at(place) + "lacks " + name.dump();
    }
    const json known = schema.value("properties", json::object());
    const json others = schema.value("additionalProperties", json(true));
    for (const auto& [name, member] : value.items()) {
      std::string found;
      if (known.contains(name)) {
        found = fault(member, known[name], std::string(place).append("/").append(name));
      } else if (others.is_object()) {
        found = fault(member, others, place + "/" + json(name).dump());
      } else if (!others.get<bool>()) {
        found = at(place) + "has a member that isn't known, " + json(name).dump();
      }
      if (!found.empty()) return found;
    }
    return "";
  }

  const json& root_;
};

/// The size of an integer, whatever its sign.
std::uint64_t sizeOf(const json& number) {
  const auto bits = number.get<std::uint64_t>();
  return number.is_number_unsigned() || bits >> 63U == 0 ? bits : 0 - bits;
}

bool areBelow(const json& numbers, std::size_t count) {
  return std::all_of(numbers.begin(), numbers.end(), [count](const json& number) {
    return sizeOf(number) >= 1 && sizeOf(number) <= count;
  });
}

}  // namespace

std::string faultOf(const json& value, const json& schema) {
  return Check(schema).fault(value, schema, "");
}

std::string danglingIn(const json& report) {
  for (const json& row : report["rows"]) {
    if (!areBelow(row, report["columns"].size())) return "/rows: a literal has no column";
  }
  for (const json& signal : report["signals"]) {
    for (const json& number : signal["messages"]) {
      if (number >= report["messages"].size()) return "/signals: a message is not there";
    }
    for (const json& function : signal["functions"]) {
      if (function["after"].is_null()) continue;
      for (const json& column : function["after"]["columns"]) {
        const json rows = column.value("rows", json::array());
        if (!areBelow(rows, report["rows"].size())) return "/signals: a row is not there";
      }
    }
  }
  return "";
}

}  // namespace ostrel::report
