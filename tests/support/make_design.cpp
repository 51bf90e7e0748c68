#include "support/make_design.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace {

class DesignMaker {
 public:
  explicit DesignMaker(Bytes& bytes) : bytes_(bytes) {}

  std::string text() {
    static constexpr std::array<std::string_view, 4> types = {"f", "fd", "fr", "fdr"};
    const unsigned shape = bytes_.next();
    type_ = shape / 64;
    for (unsigned i = 0; i < 2 + shape % 8; ++i) {
      const std::string name = "i" + std::to_string(i);
      pins_.push_back(name);
      inputs_.push_back(name);
    }
    const unsigned signals = 1 + bytes_.next() % 8;
    for (unsigned i = 0; i < signals; ++i) addSignal("s" + std::to_string(i));
    while (!bytes_.empty() && rows_.size() < maxRows) addRows();

    std::string file = "#$ PINS " + std::to_string(pins_.size()) + list(pins_);
    if (!nodes_.empty()) file += "#$ NODES " + std::to_string(nodes_.size()) + list(nodes_);
    file += ".type " + std::string(types[type_]) + "\n.i " + std::to_string(inputs_.size()) +
            "\n.o " + std::to_string(outputs_.size()) + "\n.ilb" + list(inputs_) + ".ob" +
            list(outputs_) + ".p " + std::to_string(rows_.size()) + "\n";
    for (const std::string& row : rows_) file += row + "\n";
    return file + ".end\n";
  }

 private:
  static constexpr std::size_t maxRows = 100;

  static std::string list(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += " " + name;
    return text + "\n";
  }

  void addSignal(const std::string& name) {
    static constexpr std::array<std::string_view, 4> readings = {"", ".FB", ".PIN", ".Q"};
    static constexpr std::array<std::string_view, 4> controls = {".OE", ".AR", ".AP", ".CE"};
    const unsigned kind = bytes_.next();
    const unsigned reading = bytes_.next();
    (kind % 4 == 3 ? nodes_ : pins_).push_back(name);
    const std::string mark = (kind & 4) != 0 ? "-" : "";
    const bool isRegister = (kind & 24) == 24;
    const std::string data = isRegister ? name + ((kind & 32) != 0 ? ".T" : ".D") : name;
    if ((kind & 192) == 192) {
      outputs_.push_back(data + ".X1" + mark);
      outputs_.push_back(data + ".X2");
    } else {
      outputs_.push_back(data + mark);
    }
    if (isRegister) outputs_.push_back(name + ".C");
    if ((reading & 12) == 12) outputs_.push_back(name + std::string(controls[reading / 64]));
    if ((reading & 16) != 0) inputs_.push_back(name + std::string(readings[reading % 4]));
  }

  /// One cube of some outputs, or the minterms of odd weight over up to three of its columns.
  void addRows() {
    const unsigned opcode = bytes_.next();
    std::string cube(inputs_.size(), '-');
    for (std::size_t c = 0; c < cube.size();) {
      for (unsigned four = bytes_.next(), k = 0; k < 4 && c < cube.size(); ++k, ++c, four /= 4) {
        cube[c] = "01--"[four % 4];
      }
    }
    std::string marks(outputs_.size(), '~');
    const unsigned chosen = bytes_.next();
    const char mark = type_ >= 2 && (opcode & 128) != 0 ? '0' : '1';
    for (std::size_t o = 0; o < marks.size(); ++o) {
      if ((chosen >> (o % 8) & 1) != 0 || o == opcode % marks.size()) marks[o] = mark;
    }
    const std::size_t parity = (opcode & 96) == 96 ? std::min<std::size_t>(3, cube.size()) : 0;
    if (parity == 0) rows_.push_back(cube + " " + marks);
    for (unsigned minterm = 0; minterm < 1U << parity && parity > 0; ++minterm) {
      unsigned ones = 0;
      for (std::size_t k = 0; k < parity; ++k) {
        const unsigned bit = minterm >> k & 1;
        cube[(opcode + k) % cube.size()] = bit != 0 ? '1' : '0';
        ones += bit;
      }
      if (ones % 2 == 1) rows_.push_back(cube + " " + marks);
    }
  }

  Bytes& bytes_;
  unsigned type_ = 0;
  std::vector<std::string> pins_;
  std::vector<std::string> nodes_;
  std::vector<std::string> inputs_;
  std::vector<std::string> outputs_;
  std::vector<std::string> rows_;
};

}  // namespace

std::string makeDesign(Bytes& bytes) {
  return DesignMaker(bytes).text();
}
