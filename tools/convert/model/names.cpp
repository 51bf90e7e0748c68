#include "convert/model/names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "fil/pla_name.h"

namespace ostrel::convert {

namespace {

constexpr std::string_view lineHead = "#$ PROPERTY convert ";
constexpr std::size_t longestName = 140;     // room for a number
constexpr std::size_t mostBits = 1'000'000;  // a short line must not ask for all memory
constexpr std::array<std::string_view, 3> directionWords = {"input", "output", "inout"};

bool isPrintable(char c) {
  return c > ' ' && c <= '~';
}

std::string legalName(std::string_view wanted) {
  std::string name(wanted.substr(0, longestName));
  for (char& c : name) {
    if (!isPrintable(c) || std::string_view(":+-.%!#|,;").find(c) != std::string_view::npos) {
      c = '_';
    }
  }
  return name.empty() ? "_" : name;
}

std::string encoded(std::string_view text) {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (isPrintable(c) && c != '%') {
      result += c;
    } else {
      result += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
  }
  return result;
}

std::optional<int> number(std::string_view text, int base) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::string decoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::optional<int> code =
        text[i] == '%' && i + 2 < text.size() ? number(text.substr(i + 1, 2), 16) : std::nullopt;
    result += code ? static_cast<char>(*code) : text[i];
    if (code) i += 2;
  }
  return result;
}

// "port DIRECTION NAME [LEFT RIGHT]"
bool readPort(const std::vector<std::string>& words, KeptNames& kept) {
  const auto direction = std::ranges::find(directionWords, words[4]);
  if (direction == directionWords.end() || (words.size() != 6 && words.size() != 8)) return false;
  Port port;
  port.name = decoded(words[5]);
  port.direction = static_cast<Direction>(direction - directionWords.begin());
  std::size_t width = 1;
  if (words.size() == 8) {
    const std::optional<int> left = number(words[6], 10);
    const std::optional<int> right = number(words[7], 10);
    if (!left || !right) return false;
    const std::int64_t distance = std::int64_t{*left} - *right;
    width = static_cast<std::size_t>(distance < 0 ? -distance : distance) + 1;
    port.isVector = true;
    port.lowest = std::min(*left, *right);
    port.isAscending = *left < *right;
  }
  kept.allBits += width;
  if (kept.allBits > mostBits) return false;
  kept.ports.push_back(std::move(port));
  kept.widths.push_back(width);
  return true;
}

}  // namespace

std::string NameTable::take(std::string_view wanted) {
  const std::string base = legalName(wanted);
  std::string name = base;
  std::size_t& last = next_.try_emplace(base, 1).first->second;
  while (!taken_.insert(name).second) name = base + "_" + std::to_string(++last);
  return name;
}

std::string portLine(const Port& port) {
  std::string line(lineHead);
  line.append("port ").append(directionWords[static_cast<std::size_t>(port.direction)]);
  line += " " + encoded(port.name);
  if (!port.isVector) return line;
  const int highest = port.lowest + static_cast<int>(port.bits.size()) - 1;
  const int left = port.isAscending ? port.lowest : highest;
  const int right = port.isAscending ? highest : port.lowest;
  return line + " " + std::to_string(left) + " " + std::to_string(right);
}

std::string nameLine(std::string_view given, std::string_view original) {
  return std::string(lineHead).append("name ").append(given) + " " + encoded(original);
}

const std::string& KeptNames::original(const std::string& name) const {
  const auto found = originals.find(name);
  return found == originals.end() ? name : found->second;
}

void readKeptNames(std::string_view propertyLines, KeptNames& kept) {
  while (!propertyLines.empty()) {
    const std::size_t end = std::min(propertyLines.find('\n'), propertyLines.size());
    const std::string line(propertyLines.substr(0, end));
    propertyLines.remove_prefix(std::min(end + 1, propertyLines.size()));
    const std::vector<std::string> words = splitWords(line);
    const bool isOurs = words.size() >= 6 && words[1] == "PROPERTY" && words[2] == "convert";
    if (isOurs && words[3] == "name" && words.size() == 6) {
      kept.originals.emplace(words[4], decoded(words[5]));
    } else if (!isOurs || words[3] != "port" || !readPort(words, kept)) {
      kept.otherLines.push_back(line);
    }
  }
}

}  // namespace ostrel::convert
