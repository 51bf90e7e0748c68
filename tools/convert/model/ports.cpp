#include <algorithm>
#include <map>

#include "convert/model/netlist.h"
#include "fil/text.h"

namespace ostrel::convert {

namespace {

Direction directionOf(const Driver& driver) {
  if (std::holds_alternative<FromOutside>(driver)) return Direction::Input;
  return std::holds_alternative<Buffer>(driver) ? Direction::Inout : Direction::Output;
}

// The index in a name like `d[3]`; none for any other name, and for one that counts too far.
std::optional<int> indexOf(const std::string& name, std::string& base) {
  const std::size_t open = name.rfind('[');
  if (open == std::string::npos || open == 0 || name.back() != ']') return std::nullopt;
  const std::string digits = name.substr(open + 1, name.size() - open - 2);
  const bool isNumber = !digits.empty() && digits.size() < 7 &&
                        std::ranges::all_of(digits, isDigit) &&
                        (digits.size() == 1 || digits[0] != '0');
  if (!isNumber) return std::nullopt;
  base = name.substr(0, open);
  return std::stoi(digits);
}

}  // namespace

void addPlainPorts(const std::vector<Net>& pins, Netlist& netlist) {
  std::map<std::string, std::map<int, Net>> vectors;
  std::string base;
  for (const Net net : pins) {
    if (const auto index = indexOf(netlist.nets[net].name, base)) {
      vectors[base].emplace(*index, net);
    }
  }
  const auto isVector = [&](const std::string& name, Direction direction) {
    const auto& bits = vectors.at(name);
    const int distance = bits.rbegin()->first - bits.begin()->first;
    return bits.size() > 1 && static_cast<std::size_t>(distance) + 1 == bits.size() &&
           std::ranges::all_of(bits, [&](const auto& bit) {
             return directionOf(netlist.nets[bit.second].driver) == direction;
           });
  };
  for (const Net net : pins) {
    const NetRecord& record = netlist.nets[net];
    Port port{record.name, directionOf(record.driver), false, 0, false, {net}};
    const auto index = indexOf(port.name, base);
    if (index && isVector(base, port.direction)) {
      const auto& bits = vectors.at(base);
      if (*index != bits.begin()->first) continue;
      port = {base, port.direction, true, *index, false, {}};
      for (const auto& [place, bit] : bits) port.bits.push_back(bit);
    }
    netlist.ports.push_back(std::move(port));
  }
}

}  // namespace ostrel::convert
