#include "verify/model/network.h"

#include <algorithm>

namespace ostrel::verify {

namespace {

using enum Extension;

std::optional<Slot> slotOf(Extension extension) {
  switch (extension) {
    case None:
    case PIN:
    case COM:
    case D:
    case Q:
    case FB:
    case REG:
    case T:
    case L:
      return Slot::Logic;
    case X1:
      return Slot::XorLeft;
    case X2:
      return Slot::XorRight;
    case C:
    case CP:
    case LE:
    case LH:
      return Slot::Clock;
    case CE:
      return Slot::ClockEnable;
    case RE:
    case AR:
    case SR:
    case ASYNC:
    case SYNC:
    case CLR:
    case ACLR:
    case R:
      return Slot::Reset;
    case PR:
    case AP:
    case SP:
    case SET:
    case ASET:
    case S:
      return Slot::Set;
    case OE:
      return Slot::OutputEnable;
    default:
      return std::nullopt;
  }
}

bool isOneOf(RegisterType type, std::initializer_list<RegisterType> types) {
  return std::ranges::find(types, type) != types.end();
}

// The type after one more column; none if the column contradicts what the Signal was.
std::optional<RegisterType> typeAfter(RegisterType type, Extension extension) {
  using enum RegisterType;
  switch (extension) {
    case Extension::None:
    case PIN:
    case Extension::COM:
      return RegisterType::COM;
    case D:
    case Q:
    case FB:
    case REG:
      if (!isOneOf(type, {RegisterType::None, RegisterType::COM, REG_D, REG_SR, REG_L})) {
        return std::nullopt;
      }
      return type == REG_L ? REG_L : REG_D;
    case T:
      return REG_T;
    case L:
    case LE:
    case LH:
      return REG_L;
    case R:
    case S:
      if (!isOneOf(type, {RegisterType::None, RegisterType::COM, REG_SR})) return std::nullopt;
      return REG_SR;
    default:
      break;
  }
  const std::optional<Slot> slot = slotOf(extension);
  const bool forces = slot == Slot::Reset || slot == Slot::Set;
  return forces && !isOneOf(type, {RegisterType::COM, REG_D, REG_T, REG_L}) ? REG_SR : type;
}

bool isInvertedName(const PlaName& name) {
  return (name.polarity == Polarity::Inverted) != name.percent;
}

std::string fault(const PlaName& name, const char* text) {
  return name.base + std::string(extensionText(name.extension)) + " " + text;
}

void declare(const PlaFile& file, NameKind kind, Network& network) {
  for (const PlaName& name : file.table(kind).records) {
    if (!network.byName.emplace(name.base, network.signals.size()).second) {
      network.faults.push_back(fault(name, "is declared twice"));
      continue;
    }
    Signal signal;
    signal.name = name.base;
    signal.isNode = kind == NameKind::Node;
    signal.declaredInverted = name.polarity == Polarity::Inverted;
    signal.pin = name.pin;
    signal.type = name.registerType;
    network.signals.push_back(std::move(signal));
  }
}

// The Signal of a column, which notes that the column is there.
std::optional<std::size_t> meet(const PlaName& name, Network& network) {
  const std::optional<std::size_t> found = network.find(name.base);
  if (!found) {
    network.faults.push_back(fault(name, "stands in a column but is not declared"));
    return std::nullopt;
  }
  network.signals[*found].inColumn = true;
  return found;
}

void readInputColumns(const PlaFile& file, Network& network) {
  for (const PlaName& name : file.table(NameKind::Input).records) {
    const std::optional<std::size_t> signal = meet(name, network);
    const bool allowed = name.extension == None || name.extension == PIN || name.extension == D ||
                         name.extension == Q || name.extension == FB || name.extension == REG ||
                         name.extension == COM;
    if (!allowed) network.faults.push_back(fault(name, "cannot be an input column"));
    network.columns.push_back({signal.value_or(0), name.extension,
                               name.base + std::string(extensionText(name.extension))});
  }
}

// The function that an output column fills, or none if the column can't be used.
Function* place(const PlaName& name, Network& network) {
  const std::optional<std::size_t> found = meet(name, network);
  if (!found) return nullptr;
  Signal& signal = network.signals[*found];
  std::optional<Slot> slot = slotOf(name.extension);
  if (!slot) {
    network.faults.push_back(fault(name, "is not supported"));
    return nullptr;
  }
  const std::optional<RegisterType> type = typeAfter(signal.type, name.extension);
  if (!type) {
    network.faults.push_back(fault(name, "gives its signal a second register type"));
    return nullptr;
  }
  signal.type = *type;
  if (name.xorHalf == XorHalf::Left) slot = Slot::XorLeft;
  if (name.xorHalf == XorHalf::Right) slot = Slot::XorRight;
  int& index = signal.slots[static_cast<std::size_t>(*slot)];
  if (index != Signal::none) {
    network.faults.push_back(fault(name, "is given a second time"));
    return nullptr;
  }
  index = static_cast<int>(network.functions.size());
  network.functions.push_back({name.extension, isInvertedName(name), {}, {}, {}});
  return &network.functions.back();
}

void readOutputColumns(const PlaFile& file, Network& network) {
  const std::vector<PlaName>& names = file.table(NameKind::Output).records;
  network.functions.reserve(names.size());  // place hands out pointers
  std::vector<Function*> byColumn;
  for (const PlaName& name : names) byColumn.push_back(place(name, network));
  for (std::size_t r = 0; r < file.outputRows.size(); ++r) {
    const std::string_view row = file.outputRows.row(r);
    for (std::size_t c = 0; c < std::min(row.size(), byColumn.size()); ++c) {
      if (row[c] == '~' || byColumn[c] == nullptr) continue;
      Function& f = *byColumn[c];
      (row[c] == '1'   ? f.on
       : row[c] == '0' ? f.off
                       : f.open)
          .push_back(static_cast<std::uint32_t>(r));
    }
  }
}

void readRows(const PlaFile& file, Network& network) {
  network.rows.resize(file.inputRows.size());
  for (std::size_t r = 0; r < file.inputRows.size(); ++r) {
    const std::string_view row = file.inputRows.row(r);
    for (std::size_t c = 0; c < std::min(row.size(), network.columns.size()); ++c) {
      if (row[c] == '-') continue;
      network.rows[r].push_back({static_cast<std::uint32_t>(c), row[c] == '1'});
    }
  }
}

}  // namespace

bool Signal::hasControl() const {
  return std::any_of(slots.begin() + static_cast<int>(Slot::Clock), slots.end(),
                     [](int s) { return s != none; });
}

DataShape Signal::shape() const {
  if (has(Slot::XorLeft) && has(Slot::XorRight)) return DataShape::Pair;
  if (has(Slot::Logic)) return DataShape::Logic;
  return has(Slot::XorLeft) || has(Slot::XorRight) ? DataShape::LoneHalf : DataShape::None;
}

std::vector<Slot> Signal::valueSlots() const {
  switch (shape()) {
    case DataShape::Logic:
      return {Slot::Logic};
    case DataShape::Pair:
      return {Slot::XorLeft, Slot::XorRight};
    case DataShape::LoneHalf:
      return {has(Slot::XorLeft) ? Slot::XorLeft : Slot::XorRight};
    case DataShape::None:
      break;
  }
  return {};
}

std::optional<std::size_t> Network::find(const std::string& name) const {
  const auto found = byName.find(name);
  return found == byName.end() ? std::nullopt : std::optional(found->second);
}

bool Network::isInverted(const Signal& signal) const {
  bool inverted = false;
  for (const Slot s : signal.valueSlots()) inverted = inverted != function(signal, s).inverted;
  return inverted;
}

Network readNetwork(const PlaFile& file) {
  Network network;
  network.type = file.type;
  declare(file, NameKind::Pin, network);
  declare(file, NameKind::Node, network);
  if (network.signals.empty()) return network;
  readOutputColumns(file, network);
  readInputColumns(file, network);
  readRows(file, network);
  return network;
}

std::vector<std::size_t> columnsOf(const Network& network, const Signal& signal, Slot slot) {
  std::vector<std::size_t> columns;
  const std::vector<Slot> slots = slot == Slot::Logic ? signal.valueSlots() : std::vector{slot};
  for (const Slot s : slots) {
    if (!signal.has(s)) continue;
    const Function& f = network.function(signal, s);
    for (const auto* rows : {&f.on, &f.off, &f.open}) {
      for (const std::uint32_t r : *rows) {
        for (const RowLiteral l : network.rows[r]) columns.push_back(l.column);
      }
    }
  }
  std::ranges::sort(columns);
  columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
  return columns;
}

bool isRegistered(RegisterType type) {
  return type != RegisterType::None && type != RegisterType::COM;
}

}  // namespace ostrel::verify
