#include "convert/model/netlist.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace ostrel::convert {

std::string Port::bitName(std::size_t i) const {
  if (!isVector) return name;
  return name + "[" + std::to_string(lowest + static_cast<int>(i)) + "]";
}

Net Netlist::add(std::string netName, Driver driver) {
  NetRecord& record = nets.emplace_back();
  record.name = std::move(netName);
  record.driver = std::move(driver);
  return static_cast<Net>(nets.size() - 1);
}

// A walk in depth with a stack of its own: a chain of nets can be as long as the file.
std::vector<Net> combinationalOrder(const Netlist& netlist, const std::vector<bool>& isCut,
                                    std::optional<Net>& loop) {
  enum class Mark : std::uint8_t { New, Open, Done };
  struct Step {
    Net net;
    std::size_t next;
  };
  std::vector<Mark> marks(netlist.nets.size(), Mark::New);
  std::vector<Net> order;
  std::vector<Step> path;
  const auto enter = [&](Net net) {
    if (isCut[net] || !std::holds_alternative<Function>(netlist.nets[net].driver)) return;
    if (marks[net] == Mark::Open && !loop) loop = net;
    if (marks[net] != Mark::New) return;
    marks[net] = Mark::Open;
    path.push_back({net, 0});
  };
  for (std::size_t start = 0; start < netlist.nets.size(); ++start) {
    enter(static_cast<Net>(start));
    while (!path.empty()) {
      Step& step = path.back();
      const auto& inputs = std::get<Function>(netlist.nets[step.net].driver).inputs;
      if (step.next < inputs.size()) {
        enter(inputs[step.next++]);
      } else {
        marks[step.net] = Mark::Done;
        order.push_back(step.net);
        path.pop_back();
      }
    }
  }
  return order;
}

// What has no reader left, or reads nothing that is left, goes until nothing changes.
std::vector<bool> netsOfLoops(const Netlist& netlist) {
  std::vector<bool> isLeft(netlist.nets.size(), false);
  std::vector<std::size_t> reads(netlist.nets.size(), 0);
  std::vector<std::vector<Net>> readers(netlist.nets.size());
  const auto functionOf = [&](Net net) { return std::get_if<Function>(&netlist.nets[net].driver); };
  for (std::size_t i = 0; i < isLeft.size(); ++i) {
    const Function* function = functionOf(static_cast<Net>(i));
    if (function == nullptr) continue;
    isLeft[i] = true;
    for (const Net input : function->inputs) {
      if (functionOf(input) == nullptr) continue;
      ++reads[i];
      readers[input].push_back(static_cast<Net>(i));
    }
  }
  std::vector<std::size_t> isRead(isLeft.size());
  std::vector<Net> waiting;
  for (std::size_t i = 0; i < isLeft.size(); ++i) {
    isRead[i] = readers[i].size();
    if (isLeft[i] && (reads[i] == 0 || isRead[i] == 0)) waiting.push_back(static_cast<Net>(i));
  }
  const auto lower = [&](std::vector<std::size_t>& counts, Net net) {
    if (--counts[net] == 0 && isLeft[net]) waiting.push_back(net);
  };
  while (!waiting.empty()) {
    const Net net = waiting.back();
    waiting.pop_back();
    if (!isLeft[net]) continue;
    isLeft[net] = false;
    for (const Net reader : readers[net]) lower(reads, reader);
    for (const Net input : functionOf(net)->inputs) {
      if (functionOf(input) != nullptr) lower(isRead, input);
    }
  }
  return isLeft;
}

void nameLoops(Netlist& netlist) {
  const std::vector<bool> isOfLoop = netsOfLoops(netlist);
  std::vector<bool> isPort(netlist.nets.size(), false);
  for (const Port& port : netlist.ports) {
    for (const Net net : port.bits) isPort[net] = true;
  }
  for (std::size_t i = 0; i < netlist.nets.size(); ++i) {
    NetRecord& record = netlist.nets[i];
    const auto* function = std::get_if<Function>(&record.driver);
    const auto literal = function == nullptr ? std::nullopt : asLiteral(*function);
    if (!literal || !isOfLoop[literal->net] || isPort[literal->net]) continue;
    NetRecord& other = netlist.nets[literal->net];
    const bool isBetter = isPort[i] || (other.isUnnamed && !record.isUnnamed);
    auto* logic = std::get_if<Function>(&other.driver);
    if (!isBetter || other.kept || logic == nullptr || asLiteral(*logic)) continue;
    Function taken = std::exchange(*logic, literalFunction(static_cast<Net>(i), literal->positive));
    Sum& first = taken.operands.front();
    first.inverted = first.inverted == literal->positive;
    record.driver = std::move(taken);
  }
}

namespace {

// Adds what the waiting nets depend on.
void spread(const Netlist& netlist, std::vector<Net> waiting, std::vector<bool>& isLive) {
  for (const Net net : waiting) isLive[net] = true;
  while (!waiting.empty()) {
    const Net net = waiting.back();
    waiting.pop_back();
    forEachFunctionOf(netlist.nets[net], [&](const Function& function, std::string_view) {
      for (const Net input : function.inputs) {
        if (!isLive[input]) waiting.push_back(input);
        isLive[input] = true;
      }
    });
  }
}

}  // namespace

void dropUnread(Netlist& netlist, Report& report) {
  std::vector<bool> isLive(netlist.nets.size(), false);
  std::vector<Net> roots;
  for (const Port& port : netlist.ports)
    roots.insert(roots.end(), port.bits.begin(), port.bits.end());
  spread(netlist, roots, isLive);
  for (std::size_t i = 0; i < netlist.nets.size(); ++i) {
    NetRecord& record = netlist.nets[i];
    record.kept = record.kept || (!isLive[i] && std::holds_alternative<Register>(record.driver));
    if (record.kept) spread(netlist, {static_cast<Net>(i)}, isLive);
  }
  for (std::size_t i = 0; i < netlist.nets.size(); ++i) {
    NetRecord& record = netlist.nets[i];
    if (isLive[i] || std::holds_alternative<Undriven>(record.driver)) continue;
    record.driver = Undriven{};
    report.notes.push_back(record.name + ": nothing depends on it, and it is left out");
  }
}

void checkPorts(const Netlist& netlist, Report& report) {
  std::unordered_set<std::string> names;
  std::vector<bool> isPort(netlist.nets.size(), false);
  for (const Port& port : netlist.ports) {
    const bool isFirst = names.insert(port.name).second;
    if (!isFirst) report.problems.push_back(port.name + ": there are two ports of this name");
    for (const Net net : port.bits) {
      const NetRecord& record = netlist.nets[net];
      const bool isInput = std::holds_alternative<FromOutside>(record.driver);
      if (isPort[net] && isFirst) report.problems.push_back(record.name + ": it is in two ports");
      isPort[net] = true;
      if (port.direction == Direction::Input && !isInput) {
        report.problems.push_back(record.name + ": this input has logic");
      }
      const bool isOpen = isInput || std::holds_alternative<Undriven>(record.driver);
      if (port.direction == Direction::Output && isOpen) {
        report.problems.push_back(record.name + ": this output has no logic");
      }
    }
  }
  for (const NetRecord& record : netlist.nets) {
    forEachFunctionOf(record, [&](const Function& function, std::string_view) {
      for (const Net net : function.inputs) {
        if (!std::holds_alternative<Undriven>(netlist.nets[net].driver) || isPort[net]) continue;
        isPort[net] = true;  // once is enough
        report.problems.push_back(netlist.nets[net].name + ": it is read and nothing drives it");
      }
    });
  }
}

void separateRegisters(Netlist& netlist) {
  const auto isRegister = [&](Net net) {
    return std::holds_alternative<Register>(netlist.nets[net].driver);
  };
  for (const Port& port : netlist.ports) {
    if (std::ranges::all_of(port.bits, isRegister)) continue;
    for (const Net net : port.bits) {
      if (!isRegister(net)) continue;
      Driver driver = std::exchange(netlist.nets[net].driver, Undriven{});
      const Net inside = netlist.add(netlist.nets[net].name + ".Q", std::move(driver));
      netlist.nets[net].driver = literalFunction(inside);
    }
  }
}

bool settleDontCares(Netlist& netlist) {
  bool found = false;
  for (NetRecord& record : netlist.nets) {
    forEachFunctionOf(record, [&](Function& function, std::string_view) {
      for (Sum& sum : function.operands) {
        found = found || !sum.isComplete();
        if (sum.secondIs == Second::Zero && sum.second.size() < sum.on.size()) {
          sum.on.swap(sum.second);
          sum.inverted = !sum.inverted;
        }
        sum.second.clear();
        sum.secondIs = Second::Open;
      }
      dropUnreadInputs(function);
    });
  }
  return found;
}

}  // namespace ostrel::convert
