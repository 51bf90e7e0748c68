#include "fil/text.h"

#include <algorithm>
#include <cstdint>

#include "minimizer/hash_key.h"

namespace ostrel {

std::string toUpper(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = toUpper(c);
  return result;
}

std::vector<std::string> splitWords(std::string_view text) {
  constexpr std::string_view separators = " \t\r\n";
  std::vector<std::string> words;
  for (std::size_t at = text.find_first_not_of(separators); at != std::string_view::npos;
       at = text.find_first_not_of(separators, at)) {
    const std::size_t stop = std::min(text.find_first_of(separators, at), text.size());
    words.emplace_back(text.substr(at, stop - at));
    at = stop;
  }
  return words;
}

int compareNoCaseN(std::string_view a, std::string_view b, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    const int x = i < a.size() ? static_cast<unsigned char>(toUpper(a[i])) : 0;
    const int y = i < b.size() ? static_cast<unsigned char>(toUpper(b[i])) : 0;
    if (x != y) return x - y;
    if (i >= a.size()) break;
  }
  return 0;
}

int compareNoCase(std::string_view a, std::string_view b) {
  return compareNoCaseN(a, b, std::string_view::npos);
}

std::size_t NoCaseHash::operator()(std::string_view text) const {
  // The bits are mixed for each character: sums of characters times powers of a factor are equal
  // for some texts whatever the factor.
  std::uint64_t h = hashKey;
  for (const char c : text) h = mixBits(h + static_cast<unsigned char>(toUpper(c)));
  return static_cast<std::size_t>(h);
}

}  // namespace ostrel
