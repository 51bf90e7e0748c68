// Order. Nets in their order; what a register needs besides its own net stands in front of it.
#include "convert/write/blif_writer.h"

#include <unordered_set>
#include <utility>

#include "convert/read/cells.h"

namespace ostrel::convert {

namespace {

class BlifWriter {
 public:
  BlifWriter(const Netlist& netlist, std::ostream& out) : netlist_(netlist), out_(out) {
    for (const NetRecord& record : netlist.nets) names_.push_back(free(record.name));
    for (const Port& port : netlist.ports) isPort_.insert(port.bits.begin(), port.bits.end());
  }

  std::vector<std::string> write() {
    out_ << ".model " << (netlist_.name.empty() ? "top" : clean(netlist_.name)) << "\n";
    ports(".inputs", Direction::Output);
    ports(".outputs", Direction::Input);
    for (std::size_t i = 0; i < names_.size(); ++i) drive(static_cast<Net>(i));
    out_ << ".end\n";
    return std::move(names_);
  }

 private:
  // `=` joins the halves of a connection, `#` begins a comment, a backslash goes on.
  static std::string clean(std::string name) {
    for (char& c : name) {
      if (c <= ' ' || c > '~' || c == '=' || c == '#' || c == '\\') c = '_';
    }
    return name;
  }

  std::string free(const std::string& wanted) {
    const std::string base = clean(wanted);
    std::string name = base;
    for (std::size_t n = 2; !taken_.insert(name).second; ++n) name = base + "_" + std::to_string(n);
    return name;
  }

  void ports(std::string_view word, Direction without) {
    out_ << word;
    for (const Port& port : netlist_.ports) {
      if (port.direction == without) continue;
      for (const Net net : port.bits) out_ << " " << names_[net];
    }
    out_ << "\n";
  }

  void drive(Net net) {
    const Driver& driver = netlist_.nets[net].driver;
    if (const auto* function = std::get_if<Function>(&driver)) define(names_[net], *function);
    if (const auto* reg = std::get_if<Register>(&driver)) driveRegister(net, *reg);
    if (const auto* buffer = std::get_if<Buffer>(&driver)) {
      const std::string data = netFor(buffer->data, names_[net] + "_data");
      const std::string enable = netFor(buffer->enable, names_[net] + "_oe");
      out_ << ".subckt $_TBUF_ A=" << data << " E=" << enable << " Y=" << names_[net] << "\n";
    }
  }

  // A set and reset register always has both pins; a register that toggles takes Q ^ T.
  void driveRegister(Net net, const Register& given) {
    Register reg = given;
    if (reg.kind == RegisterKind::SetReset) {
      if (!reg.set) reg.set = constantFunction(false);
      if (!reg.reset) reg.reset = constantFunction(false);
    }
    std::string toggled;
    if (reg.toggles) {
      toggled = free(names_[net] + "_d");
      exclusiveOr(toggled, names_[net], netFor(reg.data, names_[net] + "_t"));
    }
    const RegisterCell cell = cellOf(reg);
    std::string pins;
    for (const auto& [pin, function] : cell.pins) {
      const bool isToggle = pin == 'D' && reg.toggles;
      pins += std::string(" ") + pin + "=" +
              (isToggle ? toggled : netFor(*function, names_[net] + "_" + pin));
    }
    if (cell.type == "$_DFF_P_" || cell.type == "$_DLATCH_P_") {
      const std::size_t second = pins.rfind(' ');
      out_ << ".latch " << pins.substr(3, second - 3) << " " << names_[net]
           << (cell.type == "$_DFF_P_" ? " re " : " ah ") << pins.substr(second + 3) << " 0\n";
    } else {
      out_ << ".subckt " << cell.type << pins << " Q=" << names_[net] << "\n";
    }
    if (!isPort_.contains(net)) out_ << ".attr keep 1\n";
  }

  std::string netFor(const Function& function, const std::string& wanted) {
    const auto literal = asLiteral(function);
    if (literal && literal->positive) return names_[literal->net];
    std::string name = free(wanted);
    define(name, function);
    return name;
  }

  void define(const std::string& name, const Function& function) {
    if (function.operands.size() != 2) {
      define(name, function, function.operands.empty() ? Sum{} : function.operands[0]);
      return;
    }
    const std::string left = netFor({function.inputs, {function.operands[0]}}, name + "_x1");
    const std::string right = netFor({function.inputs, {function.operands[1]}}, name + "_x2");
    exclusiveOr(name, left, right);
  }

  void exclusiveOr(const std::string& name, const std::string& a, const std::string& b) {
    out_ << ".names " << a << " " << b << " " << name << "\n10 1\n01 1\n";
  }

  void define(const std::string& name, const Function& function, const Sum& sum) {
    out_ << ".names";
    for (const Net input : function.inputs) out_ << " " << names_[input];
    out_ << " " << name << "\n";
    if (sum.on.empty() || function.inputs.empty()) {
      if (sum.on.empty() == sum.inverted)
        out_ << std::string(function.inputs.size(), '-') << " 1\n";
      return;
    }
    for (const Cube& cube : sum.on) {
      out_ << cube.text(function.inputs.size()) << (sum.inverted ? " 0\n" : " 1\n");
    }
  }

  const Netlist& netlist_;
  std::ostream& out_;
  std::vector<std::string> names_;  // by net
  std::unordered_set<std::string> taken_;
  std::unordered_set<Net> isPort_;
};

}  // namespace

std::vector<std::string> writeBlif(const Netlist& netlist, std::ostream& out) {
  return BlifWriter(netlist, out).write();
}

}  // namespace ostrel::convert
