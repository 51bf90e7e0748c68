#include "convert/read/espresso_reader.h"

#include <charconv>
#include <sstream>
#include <unordered_set>

#include "convert/read/tt2_reader.h"
#include "fil/text.h"

namespace ostrel::convert {

namespace {

constexpr std::size_t mostColumns = 100'000;
constexpr std::size_t mostCells = 100'000'000;  // inputs times outputs

struct EspressoFault {
  std::string text;
};

enum class EspressoType : std::uint8_t { f, fd, fr, fdr };

class EspressoReader {
 public:
  explicit EspressoReader(std::string_view text) : stream_(std::string(text)) {}

  Netlist read() {
    std::string line;
    while (!isEnded_ && std::getline(stream_, line)) {
      ++line_;
      line = line.substr(0, line.find('#'));
      const std::vector<std::string> words = splitWords(line);
      if (words.empty()) continue;
      if (words[0][0] == '.') {
        readDirective(words);
      } else {
        for (const char c : line) readCharacter(c);
      }
    }
    if (!inputs_ || !outputs_) throw EspressoFault{".i or .o is missing"};
    if (!row_.empty()) throw EspressoFault{"the last row is cut off"};
    return build();
  }

  std::size_t line() const { return line_; }

 private:
  void readDirective(const std::vector<std::string>& words) {
    const std::string& word = words[0];
    if (!row_.empty())
      throw EspressoFault{"a row of " + std::to_string(row_.size()) + " characters"};
    if (word == ".i" || word == ".o") {
      (word == ".i" ? inputs_ : outputs_) = number(words);
      if (inputs_.value_or(1) * outputs_.value_or(1) > mostCells)
        throw EspressoFault{"too many columns"};
      sums_.resize(outputs_.value_or(0));
    } else if (word == ".ilb" || word == ".ob") {
      auto& names = word == ".ilb" ? inputNames_ : outputNames_;
      names.assign(words.begin() + 1, words.end());
    } else if (word == ".type") {
      readType(words);
    } else if (word == ".phase") {
      phase_ = words.size() == 2 ? words[1] : "";
      if (phase_.size() != sums_.size() || phase_.find_first_not_of("01") != std::string::npos) {
        throw EspressoFault{".phase needs a 0 or 1 for each output"};
      }
    } else if (word == ".e" || word == ".end") {
      isEnded_ = true;
    } else if (word != ".p") {
      throw EspressoFault{"the directive " + word + " is not known"};
    }
  }

  static std::size_t number(const std::vector<std::string>& words) {
    std::size_t value = 0;
    const std::string text = words.size() == 2 ? words[1] : "";
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value == 0 ||
        value > mostColumns) {
      throw EspressoFault{words[0] + " needs a number"};
    }
    return value;
  }

  void readType(const std::vector<std::string>& words) {
    const std::string text = words.size() == 2 ? words[1] : "";
    if (text == "f") {
      type_ = EspressoType::f;
    } else if (text == "fd") {
      type_ = EspressoType::fd;
    } else if (text == "fr") {
      type_ = EspressoType::fr;
    } else if (text == "fdr") {
      type_ = EspressoType::fdr;
    } else {
      throw EspressoFault{"the type is f, fd, fr or fdr"};
    }
  }

  // A row can run over lines.
  void readCharacter(char c) {
    if (isSpace(c) || c == '|') return;
    if (!inputs_ || !outputs_) throw EspressoFault{"a row in front of .i and .o"};
    const std::string_view known = row_.size() < *inputs_ ? "01-2" : "01-24~3";
    if (known.find(c) == std::string_view::npos) {
      throw EspressoFault{std::string("the character ") + c + " in a row"};
    }
    row_ += c;
    if (row_.size() == *inputs_ + *outputs_) finishRow();
  }

  void finishRow() {
    const Cube cube(row_.substr(0, *inputs_));
    const bool hasZeros = type_ == EspressoType::fr || type_ == EspressoType::fdr;
    for (std::size_t o = 0; o < *outputs_; ++o) {
      Sum& sum = sums_[o];
      const char c = row_[*inputs_ + o];
      if (c == '1' || c == '4') sum.on.push_back(cube);
      if (c == '0' && hasZeros) sum.second.push_back(cube);
      if ((c == '-' || c == '2') && type_ == EspressoType::fd) sum.second.push_back(cube);
    }
    row_.clear();
  }

  // What a list of names leaves out is counted.
  static std::vector<std::string> allNames(std::vector<std::string> names, std::size_t count,
                                           char letter) {
    if (names.size() > count) throw EspressoFault{"there are more names than columns"};
    for (std::size_t i = names.size(); i < count; ++i) names.push_back(letter + std::to_string(i));
    return names;
  }

  Netlist build() {
    Netlist netlist;
    std::unordered_set<std::string> taken;
    std::vector<Net> pins;
    std::vector<Net> columns;
    const auto add = [&](const std::string& name, Driver driver) {
      if (!taken.insert(name).second) throw EspressoFault{"the name " + name + " is there twice"};
      pins.push_back(netlist.add(name, std::move(driver)));
    };
    for (const auto& name : allNames(inputNames_, *inputs_, 'i')) add(name, FromOutside{});
    columns = pins;
    const std::vector<std::string> names = allNames(outputNames_, *outputs_, 'o');
    for (std::size_t o = 0; o < names.size(); ++o) {
      Sum& sum = sums_[o];
      if (type_ == EspressoType::fr || type_ == EspressoType::fdr) sum.secondIs = Second::Zero;
      sum.inverted = !phase_.empty() && phase_[o] == '0';
      Function function{columns, {}};
      function.operands.push_back(std::move(sum));
      dropUnreadInputs(function);
      add(names[o], std::move(function));
    }
    addPlainPorts(pins, netlist);
    return netlist;
  }

  std::istringstream stream_;
  std::size_t line_ = 0;
  bool isEnded_ = false;
  std::optional<std::size_t> inputs_;
  std::optional<std::size_t> outputs_;
  std::vector<std::string> inputNames_;
  std::vector<std::string> outputNames_;
  std::string phase_;
  EspressoType type_ = EspressoType::fd;
  std::string row_;  // the characters of an unfinished row
  std::vector<Sum> sums_;
};

}  // namespace

Netlist readEspresso(std::string_view text, const std::string& file, Report& report) {
  if (text.find("#$ PINS") != std::string_view::npos) return readTt2(text, file, report);
  EspressoReader reader(text);
  try {
    return reader.read();
  } catch (const EspressoFault& fault) {
    report.faults.push_back(file + ":" + std::to_string(reader.line()) + ": " + fault.text);
    return {};
  }
}

}  // namespace ostrel::convert
