// A value of a JSON text, with its path for what is wrong there.
#pragma once

#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

namespace ostrel::convert {

using Json = nlohmann::ordered_json;

/// Ends the reading.
struct JsonFault {
  std::string text;
};

/// Every access throws a JsonFault where the value is not what it should be.
struct Place {
  const Json& value;
  std::string path;

  Place at(const std::string& key) const {
    const auto found = value.is_object() ? value.find(key) : value.end();
    if (found == value.end())
      throw JsonFault{(path.empty() ? "" : path + ": ") + key + " is missing"};
    return {*found, below(key)};
  }
  std::string below(const std::string& key) const { return path.empty() ? key : path + "." + key; }
  bool has(const std::string& key) const { return value.is_object() && value.contains(key); }

  std::string text() const {
    if (!value.is_string()) throw JsonFault{path + ": a text should stand here"};
    return value.get<std::string>();
  }

  const Json::array_t& list() const {
    if (!value.is_array()) throw JsonFault{path + ": a list should stand here"};
    return value.get_ref<const Json::array_t&>();
  }

  template <class Visit>
  void forEachMember(Visit visit) const {
    if (!value.is_object()) throw JsonFault{path + ": an object should stand here"};
    for (const auto& [key, member] : value.items()) visit(key, Place{member, below(key)});
  }

  /// A number, which stands as itself or as the text of its bits.
  std::int64_t number() const {
    if (value.is_number_integer()) return value.get<std::int64_t>();
    const std::string bits = text();
    std::int64_t result = 0;
    const auto [end, error] = std::from_chars(bits.data(), bits.data() + bits.size(), result, 2);
    if (error != std::errc() || end != bits.data() + bits.size()) {
      throw JsonFault{path + ": a number should stand here"};
    }
    return result;
  }
};

}  // namespace ostrel::convert
