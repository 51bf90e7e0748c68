#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "convert/check/read_back.h"
#include "fil/text.h"

namespace ostrel::convert {

namespace {

struct VerilogFault {
  std::string text;
};

constexpr int deepestNesting = 8;

// An identifier with its blank if it is escaped, a number such as 1'b0 or 12, or one character.
std::vector<std::string> tokensOf(std::string_view text) {
  std::vector<std::string> tokens;
  const auto isWord = [](char c) { return isLetter(c) || isDigit(c) || c == '_' || c == '\''; };
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i + 1;
    if (text[i] == '\\') {
      end = std::min(text.find(' ', i), text.size() - 1) + 1;
    } else if (isWord(text[i])) {
      while (end < text.size() && isWord(text[end])) ++end;
    }
    if (!isSpace(text[i])) tokens.emplace_back(text.substr(i, end - i));
    i = end;
  }
  return tokens;
}

class VerilogReadBack {
 public:
  explicit VerilogReadBack(std::string_view text) : tokens_(tokensOf(text)) {}

  Netlist read() {
    expect("module");
    take();
    expect("(");
    while (!accept(")")) readPort();
    expect(";");
    while (!accept("endmodule")) readItem();
    if (next_ != tokens_.size()) fail();
    for (std::size_t i = 0; i < netlist_.nets.size(); ++i) {
      const bool isRegister = std::holds_alternative<Register>(netlist_.nets[i].driver);
      if (isRegister != beginsAt0_.contains(static_cast<Net>(i))) fail();
    }
    return std::move(netlist_);
  }

 private:
  struct Event {
    Net net;
    bool positive;
  };

  [[noreturn]] void fail() const {
    const std::size_t from = next_ < 4 ? 0 : next_ - 4;
    std::string text;
    for (std::size_t i = from; i < std::min(next_ + 3, tokens_.size()); ++i)
      text += " " + tokens_[i];
    throw VerilogFault{"at" + text};
  }
  const std::string& peek() const {
    if (next_ >= tokens_.size()) fail();
    return tokens_[next_];
  }
  std::string take() {
    peek();
    return tokens_[next_++];
  }
  bool accept(std::string_view token) {
    if (peek() != token) return false;
    ++next_;
    return true;
  }
  void expect(std::string_view token) {
    if (!accept(token)) fail();
  }

  void skipAttribute() {
    if (peek() != "(" || next_ + 1 == tokens_.size() || tokens_[next_ + 1] != "*") return;
    while (take() != ")") {
    }
  }

  int number() {
    const std::string token = take();
    if (token.size() > 7 || !std::ranges::all_of(token, isDigit)) fail();
    return std::stoi(token);
  }

  Net netOf(const std::string& name) {
    const auto [place, isNew] = nets_.try_emplace(name, 0);
    if (isNew) place->second = netlist_.add(name, Undriven{});
    return place->second;
  }

  Net lookUp() {
    std::string name = take();
    if (next_ < tokens_.size() && accept("[")) {
      name += "[" + std::to_string(number()) + "]";
      expect("]");
    }
    const auto found = nets_.find(name);
    if (found == nets_.end()) fail();
    return found->second;
  }

  void drive(Net net, Driver driver) {
    if (!std::holds_alternative<Undriven>(netlist_.nets[net].driver)) fail();
    netlist_.nets[net].driver = std::move(driver);
  }

  void readPort() {
    skipAttribute();
    Port port;
    const std::string word = take();
    port.direction = word == "output"  ? Direction::Output
                     : word == "inout" ? Direction::Inout
                                       : Direction::Input;
    accept("reg");
    int width = 1;
    if (accept("[")) {
      const bool isNegative = accept("-");
      const int left = isNegative ? -number() : number();
      expect(":");
      const int right = accept("-") ? -number() : number();
      expect("]");
      port.isVector = true;
      port.lowest = std::min(left, right);
      width += std::max(left, right) - port.lowest;
    }
    port.name = take();
    for (int i = 0; i < width; ++i) {
      const Net net = netOf(port.bitName(static_cast<std::size_t>(i)));
      if (port.direction == Direction::Input) drive(net, FromOutside{});
      port.bits.push_back(net);
    }
    netlist_.ports.push_back(std::move(port));
    accept(",");
  }

  void readItem() {
    skipAttribute();
    const std::string word = take();
    if (word == "wire") {
      const Net net = netOf(take());
      if (accept("=")) drive(net, literalFunction(expression(0)));
      expect(";");
    } else if (word == "reg") {
      beginsAt0_.insert(netOf(take()));
      for (const char* token : {"=", "0", ";"}) expect(token);
    } else if (word == "initial") {
      const auto port = std::ranges::find(netlist_.ports, take(), &Port::name);
      if (port == netlist_.ports.end()) fail();
      beginsAt0_.insert(port->bits.begin(), port->bits.end());
      for (const char* token : {"=", "0", ";"}) expect(token);
    } else if (word == "assign") {
      readAssignment();
    } else if (word == "always") {
      readAlways();
    } else {
      fail();
    }
  }

  void readAssignment() {
    const Net net = lookUp();
    expect("=");
    const Net value = expression(0);
    if (accept("?")) {
      const Net data = expression(0);
      for (const char* token : {":", "1'bz"}) expect(token);
      drive(net, Buffer{literalFunction(data), literalFunction(value)});
    } else {
      drive(net, literalFunction(value));
    }
    expect(";");
  }

  // An expression in falling order of binding: ~, &, ^, |.
  Net expression(int depth) {
    if (depth > deepestNesting) fail();
    Net left = exclusive(depth);
    while (accept("|")) left = gate("1-", "-1", left, exclusive(depth));
    return left;
  }
  Net exclusive(int depth) {
    Net left = product(depth);
    while (accept("^")) left = gate("10", "01", left, product(depth));
    return left;
  }
  Net product(int depth) {
    Net left = primary(depth);
    while (accept("&")) left = gate("11", "11", left, primary(depth));
    return left;
  }
  Net primary(int depth) {
    if (accept("~")) {
      const Net inner = accept("(") ? closed(depth) : atom();
      return fresh(literalFunction(inner, false));
    }
    return accept("(") ? closed(depth) : atom();
  }
  Net closed(int depth) {
    const Net inner = expression(depth + 1);
    expect(")");
    return inner;
  }
  Net atom() {
    if (accept("1'b0")) return fresh(constantFunction(false));
    if (accept("1'b1")) return fresh(constantFunction(true));
    return lookUp();
  }

  Net fresh(Driver driver) {
    return netlist_.add("$$" + std::to_string(netlist_.nets.size()), std::move(driver));
  }
  Net gate(std::string_view first, std::string_view second, Net a, Net b) {
    Function function;
    function.inputs = {a, b};
    function.operands.push_back({{Cube(first), Cube(second)}, {}, Second::Open, false});
    return fresh(std::move(function));
  }

  std::vector<Event> events() {
    std::vector<Event> result;
    for (const char* token : {"@", "("}) expect(token);
    if (accept("*")) {
      expect(")");
      return result;
    }
    do {
      const std::string edge = take();
      if (edge != "posedge" && edge != "negedge") fail();
      result.push_back({lookUp(), edge == "posedge"});
    } while (accept("or"));
    expect(")");
    return result;
  }

  // Conditions with the value 0 or 1 in front are reset and set; what comes last is the data.
  void readAlways() {
    const std::vector<Event> when = events();
    Register reg;
    reg.kind = when.empty() ? RegisterKind::Latch : RegisterKind::Flop;
    std::optional<Net> target;
    std::optional<Net> guard;
    std::size_t next = 1;  // of the events, behind the clock
    for (bool isLast = false; !isLast;) {
      guard.reset();
      const bool isGuarded = accept("if");
      const bool isControl = isGuarded && (when.empty() || next < when.size());
      if (isGuarded) guard = condition(isControl && !when.empty() ? &when[next] : nullptr);
      const Net net = lookUp();
      if (target && *target != net) fail();
      target = net;
      for (const char* token : {"<", "="}) expect(token);
      isLast = !finishAssignment(isControl, guard, reg);
      if (isControl) ++next;
    }
    if (!when.empty()) {
      if (next < when.size()) fail();
      reg.clock = literalFunction(when[0].net, when[0].positive);
      if (guard) reg.enable = literalFunction(*guard);
    } else if (guard && !reg.data.operands.empty()) {
      reg.clock = literalFunction(*guard);
    }
    if (when.empty() && reg.data.operands.empty()) reg.kind = RegisterKind::SetReset;
    drive(*target, std::move(reg));
  }

  // The condition of an event is the net of the event in its sense.
  Net condition(const Event* event) {
    expect("(");
    if (event == nullptr) return closed(0);
    if (accept("~") == event->positive) fail();
    const Net net = lookUp();
    if (net != event->net) fail();
    expect(")");
    return event->positive ? net : fresh(literalFunction(net, false));
  }

  // Whether `else` follows.
  bool finishAssignment(bool isControl, std::optional<Net> guard, Register& reg) {
    const bool isConstant = peek() == "1'b0" || peek() == "1'b1";
    const bool isOne = peek() == "1'b1";
    const Net value = expression(0);
    expect(";");
    auto& control = isOne ? reg.set : reg.reset;
    const bool takesControl = isControl && isConstant && !control && !(reg.set && !isOne);
    if (takesControl) {
      control = literalFunction(*guard);
    } else {
      reg.data = literalFunction(value);
    }
    const bool goesOn = peek() == "else";
    if (goesOn && !takesControl) fail();
    if (goesOn) take();
    return goesOn;
  }

  std::vector<std::string> tokens_;
  std::size_t next_ = 0;
  Netlist netlist_;
  std::unordered_map<std::string, Net> nets_;
  std::unordered_set<Net> beginsAt0_;
};

}  // namespace

Netlist readBackVerilog(std::string_view text, Report& report) {
  try {
    return VerilogReadBack(text).read();
  } catch (const VerilogFault& fault) {
    report.problems.push_back("the Verilog that was to be written is wrong " + fault.text);
    return {};
  }
}

}  // namespace ostrel::convert
