// From Signals, which have up to eight functions each, to nets, which have one driver each.
//
// Idea. A Signal is one net, or two where its pin can be off: what drives the pin buffer, and the
// pin. Every column reads one of the two; every row becomes a cube over the nets that it reads.
//
// Example. A register Y with Y.D, Y.C and Y.OE gives the net "Y.Q", a flip-flop, and the net "Y", a
// buffer of it. A column Y.Q reads the first, a column Y the second.
//
// Order. Nets follow the declarations, the inside of a pin in front of the pin.
#include "convert/read/tt2_reader.h"

#include <algorithm>
#include <sstream>
#include <unordered_map>

#include "convert/model/names.h"
#include "fil/pla_reader.h"
#include "verify/check/strict_reader.h"
#include "verify/model/network.h"

namespace ostrel::convert {

namespace {

using verify::Slot;

struct Nets {
  Net inside;
  Net pin;
};

class Builder {
 public:
  Builder(const PlaFile& pla, const std::string& file, Report& report)
      : network_(verify::readNetwork(pla)), file_(file), report_(report) {
    for (std::size_t i = 0; i < pla.properties.size(); ++i) readKeptNames(pla.properties[i], kept_);
    for (const std::string& line : kept_.otherLines) {
      const std::vector<std::string> words = splitWords(line);
      if (words.size() == 3 && words[1] == "MODULE") netlist_.name = words[2];
    }
    netlist_.properties = kept_.otherLines;
  }

  Netlist build() {
    for (const std::string& fault : network_.faults) report_.faults.push_back(file_ + ": " + fault);
    if (!network_.faults.empty()) return {};
    findReaders();
    for (std::size_t s = 0; s < network_.signals.size(); ++s) addNets(s);
    for (std::size_t s = 0; s < network_.signals.size(); ++s) drive(s);
    makePorts();
    return std::move(netlist_);
  }

 private:
  void problem(const verify::Signal& signal, const std::string& text) {
    report_.problems.push_back(signal.name + ": " + text);
  }

  void findReaders() {
    readsPin_.assign(network_.signals.size(), false);
    readsInside_ = readsPin_;
    std::vector<bool> isUsed(network_.columns.size(), false);
    for (const auto& row : network_.rows) {
      for (const verify::RowLiteral literal : row) isUsed[literal.column] = true;
    }
    for (std::size_t c = 0; c < isUsed.size(); ++c) {
      const verify::Column& column = network_.columns[c];
      if (isUsed[c]) (column.readsInside() ? readsInside_ : readsPin_)[column.signal] = true;
    }
  }

  static bool isRegister(const verify::Signal& signal) { return verify::isRegistered(signal.type); }

  static bool isDriven(const verify::Signal& signal) {
    return signal.shape() != verify::DataShape::None || isRegister(signal);
  }

  bool hasTwoNets(std::size_t s) const {
    const verify::Signal& signal = network_.signals[s];
    return signal.has(Slot::OutputEnable) && (isRegister(signal) || readsInside_[s]);
  }

  void addNets(std::size_t s) {
    const verify::Signal& signal = network_.signals[s];
    Nets nets{};
    if (hasTwoNets(s)) {
      const std::string name = signal.name + (isRegister(signal) ? ".Q" : ".COM");
      nets.inside = netlist_.add(kept_.original(name), Undriven{});
    }
    nets.pin = netlist_.add(kept_.original(signal.name), Undriven{});
    if (!hasTwoNets(s)) nets.inside = nets.pin;
    netlist_.nets[nets.pin].pin = signal.pin;
    nets_.push_back(nets);
  }

  Net netOf(std::uint32_t column) const {
    const verify::Column& c = network_.columns[column];
    return c.readsInside() ? nets_[c.signal].inside : nets_[c.signal].pin;
  }

  // The cubes of rows; one that reads a net in both senses is none.
  CubeList cubesOf(const std::vector<std::uint32_t>& rows,
                   const std::unordered_map<Net, std::size_t>& places) const {
    CubeList cubes;
    for (const std::uint32_t r : rows) {
      Cube cube;
      bool isEmpty = false;
      for (const verify::RowLiteral literal : network_.rows[r]) {
        const std::size_t place = places.at(netOf(literal.column));
        const char sense = literal.positive ? '1' : '0';
        isEmpty = isEmpty || (cube.at(place) != '-' && cube.at(place) != sense);
        cube.set(place, sense);
      }
      if (!isEmpty) cubes.push_back(std::move(cube));
    }
    return cubes;
  }

  Function functionOf(const verify::Signal& signal, Slot slot) const {
    Function function;
    std::unordered_map<Net, std::size_t> places;
    for (const std::size_t c : verify::columnsOf(network_, signal, slot)) {
      const Net net = netOf(static_cast<std::uint32_t>(c));
      if (places.emplace(net, function.inputs.size()).second) function.inputs.push_back(net);
    }
    const std::vector<Slot> slots = slot == Slot::Logic ? signal.valueSlots() : std::vector{slot};
    for (const Slot s : slots) {
      const verify::Function& f = network_.function(signal, s);
      Sum& sum = function.operands.emplace_back();
      sum.on = cubesOf(f.on, places);
      sum.secondIs = network_.isListedOn(f) ? Second::Open : Second::Zero;
      sum.second = cubesOf(sum.secondIs == Second::Open ? f.open : f.off, places);
      sum.inverted = f.inverted;
    }
    dropUnreadInputs(function);
    return function;
  }

  std::optional<Function> optionalFunction(const verify::Signal& signal, Slot slot) const {
    if (!signal.has(slot)) return std::nullopt;
    return functionOf(signal, slot);
  }

  void drive(std::size_t s) {
    const verify::Signal& signal = network_.signals[s];
    if (signal.has(Slot::OutputEnable)) {
      driveBuffered(s);
    } else if (isDriven(signal)) {
      netlist_.nets[nets_[s].pin].driver = insideDriver(signal);
    } else if (signal.hasControl()) {
      problem(signal, "it has control functions and no logic");
    } else if (!signal.isNode) {
      netlist_.nets[nets_[s].pin].driver = FromOutside{};
    }
  }

  void driveBuffered(std::size_t s) {
    const verify::Signal& signal = network_.signals[s];
    if (signal.isNode) return problem(signal, "a node has no pin that could be off");
    if (!isDriven(signal)) return problem(signal, "an output enable has nothing to put out");
    Driver driver = insideDriver(signal);
    Function data;
    if (hasTwoNets(s)) {
      netlist_.nets[nets_[s].inside].driver = std::move(driver);
      data = literalFunction(nets_[s].inside);
    } else if (auto* function = std::get_if<Function>(&driver)) {
      data = std::move(*function);
    }
    netlist_.nets[nets_[s].pin].driver =
        Buffer{std::move(data), functionOf(signal, Slot::OutputEnable)};
  }

  Driver insideDriver(const verify::Signal& signal) {
    if (isRegister(signal)) return registerOf(signal);
    for (const Slot slot : {Slot::Clock, Slot::ClockEnable, Slot::Reset, Slot::Set}) {
      if (!signal.has(slot)) continue;
      problem(signal, "it has a clock, reset or set and is no register");
      break;
    }
    return functionOf(signal, Slot::Logic);
  }

  Register registerOf(const verify::Signal& signal) {
    Register result;
    switch (signal.type) {
      case RegisterType::REG_D:
      case RegisterType::REG_T:
        result.toggles = signal.type == RegisterType::REG_T;
        break;
      case RegisterType::REG_L:
        result.kind = RegisterKind::Latch;
        break;
      case RegisterType::REG_SR:
        result.kind = RegisterKind::SetReset;
        break;
      default:
        problem(signal, signal.type == RegisterType::REG_G
                            ? "a gated register has no form in a netlist"
                            : "a JK flip-flop has no form in a netlist");
        return result;
    }
    result.data = functionOf(signal, Slot::Logic);
    result.clock = optionalFunction(signal, Slot::Clock);
    result.enable = optionalFunction(signal, Slot::ClockEnable);
    result.reset = optionalFunction(signal, Slot::Reset);
    result.set = optionalFunction(signal, Slot::Set);
    checkRegister(signal, result);
    return result;
  }

  void checkRegister(const verify::Signal& signal, const Register& result) {
    const bool hasData = signal.shape() != verify::DataShape::None;
    if (result.kind == RegisterKind::SetReset) {
      if (hasData || result.clock || result.enable) {
        problem(signal, "a set and reset register with data or a clock has no form in a netlist");
      } else if (!result.set && !result.reset) {
        problem(signal, "this register has no functions");
      }
      return;
    }
    if (!hasData) problem(signal, "this register has no data");
    if (!result.clock) {
      problem(signal, result.kind == RegisterKind::Flop ? "this flip-flop has no clock"
                                                        : "this latch has no enable");
    }
    if (result.kind == RegisterKind::Latch && result.enable) {
      problem(signal, "a latch has no clock enable");
    }
  }

  // The ports that the file keeps come first; then every other pin is a port of its own, or a bit
  // of one where the names count.
  void makePorts();

  verify::Network network_;
  const std::string& file_;
  Report& report_;
  KeptNames kept_;
  Netlist netlist_;
  std::vector<Nets> nets_;  // by Signal
  std::vector<bool> readsPin_;
  std::vector<bool> readsInside_;
};

void Builder::makePorts() {
  std::unordered_map<std::string, Net> pins;
  std::vector<bool> isPlaced(netlist_.nets.size(), true);
  for (std::size_t s = 0; s < nets_.size(); ++s) {
    if (network_.signals[s].isNode) continue;
    pins.emplace(netlist_.nets[nets_[s].pin].name, nets_[s].pin);
    isPlaced[nets_[s].pin] = false;
  }
  for (std::size_t p = 0; p < kept_.ports.size(); ++p) {
    Port port = kept_.ports[p];
    for (std::size_t i = 0; i < kept_.widths[p]; ++i) {
      const auto [place, isNew] = pins.try_emplace(port.bitName(i), 0);
      if (isNew) {  // a pin that nothing reads is not in the optimizer's output
        place->second = netlist_.add(place->first, FromOutside{});
        isPlaced.push_back(true);
      }
      port.bits.push_back(place->second);
      isPlaced[place->second] = true;
    }
    netlist_.ports.push_back(std::move(port));
  }
  std::vector<Net> others;
  for (const Nets nets : nets_) {
    if (!isPlaced[nets.pin]) others.push_back(nets.pin);
  }
  addPlainPorts(others, netlist_);
}

}  // namespace

Netlist netlistOf(const PlaFile& pla, const std::string& file, Report& report) {
  return Builder(pla, file, report).build();
}

Netlist readTt2(std::string_view text, const std::string& file, Report& report) {
  for (const verify::Complaint& complaint : verify::readStrictly(text)) {
    if (complaint.isHarmless) continue;
    report.faults.push_back(file + ":" + std::to_string(complaint.line) + ": " + complaint.text);
  }
  PlaFile pla;
  std::istringstream stream{std::string(text)};
  std::ostringstream lines;
  if (readPla(stream, Console{lines, lines}, pla) != Status::Ok && report.faults.empty()) {
    report.faults.push_back(file + ": it is not a usable PLA file");
  }
  if (!report.faults.empty()) return {};
  return netlistOf(pla, file, report);
}

}  // namespace ostrel::convert
