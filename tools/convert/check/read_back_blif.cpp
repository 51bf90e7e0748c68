#include <sstream>
#include <unordered_map>

#include "convert/check/read_back.h"
#include "convert/read/cells.h"
#include "fil/text.h"

namespace ostrel::convert {

namespace {

struct BlifFault {
  std::string text;
};

class BlifReadBack {
 public:
  explicit BlifReadBack(std::string_view text) : stream_(std::string(text)) {}

  Netlist read() {
    while (next()) readLine();
    if (!isEnded_) throw BlifFault{".end is missing"};
    return std::move(netlist_);
  }

 private:
  bool next() {
    if (!isWaiting_ && !std::getline(stream_, line_)) return false;
    isWaiting_ = false;
    words_ = splitWords(line_);
    return true;
  }

  [[noreturn]] void fail() const { throw BlifFault{"the line " + line_}; }

  const std::string& word(std::size_t i) const {
    if (i >= words_.size()) fail();
    return words_[i];
  }

  Net netOf(const std::string& name) {
    const auto [place, isNew] = nets_.try_emplace(name, 0);
    if (isNew) place->second = netlist_.add(name, Undriven{});
    return place->second;
  }

  void drive(Net net, Driver driver) {
    if (!std::holds_alternative<Undriven>(netlist_.nets[net].driver)) fail();
    netlist_.nets[net].driver = std::move(driver);
  }

  void readLine() {
    const std::string& kind = word(0);
    if (isEnded_) fail();
    if (kind == ".end") {
      isEnded_ = true;
    } else if (kind == ".inputs" || kind == ".outputs") {
      for (std::size_t i = 1; i < words_.size(); ++i) addPort(words_[i], kind == ".inputs");
    } else if (kind == ".names") {
      readNames();
    } else if (kind == ".latch") {
      readLatch();
    } else if (kind == ".subckt") {
      readCell();
    } else if (kind != ".model" && line_ != ".attr keep 1") {
      fail();
    }
  }

  void addPort(const std::string& name, bool isInput) {
    const Net net = netOf(name);
    const auto [place, isNew] = ports_.try_emplace(net, netlist_.ports.size());
    if (isNew) {
      const Direction direction = isInput ? Direction::Input : Direction::Output;
      netlist_.ports.push_back({name, direction, false, 0, false, {net}});
      if (isInput) netlist_.nets[net].driver = FromOutside{};
      return;
    }
    Port& port = netlist_.ports[place->second];
    if (isInput || port.direction != Direction::Input) fail();
    port.direction = Direction::Inout;
    netlist_.nets[net].driver = Undriven{};
  }

  void readNames() {
    Function function = constantFunction(false);
    for (std::size_t i = 1; i + 1 < words_.size(); ++i) function.inputs.push_back(netOf(words_[i]));
    const Net net = netOf(word(words_.size() - 1));
    Sum& sum = function.operands[0];
    while (next() && !words_.empty() && words_[0][0] != '.') {
      const std::string cube = words_.size() == 2 ? words_[0] : "";
      if (words_.size() > 2 || cube.size() != function.inputs.size()) fail();
      sum.on.emplace_back(cube);
      sum.inverted = words_.back() == "0";
    }
    isWaiting_ = true;
    drive(net, std::move(function));
  }

  void readLatch() {
    Register reg;
    if (word(5) != "0") fail();
    reg.kind = word(3) == "re" ? RegisterKind::Flop : RegisterKind::Latch;
    reg.data = literalFunction(netOf(word(1)));
    reg.clock = literalFunction(netOf(word(4)));
    drive(netOf(word(2)), std::move(reg));
  }

  void readCell() {
    std::unordered_map<std::string, std::string> pins;
    for (std::size_t i = 2; i < words_.size(); ++i) {
      const std::size_t equals = words_[i].find('=');
      if (equals == std::string::npos) fail();
      pins.emplace(words_[i].substr(0, equals), words_[i].substr(equals + 1));
    }
    const auto at = [&](std::string_view pin) -> Bit {
      const auto found = pins.find(std::string(pin));
      if (found == pins.end()) fail();
      return {netOf(found->second), 'x'};
    };
    std::optional<Driver> driver = simpleCell(word(1), at);
    if (!driver) fail();
    drive(*at(pins.contains("Y") ? "Y" : "Q").net, *std::move(driver));
  }

  std::istringstream stream_;
  std::string line_;
  std::vector<std::string> words_;
  bool isWaiting_ = false;  // the line was read and is still to be looked at
  bool isEnded_ = false;
  Netlist netlist_;
  std::unordered_map<std::string, Net> nets_;
  std::unordered_map<Net, std::size_t> ports_;
};

}  // namespace

Netlist readBackBlif(std::string_view text, Report& report) {
  try {
    return BlifReadBack(text).read();
  } catch (const BlifFault& fault) {
    report.problems.push_back("the BLIF that was to be written is wrong: " + fault.text);
    return {};
  }
}

}  // namespace ostrel::convert
