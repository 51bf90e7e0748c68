// Writing JSON (RFC 8259), a value behind the other, with the commas and brackets that belong
// there.
#pragma once

#include <concepts>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

class JsonWriter {
 public:
  explicit JsonWriter(std::ostream& stream) : stream_(stream) {}

  // What is begun is ended, in reverse order. In an object each value stands behind its key.
  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  JsonWriter& key(std::string_view name);

  void value(std::string_view text);
  void value(const char* text) { value(std::string_view(text)); }
  void value(bool isTrue);
  void value(double number);  ///< with six places behind the point
  template <std::integral Number>
  void value(Number number) {
    raw(std::to_string(number));
  }
  void null() { raw("null"); }

  /// The value, or null.
  template <class Value>
  void value(const std::optional<Value>& content) {
    content ? value(*content) : null();
  }

  /// A value with its key.
  template <class Value>
  void member(std::string_view name, const Value& content) {
    key(name).value(content);
  }

  template <class Range>
  void array(std::string_view name, const Range& elements) {
    key(name).beginArray();
    for (const auto& element : elements) value(element);
    endArray();
  }

 private:
  void begin(char bracket);
  void end(char bracket);
  void raw(std::string_view text);
  void separate();
  void breakLine();

  std::ostream& stream_;
  std::vector<bool> hasElements_;  // of each open bracket
  bool isBehindKey_ = false;
};

/// A text in quotes, all of ASCII or UTF-8. A byte that is no UTF-8 stands for the character of its
/// own number, so that different texts stay different.
std::string quotedJson(std::string_view text);

}  // namespace ostrel
