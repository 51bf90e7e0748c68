#include "fil/pla_name.h"

#include <algorithm>
#include <charconv>
#include <ostream>

#include "fil/text.h"

namespace ostrel {
namespace {

/// A walk along the word; the end reads as NUL, which no rule looks for.
class WordScanner {
 public:
  explicit WordScanner(std::string_view word) : rest_(word) {}

  char peek() const { return rest_.empty() ? '\0' : rest_.front(); }

  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  /// The characters up to the first of `stops`, or all that is left.
  std::string_view takeUntil(std::string_view stops) {
    const std::size_t length = std::min(rest_.find_first_of(stops), rest_.size());
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

void readExtension(WordScanner& scanner, PlaName& name, const Console& console) {
  scanner.take('.');
  std::string text(1, '.');
  text += scanner.takeUntil(":.+-%");
  if (scanner.peek() == '%') name.percent = true;
  if (const auto extension = findExtension(text)) {
    name.extension = *extension;
  } else {
    console.err << "Error: undefined extension name " << text << " is used\n";
  }
  if (name.extension == Extension::X1) name.xorHalf = XorHalf::Left;
  if (name.extension == Extension::X2) name.xorHalf = XorHalf::Right;
}

void readSecondExtension(WordScanner& scanner, PlaName& name) {
  if (scanner.take('X')) {
    if (scanner.peek() == '1') name.xorHalf = XorHalf::Left;
    if (scanner.peek() == '2') name.xorHalf = XorHalf::Right;
  }
  scanner.takeUntil(":+-%");
}

/// Behind the colon stands a pin number or a register type. Neither is stepped over, so a '%'
/// behind one of them isn't seen.
void readPinOrType(std::string_view rest, PlaName& name) {
  if (!rest.empty() && isDigit(rest.front())) {
    int pin = 0;
    if (std::from_chars(rest.data(), rest.data() + rest.size(), pin).ec == std::errc()) {
      name.pin = pin;
    }
  } else if (const auto type = findRegisterType(rest)) {
    name.registerType = *type;
  }
}

}  // namespace

PlaName PlaName::parse(std::string_view word, const Console& console) {
  PlaName name;
  if (!word.empty() && word.front() == '!') {
    console.out << "'!' ignored in " << word << "\n";
    word.remove_prefix(1);
  }
  const std::size_t baseLength = std::min(word.find_first_of(":+-.%"), word.size());
  name.base = word.substr(0, std::min(baseLength, maxBaseLength));
  if (name.base.size() == maxBaseLength) {
    console.out << "Warning: Signal '" << name.base << "'\nwas truncated at " << maxBaseLength
                << " characters\n";
  }

  const std::string marks = toUpper(word.substr(baseLength));
  WordScanner scanner(marks);
  if (scanner.peek() == '.') readExtension(scanner, name, console);
  if (scanner.take('.')) readSecondExtension(scanner, name);
  if (scanner.take('-')) name.polarity = Polarity::Inverted;
  if (scanner.take('+')) name.polarity = Polarity::Positive;
  if (scanner.take(':')) readPinOrType(scanner.rest(), name);
  if (scanner.peek() == '%') name.percent = true;
  return name;
}

std::string PlaName::format(NameFormat format) const {
  std::string text = base;
  text += extensionText(extension);
  if (extension != Extension::X1 && extension != Extension::X2) {
    if (xorHalf == XorHalf::Left) text += ".X1";
    if (xorHalf == XorHalf::Right) text += ".X2";
  }
  if (polarity == Polarity::Inverted) text += '-';
  if (polarity == Polarity::Positive) text += '+';
  if (format == NameFormat::WithPin && pin != 0) text.append(":").append(std::to_string(pin));
  return text;
}

}  // namespace ostrel
