// Order. Ports as the source has them, then declarations and drivers in the order of the nets.
#include "convert/write/verilog_writer.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "fil/text.h"

namespace ostrel::convert {

namespace {

constexpr std::array<std::string_view, 112> keywords = {
    "always",      "and",         "assign",     "automatic",
    "begin",       "buf",         "bufif0",     "bufif1",
    "case",        "casex",       "casez",      "cell",
    "cmos",        "config",      "deassign",   "default",
    "defparam",    "design",      "disable",    "edge",
    "else",        "end",         "endcase",    "endconfig",
    "endfunction", "endgenerate", "endmodule",  "endprimitive",
    "endspecify",  "endtable",    "endtask",    "event",
    "for",         "force",       "forever",    "fork",
    "function",    "generate",    "genvar",     "highz0",
    "highz1",      "if",          "ifnone",     "incdir",
    "include",     "initial",     "inout",      "input",
    "instance",    "integer",     "join",       "large",
    "liblist",     "library",     "localparam", "logic",
    "macromodule", "medium",      "module",     "nand",
    "negedge",     "nmos",        "nor",        "noshowcancelled",
    "not",         "notif0",      "notif1",     "or",
    "output",      "parameter",   "pmos",       "posedge",
    "primitive",   "pull0",       "pull1",      "pulldown",
    "pullup",      "rcmos",       "real",       "realtime",
    "reg",         "release",     "repeat",     "rnmos",
    "rpmos",       "rtran",       "rtranif0",   "rtranif1",
    "scalared",    "signed",      "small",      "specify",
    "specparam",   "strong0",     "strong1",    "supply0",
    "supply1",     "table",       "task",       "time",
    "tran",        "tri",         "tri0",       "tri1",
    "triand",      "trior",       "trireg",     "unsigned",
    "use",         "wait"};
constexpr std::array<std::string_view, 8> moreKeywords = {"vectored", "wand", "weak0", "weak1",
                                                          "while",    "wire", "wor",   "xor"};

// A plain identifier, or an escaped one with the blank that ends it.
std::string identifier(std::string_view name) {
  const bool isPlain =
      !name.empty() && (isLetter(name[0]) || name[0] == '_') &&
      std::ranges::all_of(name, [](char c) { return isLetter(c) || isDigit(c) || c == '_'; }) &&
      std::ranges::find(keywords, name) == keywords.end() &&
      std::ranges::find(moreKeywords, name) == moreKeywords.end();
  return isPlain ? std::string(name) : "\\" + std::string(name) + " ";
}

class VerilogWriter {
 public:
  VerilogWriter(const Netlist& netlist, std::ostream& out)
      : netlist_(netlist), out_(out), names_(netlist.nets.size()), isOfLoop_(netsOfLoops(netlist)) {
    for (const Port& port : netlist.ports) {
      for (std::size_t i = 0; i < port.bits.size(); ++i) {
        names_[port.bits[i]] = identifier(port.name);
        if (port.isVector) {
          names_[port.bits[i]] += "[" + std::to_string(port.lowest + static_cast<int>(i)) + "]";
        }
        isPort_.insert(port.bits[i]);
      }
      taken_.insert(port.name);
    }
    for (std::size_t i = 0; i < names_.size(); ++i) {
      if (names_[i].empty()) names_[i] = identifier(innerName(netlist.nets[i].name));
    }
  }

  std::vector<std::string> write() {
    module();
    // Registers come up as 0; to other tools one without a value is unknown, and so is whatever
    // they make of it.
    for (const Port& port : netlist_.ports) {
      if (isRegister(port)) out_ << "  initial " << identifier(port.name) << " = 0;\n";
    }
    for (std::size_t i = 0; i < names_.size(); ++i) declare(static_cast<Net>(i));
    for (std::size_t i = 0; i < names_.size(); ++i) drive(static_cast<Net>(i));
    out_ << "endmodule\n";
    return std::move(names_);
  }

 private:
  // "Y.Q" reads better as Y_q; a bit of no port keeps its name in the escaped form.
  std::string innerName(const std::string& name, const std::string& use = "") {
    std::string wanted = name;
    if (wanted.ends_with(".Q")) wanted.replace(wanted.size() - 2, 2, "_q");
    if (wanted.ends_with(".COM")) wanted.replace(wanted.size() - 4, 4, "_com");
    wanted += use;
    for (char& c : wanted) {
      if (c <= ' ' || c > '~') c = '_';
    }
    std::string result = wanted;
    for (std::size_t n = 2; !taken_.insert(result).second; ++n) {
      result = wanted + "_" + std::to_string(n);
    }
    return result;
  }

  void module() {
    out_ << "module " << identifier(netlist_.name.empty() ? "top" : netlist_.name) << "(";
    const char* separator = "\n";
    for (const Port& port : netlist_.ports) {
      out_ << separator << "  ";
      pins(port);
      static constexpr std::array<std::string_view, 3> words = {"input", "output", "inout"};
      out_ << words[static_cast<std::size_t>(port.direction)];
      if (isRegister(port)) out_ << " reg";
      out_ << range(port) << " " << identifier(port.name);
      separator = ",\n";
    }
    out_ << "\n);\n";
  }

  static std::string range(const Port& port) {
    if (!port.isVector) return "";
    const std::string low = std::to_string(port.lowest);
    const std::string high = std::to_string(port.lowest + static_cast<int>(port.bits.size()) - 1);
    return port.isAscending ? " [" + low + ":" + high + "]" : " [" + high + ":" + low + "]";
  }

  bool isRegister(const Port& port) const {
    return std::holds_alternative<Register>(netlist_.nets[port.bits.front()].driver);
  }

  // One number for each bit, the first of the declaration first.
  void pins(const Port& port) {
    if (std::ranges::none_of(port.bits, [this](Net n) { return netlist_.nets[n].pin != 0; }))
      return;
    std::string text;
    for (std::size_t i = 0; i < port.bits.size(); ++i) {
      const std::size_t bit = port.isAscending ? i : port.bits.size() - 1 - i;
      text += (i == 0 ? "" : " ") + std::to_string(netlist_.nets[port.bits[bit]].pin);
    }
    out_ << "(* LOC = \"" << text << "\" *) ";
  }

  void declare(Net net) {
    const NetRecord& record = netlist_.nets[net];
    if (isPort_.contains(net)) return;
    // A registered node is part of the device, as ostrel sees it, whoever reads it.
    const char* keep = record.kept || isOfLoop_[net] ? "  (* keep *) " : "  ";
    if (std::holds_alternative<Register>(record.driver)) {
      out_ << "  (* keep *) reg " << names_[net] << " = 0;\n";
    } else if (std::holds_alternative<Function>(record.driver)) {
      out_ << keep << "wire " << names_[net] << ";\n";
    }
  }

  void drive(Net net) {
    const NetRecord& record = netlist_.nets[net];
    if (const auto* function = std::get_if<Function>(&record.driver)) {
      out_ << "  assign " << names_[net] << " = " << text(*function) << ";\n";
    } else if (const auto* buffer = std::get_if<Buffer>(&record.driver)) {
      out_ << "  assign " << names_[net] << " = " << operand(buffer->enable) << " ? "
           << operand(buffer->data) << " : 1'bz;\n";
    } else if (const auto* reg = std::get_if<Register>(&record.driver)) {
      driveRegister(net, *reg);
    }
  }

  // An edge needs a net to happen on.
  std::string edgeOf(Net net, const Function& function, std::string_view use) {
    if (const auto literal = asLiteral(function)) {
      return (literal->positive ? "posedge " : "negedge ") + names_[literal->net];
    }
    const std::string name = identifier(innerName(netlist_.nets[net].name, "_" + std::string(use)));
    out_ << "  wire " << name << " = " << text(function) << ";\n";
    edgeNames_[&function] = name;
    return "posedge " + name;
  }

  std::string condition(const Function& function) {
    const auto named = edgeNames_.find(&function);
    return named == edgeNames_.end() ? text(function) : named->second;
  }

  void driveRegister(Net net, const Register& reg) {
    const std::string& q = names_[net];
    std::string body;
    std::string events = reg.kind == RegisterKind::Flop ? edgeOf(net, *reg.clock, "clk") : "*";
    for (const auto& [control, value, word] :
         {std::tuple{&reg.reset, "0", "rst"}, {&reg.set, "1", "set"}}) {
      if (!*control) continue;
      if (reg.kind == RegisterKind::Flop) events += " or " + edgeOf(net, **control, word);
      body += (body.empty() ? "    if (" : "    else if (") + condition(**control) + ") " + q +
              " <= 1'b" + value + ";\n";
    }
    std::string guard;
    if (reg.kind == RegisterKind::Latch) guard = "if (" + text(*reg.clock) + ") ";
    if (reg.enable) guard = "if (" + text(*reg.enable) + ") ";
    const std::string data = (reg.toggles ? q + " ^ " + operand(reg.data) : text(reg.data));
    if (reg.kind != RegisterKind::SetReset) {
      body += (body.empty() ? "    " : "    else ") + guard + q + " <= " + data + ";\n";
    }
    out_ << "  always @(" << events << ")\n" << body;
  }

  std::string text(const Function& function) {
    if (function.operands.empty()) return "1'b0";
    if (const auto literal = asLiteral(function)) {
      return (literal->positive ? "" : "~") + names_[literal->net];
    }
    std::string result = text(function, function.operands.front(), function.operands.size() > 1);
    for (std::size_t i = 1; i < function.operands.size(); ++i) {
      result += " ^ " + text(function, function.operands[i], true);
    }
    return result;
  }

  // Closed against an operator beside it.
  std::string operand(const Function& function) {
    const std::string result = text(function);
    return result.find_first_of("&|^") == std::string::npos ? result : "(" + result + ")";
  }

  std::string text(const Function& function, const Sum& sum, bool closed) const {
    std::string result;
    for (const Cube& cube : sum.on) {
      result += (result.empty() ? "" : " | ") + product(function, cube);
    }
    if (result.empty()) return sum.inverted ? "1'b1" : "1'b0";
    const bool isSingle = result.find_first_of("&|") == std::string::npos;
    if (sum.inverted) return isSingle && result[0] != '~' ? "~" + result : "~(" + result + ")";
    return closed && !isSingle ? "(" + result + ")" : result;
  }

  std::string product(const Function& function, const Cube& cube) const {
    std::string result;
    cube.forEachLiteral([&](std::size_t column, char literal) {
      result += result.empty() ? "" : " & ";
      result += (literal == '0' ? "~" : "") + names_[function.inputs[column]];
    });
    return result.empty() ? "1'b1" : result;
  }

  const Netlist& netlist_;
  std::ostream& out_;
  std::vector<std::string> names_;  // by net
  std::vector<bool> isOfLoop_;      // by net
  std::unordered_set<Net> isPort_;
  std::unordered_set<std::string> taken_;
  std::unordered_map<const Function*, std::string> edgeNames_;
};

}  // namespace

std::vector<std::string> writeVerilog(const Netlist& netlist, std::ostream& out) {
  return VerilogWriter(netlist, out).write();
}

}  // namespace ostrel::convert
