// Order. Nets follow the ports, then the cells; a net that has no name gets one from its number.
#include "convert/read/json_reader.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <unordered_set>

#include "convert/read/cells.h"
#include "convert/read/json_place.h"
#include "fil/text.h"

namespace ostrel::convert {

namespace {

constexpr std::int64_t widestSum = 10'000;
constexpr int largestIndex = 1'000'000;

class JsonReader {
 public:
  explicit JsonReader(Report& report) : report_(report) {}

  Netlist read(const Place& module, const std::string& name) {
    netlist_.name = name;
    readNames(module);
    module.at("ports").forEachMember([this](auto& key, const Place& port) { readPort(key, port); });
    module.at("cells").forEachMember([this](auto& key, const Place& cell) { readCell(key, cell); });
    connectOutputs();
    finish(module);
    return std::move(netlist_);
  }

 private:
  void problem(const std::string& path, const std::string& text) {
    report_.problems.push_back(path + ": " + text);
  }

  static int offsetOf(const Place& wire) {
    const std::int64_t offset = wire.has("offset") ? wire.at("offset").number() : 0;
    if (offset < -largestIndex || offset > largestIndex) {
      throw JsonFault{wire.path + ": this is no range of bits"};
    }
    return static_cast<int>(offset);
  }

  static std::string bitName(const Place& wire, const std::string& name, std::size_t i) {
    Port port;
    port.name = name;
    port.isVector = wire.at("bits").list().size() > 1;
    port.lowest = offsetOf(wire);
    return port.bitName(i);
  }

  // The first name of a bit that is not hidden.
  void readNames(const Place& module) {
    if (!module.has("netnames")) return;
    module.at("netnames").forEachMember([this](const std::string& key, const Place& wire) {
      if (wire.has("hide_name") && wire.at("hide_name").number() != 0) return;
      const auto& bits = wire.at("bits").list();
      for (std::size_t i = 0; i < bits.size(); ++i) {
        if (bits[i].is_number_integer()) {
          names_.try_emplace(bits[i].get<std::int64_t>(), bitName(wire, key, i));
        }
      }
    });
  }

  std::string freeName(std::string name) {
    const std::string base = name;
    for (std::size_t n = 2; !taken_.insert(name).second; ++n) name = base + "_" + std::to_string(n);
    return name;
  }

  Net netOf(std::int64_t number) {
    const auto [place, isNew] = nets_.try_emplace(number, 0);
    if (isNew) {
      const auto name = names_.find(number);
      const bool isUnnamed = name == names_.end();
      place->second = netlist_.add(
          freeName(isUnnamed ? "n" + std::to_string(number) : name->second), Undriven{});
      netlist_.nets.back().isUnnamed = isUnnamed;
    }
    return place->second;
  }

  Bit bitOf(const Json& value, const std::string& path) {
    if (value.is_number_integer()) return {netOf(value.get<std::int64_t>()), 'x'};
    const std::string text = value.is_string() ? value.get<std::string>() : "";
    if (text == "0" || text == "1") return {std::nullopt, text[0]};
    if (text == "x" || text == "z") return {std::nullopt, 'x'};
    throw JsonFault{path + ": this is no bit"};
  }

  void readPort(const std::string& name, const Place& place) {
    const std::string word = place.at("direction").text();
    Port port;
    port.name = name;
    if (word == "output") {
      port.direction = Direction::Output;
    } else if (word == "inout") {
      port.direction = Direction::Inout;
    } else if (word != "input") {
      throw JsonFault{place.path + ": " + word + " is no direction"};
    }
    const auto& bits = place.at("bits").list();
    if (bits.empty()) throw JsonFault{place.path + ": a port has bits"};
    port.lowest = offsetOf(place);
    port.isVector = bits.size() > 1 || port.lowest != 0;
    port.isAscending = place.has("upto") && place.at("upto").number() != 0;
    for (std::size_t i = 0; i < bits.size(); ++i) addPortBit(port, i, bits[i], place.path);
    netlist_.ports.push_back(std::move(port));
  }

  // An output that shares its net with another port gets a net of its own behind it.
  void addPortBit(Port& port, std::size_t i, const Json& value, const std::string& path) {
    const std::string name = port.bitName(i);
    if (!taken_.insert(name).second)
      throw JsonFault{path + ": the name " + name + " is there twice"};
    const bool isNet = value.is_number_integer();
    const std::int64_t number = isNet ? value.get<std::int64_t>() : 0;
    // An inout that nothing drives can have lost its net.
    const bool isOff =
        port.direction == Direction::Inout && !isNet && bitOf(value, path).constant == 'x';
    const bool takesAlias = isNet ? nets_.contains(number) : !isOff;
    if (port.direction != Direction::Input && takesAlias) {
      const Net net = netlist_.add(name, Undriven{});
      aliases_.push_back({net, bitOf(value, path)});
      port.bits.push_back(net);
      return;
    }
    if (!isNet && port.direction == Direction::Input) {
      throw JsonFault{path + ": a constant stands for an input"};
    }
    const Net net = netlist_.add(name, Undriven{});
    if (isNet && !nets_.emplace(number, net).second) {
      throw JsonFault{path + ": two ports share a net"};
    }
    if (port.direction == Direction::Input) netlist_.nets[net].driver = FromOutside{};
    port.bits.push_back(net);
  }

  void readCell(const std::string& /*name*/, const Place& cell) {
    const std::string type = cell.at("type").text();
    if (type == "$scopeinfo") return;  // says where it comes from and nothing else
    const Place pins = cell.at("connections");
    std::optional<Driver> driver;
    if (type == "$lut") {
      driver = lut(cell, pins);
    } else if (type == "$sop") {
      driver = sumOfProducts(cell, pins);
    } else {
      driver =
          simpleCell(type, [&](std::string_view pin) { return single(pins.at(std::string(pin))); });
    }
    if (!driver) return problem(cell.path, "no way to say a cell of type " + type);
    const Place output = pins.at(pins.has("Y") ? "Y" : "Q");
    drive(output, *std::move(driver));
  }

  Bit single(const Place& pin) {
    if (pin.list().size() != 1) throw JsonFault{pin.path + ": one bit should stand here"};
    return bitOf(pin.list()[0], pin.path);
  }

  std::vector<Bit> inputsOf(const Place& cell, const Place& pins) {
    const Place place = pins.at("A");
    if (static_cast<std::int64_t>(place.list().size()) !=
        cell.at("parameters").at("WIDTH").number()) {
      throw JsonFault{cell.path + ": WIDTH is not the width of A"};
    }
    std::vector<Bit> inputs;
    for (const Json& bit : place.list()) inputs.push_back(bitOf(bit, place.path));
    return inputs;
  }

  // The parameter, its bit 0 first.
  static std::string bitsOf(const Place& parameter, std::size_t length) {
    std::string bits = parameter.text();
    std::ranges::reverse(bits);
    if (bits.size() != length || bits.find_first_not_of("01x") != std::string::npos) {
      throw JsonFault{parameter.path + ": " + std::to_string(length) + " bits should stand here"};
    }
    return bits;
  }

  Function lut(const Place& cell, const Place& pins) {
    const std::vector<Bit> inputs = inputsOf(cell, pins);
    if (inputs.size() > widestTable) {
      problem(cell.path, "a table of more than " + std::to_string(widestTable) + " inputs");
      return constantFunction(false);
    }
    return tableFunction(inputs,
                         bitsOf(cell.at("parameters").at("LUT"), std::size_t{1} << inputs.size()));
  }

  // Two bits for each literal, that of 0 first.
  Function sumOfProducts(const Place& cell, const Place& pins) {
    const std::vector<Bit> inputs = inputsOf(cell, pins);
    const std::int64_t depth = cell.at("parameters").at("DEPTH").number();
    if (depth < 0 || depth > widestSum) throw JsonFault{cell.path + ": this is no DEPTH"};
    const std::string bits = bitsOf(cell.at("parameters").at("TABLE"),
                                    2 * inputs.size() * static_cast<std::size_t>(depth));
    Function function = constantFunction(false);
    std::unordered_map<Net, std::size_t> places;
    for (const Bit input : inputs) {
      if (!input.net && input.constant == 'x') {
        problem(cell.path, "an unknown value goes into a sum of products");
      }
      if (input.net && places.emplace(*input.net, function.inputs.size()).second) {
        function.inputs.push_back(*input.net);
      }
    }
    for (std::size_t t = 0; t < static_cast<std::size_t>(depth); ++t) {
      Cube cube;
      bool isEmpty = false;
      for (std::size_t i = 0; i < inputs.size(); ++i) {
        for (const char sense : {'0', '1'}) {
          if (bits[2 * (t * inputs.size() + i) + (sense == '1' ? 1 : 0)] != '1') continue;
          if (!inputs[i].net) {
            isEmpty = isEmpty || inputs[i].constant != sense;
            continue;
          }
          const std::size_t place = places.at(*inputs[i].net);
          isEmpty = isEmpty || (cube.at(place) != '-' && cube.at(place) != sense);
          cube.set(place, sense);
        }
      }
      if (!isEmpty) function.operands[0].on.push_back(std::move(cube));
    }
    dropUnreadInputs(function);
    return function;
  }

  void drive(const Place& output, Driver driver) {
    const Bit bit = single(output);
    if (!bit.net) throw JsonFault{output.path + ": a cell drives a constant"};
    Driver& present = netlist_.nets[*bit.net].driver;
    if (!std::holds_alternative<Undriven>(present)) {
      return problem(output.path, netlist_.nets[*bit.net].name + " is driven a second time");
    }
    present = std::move(driver);
  }

  void connectOutputs() {
    for (const auto& [net, bit] : aliases_) netlist_.nets[net].driver = bitFunction(bit);
  }

  void finish(const Place& module) {
    for (const Port& port : netlist_.ports) {
      for (const Net net : port.bits) {
        Driver& driver = netlist_.nets[net].driver;
        if (port.direction == Direction::Inout && std::holds_alternative<Undriven>(driver)) {
          driver = FromOutside{};
        }
      }
    }
    if (module.has("netnames")) {
      module.at("netnames").forEachMember([this](const std::string& key, const Place& wire) {
        if (wire.has("attributes")) readAttributes(key, wire, wire.at("attributes"));
      });
    }
  }

  void readAttributes(const std::string& name, const Place& wire, const Place& attributes) {
    const auto& bits = wire.at("bits").list();
    const auto netAt = [&](std::size_t i) -> NetRecord* {
      const auto found =
          bits[i].is_number_integer() ? nets_.find(bits[i].get<std::int64_t>()) : nets_.end();
      return found == nets_.end() ? nullptr : &netlist_.nets[found->second];
    };
    if (attributes.has("keep")) {
      for (std::size_t i = 0; i < bits.size(); ++i) {
        if (NetRecord* net = netAt(i)) net->kept = true;
      }
    }
    if (attributes.has("init")) {
      const std::string values = attributes.at("init").text();
      for (std::size_t i = 0; i < std::min(bits.size(), values.size()); ++i) {
        const NetRecord* net = netAt(i);
        if (net == nullptr || !std::holds_alternative<Register>(net->driver)) continue;
        if (values[values.size() - 1 - i] == '1') {
          problem(wire.path,
                  net->name + " begins at 1, which a device does not (yosys: dfflegalize)");
        }
      }
    }
    const bool isPort =
        std::ranges::find(netlist_.ports, name, &Port::name) != netlist_.ports.end();
    for (const char* key : {"LOC", "pin"}) {
      if (isPort && attributes.has(key)) return readPins(name, attributes.at(key));
    }
  }

  // "12", "P12", or one for each bit, the leftmost first.
  void readPins(const std::string& name, const Place& place) {
    Port& port = *std::ranges::find(netlist_.ports, name, &Port::name);
    std::string text = place.value.is_string() ? place.text() : "";
    if (place.value.is_number_integer() ||
        (text.size() == 32 && text.find_first_not_of("01") == std::string::npos)) {
      text = std::to_string(place.number());
    }
    std::ranges::replace(text, ',', ' ');
    const std::vector<std::string> words = splitWords(text);
    bool isGood = words.size() == port.bits.size();
    for (std::size_t i = 0; isGood && i < words.size(); ++i) {
      const std::size_t bit = port.isAscending ? i : port.bits.size() - 1 - i;
      const std::size_t digits = std::min(words[i].find_first_of("123456789"), words[i].size());
      int& pin = netlist_.nets[port.bits[bit]].pin;
      const char* end = words[i].data() + words[i].size();
      isGood = std::from_chars(words[i].data() + digits, end, pin).ptr == end && pin > 0;
      if (!isGood) pin = 0;
    }
    if (!isGood)
      report_.notes.push_back(place.path + ": these are no pin numbers, and are left out");
  }

  struct Alias {
    Net net;
    Bit bit;
  };

  Report& report_;
  Netlist netlist_;
  std::unordered_map<std::int64_t, std::string> names_;
  std::unordered_map<std::int64_t, Net> nets_;
  std::unordered_set<std::string> taken_;
  std::vector<Alias> aliases_;
};

bool isTop(const Json& module) {
  return module.is_object() && module.contains("attributes") && module["attributes"].is_object() &&
         module["attributes"].contains("top");
}

bool isBlackBox(const Json& module) {
  return module.is_object() && module.contains("attributes") && module["attributes"].is_object() &&
         (module["attributes"].contains("blackbox") || module["attributes"].contains("whitebox"));
}

Netlist readModule(const Json& root, Report& report) {
  const Place modules = Place{root, ""}.at("modules");
  std::vector<std::string> candidates;
  std::vector<std::string> tops;
  modules.forEachMember([&](const std::string& name, const Place& module) {
    if (isTop(module.value)) tops.push_back(name);
    if (!isBlackBox(module.value)) candidates.push_back(name);
  });
  if (!tops.empty()) candidates = tops;
  if (candidates.size() != 1) throw JsonFault{"modules: it needs one module, or one marked as top"};
  return JsonReader(report).read(modules.at(candidates[0]), candidates[0]);
}

}  // namespace

Netlist readJson(std::string_view text, const std::string& file, Report& report) {
  try {
    return readModule(Json::parse(text), report);
  } catch (const Json::parse_error& error) {
    const std::string_view before = text.substr(0, std::min(error.byte, text.size()));
    const auto line = 1 + std::ranges::count(before, '\n');
    report.faults.push_back(file + ":" + std::to_string(line) + ": this is no JSON");
  } catch (const Json::out_of_range&) {
    report.faults.push_back(file + ": a number is beyond every range");
  } catch (const JsonFault& fault) {
    report.faults.push_back(file + ": " + fault.text);
  }
  return {};
}

}  // namespace ostrel::convert
