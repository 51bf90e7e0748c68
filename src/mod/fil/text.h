// Comparison of names and keywords, which ignore the case of ASCII letters and no locale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

constexpr char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// White space of the file format: blank, tab, newline, vertical tab, form feed, CR.
constexpr bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
  return toUpper(c) >= 'A' && toUpper(c) <= 'Z';
}

std::string toUpper(std::string_view text);

/// The words of a text, apart by blank, tab, CR and newline.
std::vector<std::string> splitWords(std::string_view text);

/// The difference of the first differing characters of the upper-cased texts; 0 when equal.
int compareNoCase(std::string_view a, std::string_view b);

/// Like compareNoCase on the first n character places. The end of a text counts as a character,
/// so "-sr" with n 4 is equal to no longer word, while "-xor" is equal to "-xorx".
int compareNoCaseN(std::string_view a, std::string_view b, std::size_t n);

inline bool equalNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && compareNoCase(a, b) == 0;
}

/// Hash and equality for tables of names.
struct NoCaseHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const;
};
struct NoCaseEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return equalNoCase(a, b); }
};

}  // namespace ostrel
