// From nets to Signals: the way back from tt2_reader.
//
// Idea. Ports are pins, all other nets that something reads are nodes. A register or a function
// behind a pin that can be off becomes part of the pin's Signal, so that it costs no node.
//
// Cost. Each cube becomes a row once, whoever has it: a look into a table of rows.
//
// Order. Pins stand in the order of the ports, nodes in that of the nets; input columns likewise;
// output columns by Signal, with logic first and then clock, clock enable, reset, set and output
// enable; rows in the order in which the columns first need them.
#include "convert/write/pla_form.h"

#include <algorithm>
#include <map>
#include <utility>

#include "convert/model/names.h"

namespace ostrel::convert {

namespace {

constexpr std::size_t complementEffort = 1'000'000'000;
constexpr Net noNet = static_cast<Net>(-1);

class Former {
 public:
  Former(const Netlist& netlist, Dialect dialect, Report& report)
      : netlist_(netlist), dialect_(dialect), report_(report) {}

  PlaFile form() {
    findSignals();
    giveNames();
    collectColumns();
    if (dialect_ == Dialect::Pla && !nodes_.empty()) {
      report_.notes.emplace_back("nodes stand as inputs and as outputs");
    }
    if (inputs_.empty() || outputs_.empty()) {
      report_.problems.push_back(netlist_.name + ": a PLA file needs an input and a function");
      return {};
    }
    PlaFile file = makePlaFile({static_cast<int>(inputs_.size()), static_cast<int>(outputs_.size()),
                                static_cast<int>(pins_.size()), static_cast<int>(nodes_.size())},
                               type());
    if (dialect_ == Dialect::Pla) file.phase.reset();  // some readers don't know the directive
    fillTables(file);
    fillRows(file);
    return file;
  }

 private:
  struct OutputColumn {
    PlaName name;
    std::vector<Net> inputs;
    Sum sum;
  };

  bool isNode(Net net) const { return !isPin_[net] && mergedInto_[net] == noNet; }

  void findSignals() {
    const std::size_t count = netlist_.nets.size();
    isPin_.assign(count, false);
    mergedInto_.assign(count, noNet);
    isRead_.assign(count, false);
    for (const Port& port : netlist_.ports) {
      for (const Net net : port.bits) {
        pins_.push_back(net);
        isPin_[net] = true;
      }
    }
    for (const Net pin : pins_) mergeInside(pin);
    for (std::size_t i = 0; i < count; ++i) {
      const auto* buffer = std::get_if<Buffer>(&netlist_.nets[i].driver);
      forEachFunctionOf(netlist_.nets[i], [&](const Function& function, std::string_view) {
        const bool isOwnInside = buffer != nullptr && &function == &buffer->data;
        for (const Net net : function.inputs) {
          if (!isOwnInside || mergedInto_[net] != i) isRead_[net] = true;
        }
      });
    }
    for (std::size_t i = 0; i < count; ++i) {
      const auto net = static_cast<Net>(i);
      const bool hasDriver = !std::holds_alternative<Undriven>(netlist_.nets[i].driver);
      if (isNode(net) && hasDriver && (isRead_[i] || netlist_.nets[i].kept)) nodes_.push_back(net);
    }
  }

  void mergeInside(Net pin) {
    const auto* buffer = std::get_if<Buffer>(&netlist_.nets[pin].driver);
    const auto literal = buffer == nullptr ? std::nullopt : asLiteral(buffer->data);
    if (!literal || !literal->positive || isPin_[literal->net]) return;
    const Driver& driver = netlist_.nets[literal->net].driver;
    const bool canMerge =
        std::holds_alternative<Register>(driver) || std::holds_alternative<Function>(driver);
    if (canMerge && mergedInto_[literal->net] == noNet) mergedInto_[literal->net] = pin;
  }

  void giveNames() {
    NameTable names;
    names_.assign(netlist_.nets.size(), "");
    for (const Port& port : netlist_.ports) nameLines_.push_back(portLine(port));
    for (const std::vector<Net>* nets : {&pins_, &nodes_}) {
      for (const Net net : *nets) {
        names_[net] = names.take(netlist_.nets[net].name);
        keepName(names_[net], netlist_.nets[net].name);
      }
    }
    for (std::size_t i = 0; i < mergedInto_.size(); ++i) {
      if (mergedInto_[i] == noNet) continue;
      const bool isRegister = std::holds_alternative<Register>(netlist_.nets[i].driver);
      names_[i] = names_[mergedInto_[i]];
      const std::string inside = names_[i] + (isRegister ? ".Q" : ".COM");
      if (inside != netlist_.nets[i].name)
        nameLines_.push_back(nameLine(inside, netlist_.nets[i].name));
    }
  }

  void keepName(const std::string& given, const std::string& original) {
    if (given == original) return;
    nameLines_.push_back(nameLine(given, original));
    report_.notes.push_back("the name " + original + " is changed to " + given);
  }

  PlaName plainName(Net net) const {
    PlaName name;
    name.base = names_[net];
    return name;
  }

  PlaName readingName(Net net) const {
    PlaName name = plainName(net);
    const Driver& driver = netlist_.nets[net].driver;
    if (std::holds_alternative<Buffer>(driver)) name.extension = Extension::PIN;
    if (std::holds_alternative<Register>(driver)) name.extension = Extension::Q;
    if (std::holds_alternative<Function>(driver) && mergedInto_[net] != noNet) {
      name.extension = Extension::COM;
    }
    return name;
  }

  void collectColumns() {
    columnOf_.assign(netlist_.nets.size(), noNet);
    for (const bool wanted : {true, false}) {
      for (std::size_t i = 0; i < isRead_.size(); ++i) {
        if (!isRead_[i] || isPin_[i] != wanted) continue;
        columnOf_[i] = static_cast<Net>(inputs_.size());
        inputs_.push_back(static_cast<Net>(i));
      }
    }
    if (inputs_.empty() && !pins_.empty()) inputs_.push_back(pins_.front());
    for (const std::vector<Net>* nets : {&pins_, &nodes_}) {
      for (const Net net : *nets) addOutputs(net);
    }
  }

  void addOutputs(Net net) {
    const Driver& driver = netlist_.nets[net].driver;
    PlaName name = plainName(net);
    const Driver* inside = &driver;
    const auto* buffer = std::get_if<Buffer>(&driver);
    if (buffer != nullptr) {
      const auto literal = asLiteral(buffer->data);
      const bool isMerged = literal && mergedInto_[literal->net] == net;
      if (isMerged) inside = &netlist_.nets[literal->net].driver;
      if (!isMerged) addColumns(name, buffer->data);
    }
    if (const auto* function = std::get_if<Function>(inside)) addColumns(name, *function);
    if (const auto* reg = std::get_if<Register>(inside)) addRegister(name, *reg);
    if (buffer != nullptr) addControl(name, Extension::OE, buffer->enable);
  }

  void addRegister(PlaName name, const Register& reg) {
    const bool isLatch = reg.kind == RegisterKind::Latch;
    const bool isSetReset = reg.kind == RegisterKind::SetReset;
    name.extension = isLatch ? Extension::L : reg.toggles ? Extension::T : Extension::D;
    if (!isSetReset) addColumns(name, reg.data);
    if (reg.clock) addControl(name, isLatch ? Extension::LE : Extension::C, *reg.clock);
    if (reg.enable) addControl(name, Extension::CE, *reg.enable);
    if (reg.reset) addControl(name, isSetReset ? Extension::R : Extension::AR, *reg.reset);
    if (reg.set) addControl(name, isSetReset ? Extension::S : Extension::AP, *reg.set);
  }

  void addControl(PlaName name, Extension extension, const Function& function) {
    name.extension = extension;
    addColumns(std::move(name), function);
  }

  void addColumns(PlaName name, const Function& function) {
    for (std::size_t i = 0; i < function.operands.size(); ++i) {
      if (function.operands.size() > 1) name.xorHalf = i == 0 ? XorHalf::Left : XorHalf::Right;
      OutputColumn column{name, function.inputs, function.operands[i]};
      if (dialect_ == Dialect::Pla) makePlain(column);
      column.name.polarity = column.sum.inverted ? Polarity::Inverted : Polarity::None;
      outputs_.push_back(std::move(column));
    }
  }

  // Without a mark; a pair that espresso takes for two functions is worth a note.
  void makePlain(OutputColumn& column) {
    const std::string name = column.name.format(NameFormat::WithoutPin);
    if (column.name.xorHalf == XorHalf::Left) {
      report_.notes.push_back(name + ": the halves of a pair stand in two columns");
    }
    if (!column.sum.inverted) return;
    if (column.sum.secondIs == Second::Zero) {
      column.sum.inverted = false;
      return column.sum.on.swap(column.sum.second);
    }
    const Function function{column.inputs, {column.sum}};
    std::optional<TwoRail> rails = twoRail(function, effort_);
    if (!rails) {
      report_.problems.push_back(name + ": its complement is too large");
      return;
    }
    Function plain = fromTwoRail(*std::move(rails), false);
    column.inputs = std::move(plain.inputs);
    column.sum = std::move(plain.operands[0]);
  }

  PlaType type() const {
    PlaType result = PlaType::f;
    for (const OutputColumn& column : outputs_) {
      if (column.sum.isComplete()) continue;
      if (column.sum.secondIs == Second::Zero || dialect_ == Dialect::Tt2) return PlaType::fdr;
      result = PlaType::fd;
    }
    return result;
  }

  void fillTables(PlaFile& file) {
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
      file.table(NameKind::Input).records[i] = readingName(inputs_[i]);
    }
    for (std::size_t i = 0; i < outputs_.size(); ++i) {
      file.table(NameKind::Output).records[i] = outputs_[i].name;
    }
    for (const auto& [kind, nets] : {std::pair{NameKind::Pin, &pins_}, {NameKind::Node, &nodes_}}) {
      for (std::size_t i = 0; i < nets->size(); ++i) {
        PlaName& name = file.table(kind).records[i];
        name = plainName((*nets)[i]);
        name.pin = netlist_.nets[(*nets)[i]].pin;
      }
    }
    bool hasModule = false;
    for (const std::string& line : netlist_.properties) hasModule |= addProperty(file, line);
    if (!hasModule && !netlist_.name.empty()) addProperty(file, "#$ MODULE " + netlist_.name);
    for (const std::string& line : nameLines_) {
      if (line.size() > longestLine) report_.problems.push_back("a name is too long: " + line);
      addProperty(file, line);
    }
  }

  // Whether it was the line of the module.
  static bool addProperty(PlaFile& file, const std::string& line) {
    const std::vector<std::string> words = splitWords(line);
    const auto found = std::ranges::find(propertyWords, words.at(1));
    const auto index = static_cast<std::size_t>(found - propertyWords.begin());
    std::string& text = file.properties.at(index);
    text += (text.empty() ? "" : "\n") + line;
    return index == propertyModule;
  }

  void fillRows(PlaFile& file) {
    for (std::size_t c = 0; c < outputs_.size(); ++c) {
      const OutputColumn& column = outputs_[c];
      const Sum& sum = column.sum;
      if (file.type == PlaType::fd) addCubes(file, column, sum.second, c, '-');
      addCubes(file, column, sum.on, c, '1');  // over a dash in the same place
      if (file.type == PlaType::fdr) addZeros(file, column, c);
    }
    file.termCount = static_cast<int>(rows_.size());
    file.termCapacity = file.termCount;
  }

  void addZeros(PlaFile& file, const OutputColumn& column, std::size_t c) {
    if (column.sum.secondIs == Second::Zero) {
      return addCubes(file, column, column.sum.second, c, '0');
    }
    CubeList known = column.sum.on;
    known.insert(known.end(), column.sum.second.begin(), column.sum.second.end());
    if (const auto off = complementOf(known, column.inputs.size(), effort_)) {
      return addCubes(file, column, *off, c, '0');
    }
    report_.problems.push_back(column.name.format(NameFormat::WithoutPin) +
                               ": the zeros that a file with don't-cares needs are too many");
  }

  void addCubes(PlaFile& file, const OutputColumn& output, const CubeList& cubes, std::size_t c,
                char value) {
    for (const Cube& cube : cubes) {
      std::vector<std::pair<Net, char>> literals;
      cube.forEachLiteral([&](std::size_t column, char literal) {
        literals.emplace_back(columnOf_[output.inputs[column]], literal);
      });
      std::ranges::sort(literals);
      const auto [place, isNew] = rows_.try_emplace(std::move(literals), rows_.size());
      if (isNew) {
        file.madeInputs.append();
        file.madeOutputs.append();
        for (const auto& [column, literal] : place->first) {
          file.madeInputs.set(place->second, column, literal);
        }
      }
      file.madeOutputs.set(place->second, c, value);
    }
  }

  static constexpr std::size_t longestLine = 1000;

  const Netlist& netlist_;
  Dialect dialect_;
  Report& report_;
  Effort effort_{complementEffort};
  std::vector<bool> isPin_;
  std::vector<bool> isRead_;
  std::vector<Net> mergedInto_;  // by net: the pin whose Signal it is a part of
  std::vector<Net> pins_;
  std::vector<Net> nodes_;
  std::vector<std::string> names_;  // by net: of its Signal
  std::vector<std::string> nameLines_;
  std::vector<Net> inputs_;    // by input column
  std::vector<Net> columnOf_;  // by net
  std::vector<OutputColumn> outputs_;
  std::map<std::vector<std::pair<Net, char>>, std::size_t> rows_;
};

}  // namespace

PlaFile plaForm(const Netlist& netlist, Dialect dialect, Report& report) {
  return Former(netlist, dialect, report).form();
}

}  // namespace ostrel::convert
