// A design as every reader makes it and every writer takes it: nets, what drives each, and ports.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "convert/model/function.h"
#include "convert/model/report.h"

namespace ostrel::convert {

enum class RegisterKind : std::uint8_t { Flop, Latch, SetReset };

/// All control functions act at 1; reset wins over set, and both over the clock. A latch follows
/// its data while the clock is 1. A SetReset has neither data nor clock.
struct Register {
  RegisterKind kind = RegisterKind::Flop;
  bool toggles = false;  ///< the data says when it changes
  Function data;
  std::optional<Function> clock;
  std::optional<Function> enable;
  std::optional<Function> reset;
  std::optional<Function> set;
};

/// Drives its net while the enable is 1.
struct Buffer {
  Function data;
  Function enable;
};

struct Undriven {};
struct FromOutside {};

using Driver = std::variant<Undriven, FromOutside, Function, Register, Buffer>;

struct NetRecord {
  std::string name;  ///< unique in its netlist
  Driver driver;
  int pin = 0;             ///< of the device; 0 for none
  bool kept = false;       ///< the user asks for this node
  bool isUnnamed = false;  ///< the name is one that a tool made up
};

enum class Direction : std::uint8_t { Input, Output, Inout };

/// A port and its bits, the lowest index first.
struct Port {
  std::string name;
  Direction direction = Direction::Input;
  bool isVector = false;
  int lowest = 0;            ///< index of the first bit
  bool isAscending = false;  ///< declared as [0:7]
  std::vector<Net> bits;

  /// The name of bit i: the port's own for a scalar.
  std::string bitName(std::size_t i) const;
};

struct Netlist {
  std::string name;
  std::vector<NetRecord> nets;
  std::vector<Port> ports;
  std::vector<std::string> properties;  ///< lines of a PLA file that are passed on

  Net add(std::string netName, Driver driver);
};

/// Calls visit(function, role) for each function of a net, const or not; the role is a word such as
/// "clock".
template <class Record, class Visit>
void forEachFunctionOf(Record& record, Visit visit) {
  if (auto* function = std::get_if<Function>(&record.driver)) visit(*function, "logic");
  if (auto* buffer = std::get_if<Buffer>(&record.driver)) {
    visit(buffer->data, "logic");
    visit(buffer->enable, "output enable");
  }
  if (auto* reg = std::get_if<Register>(&record.driver)) {
    if (reg->kind != RegisterKind::SetReset) visit(reg->data, "data");
    if (reg->clock) visit(*reg->clock, "clock");
    if (reg->enable) visit(*reg->enable, "clock enable");
    if (reg->reset) visit(*reg->reset, "reset");
    if (reg->set) visit(*reg->set, "set");
  }
}

/// The nets that are driven by a function, each behind all of these that it reads; the first net of
/// a loop that is met goes to `loop`. What is cut, by net, is left out and ends no loop.
std::vector<Net> combinationalOrder(const Netlist& netlist, const std::vector<bool>& isCut,
                                    std::optional<Net>& loop);

/// By net: whether a function drives it that is in a loop of such nets, or between two loops.
std::vector<bool> netsOfLoops(const Netlist& netlist);

/// Where a net of a loop is another one or its complement, the logic goes to the one that the user
/// knows: a port, or a name that no tool made up. A loop's states are compared by name.
void nameLoops(Netlist& netlist);

/// Takes the drivers of nets that no port, no register and no kept net depends on. A register that
/// no port depends on becomes a kept net, so that no other tool drops it.
void dropUnread(Netlist& netlist, Report& report);

/// What no netlist of this kind can be: a port bit without or with two drivers, a name twice.
void checkPorts(const Netlist& netlist, Report& report);

/// Adds a port for each of the nets, or one for several whose names count, such as d[0] and d[1],
/// where they have one direction and leave no gap.
void addPlainPorts(const std::vector<Net>& pins, Netlist& netlist);

/// Gives a register that is a bit of a port a net of its own, unless all bits of it are registers:
/// Verilog declares a port as one or the other.
void separateRegisters(Netlist& netlist);

/// Gives every don't-care a value, the one that needs fewer terms. Whether there were some.
bool settleDontCares(Netlist& netlist);

}  // namespace ostrel::convert
