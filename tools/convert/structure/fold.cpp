// Elimination of nodes by value, as multi-level synthesis does it.
//
// Idea. Every function is held as its ON and its OFF set, so that a literal of a net in either
// sense can be replaced by cubes. A net goes into all of its readers at once, or stays: it stays
// where a reader would get more terms than allowed, or where the cost, terms + 5 x nodes, would
// grow. A control function may have one term only, since more would cost a node of its own further
// on.
//
// Example. c = a b; y = c + d; z = c' e, each with one or two terms. Folded: y = a b + d,
// z = a' e + b' e: the terms stay 4 and a node goes. In an adder the carry of bit 4 has a handful
// of terms in two readers; folded, each would have dozens. It stays, and the sum keeps its shape.
//
// Cost. A net is tried once in a round for each reader: a product of two lists and its
// simplification, given up where the product is far beyond what could become allowed. Rounds end
// when nothing goes.
//
// Order. Nets are tried from the inputs to the outputs, so that chains of small functions fold from
// their beginning, and which nodes remain depends on it.
#include "convert/structure/fold.h"

#include <algorithm>
#include <utility>

#include "minimizer/column_map.h"
#include "minimizer/sum_of_products.h"

namespace ostrel::convert {

namespace {

constexpr std::size_t nodeCost = 5;
constexpr std::size_t mostRounds = 20;
constexpr std::size_t flatEffort = 2'000'000'000;
constexpr std::size_t foldEffort = 2'000'000;  // of one try
constexpr std::size_t mostCubes = 200'000;     // of one list, simplified or not

struct Piece {
  Function* home;
  std::optional<TwoRail> rails;  // none where they are too large: it stays as it is then
  bool canInvert;
  bool isControl;

  std::size_t terms() const {
    const bool inverts = canInvert && rails->isComplete && rails->off.size() < rails->on.size();
    return inverts ? rails->off.size() : rails->on.size();
  }
};

// A reader's list in parts, by what it says of the net, over the columns of reader and net.
struct Parts {
  CubeList with0;
  CubeList with1;
  CubeList without;
};

CubeList remapped(const CubeList& list, const std::vector<std::uint32_t>& map) {
  CubeList result;
  for (const Cube& cube : list) result.push_back(remapCube(cube, map.data()));
  return result;
}

Parts split(const CubeList& list, std::size_t column, const std::vector<std::uint32_t>& map) {
  Parts parts;
  for (Cube cube : list) {
    const char sense = cube.at(column);
    cube.set(column, '-');
    (sense == '0'   ? parts.with0
     : sense == '1' ? parts.with1
                    : parts.without)
        .push_back(remapCube(cube, map.data()));
  }
  return parts;
}

// Makes the cubes prime: a literal goes where the cube then still misses the other list.
bool expand(CubeList& list, const CubeList& other, ListAlgebra<Cube>& algebra, Effort& effort) {
  for (Cube& cube : list) {
    std::vector<std::pair<std::size_t, char>> literals;
    cube.forEachLiteral(
        [&](std::size_t column, char sense) { literals.emplace_back(column, sense); });
    if (!effort.spend(literals.size() * other.size())) return false;
    for (const auto& [column, sense] : literals) {
      cube.set(column, '-');
      const bool isWrong = std::ranges::any_of(
          other, [&cube](const Cube& zero) { return cubesIntersect(cube, zero); });
      if (isWrong) cube.set(column, sense);
    }
  }
  return algebra.simplify(list);
}

// The lists after the substitution; none where they grow too large.
std::optional<TwoRail> substitute(const TwoRail& reader, Net net, const TwoRail& value,
                                  std::size_t limit, Effort& effort) {
  TwoRail result;
  result.isComplete = reader.isComplete && value.isComplete;
  std::vector<std::uint32_t> readerMap;
  std::size_t column = 0;
  for (std::size_t i = 0; i < reader.inputs.size(); ++i) {
    readerMap.push_back(static_cast<std::uint32_t>(result.inputs.size()));
    if (reader.inputs[i] == net) {
      column = i;
    } else {
      result.inputs.push_back(reader.inputs[i]);
    }
  }
  std::vector<std::uint32_t> valueMap;
  for (const Net input : value.inputs) {
    const auto found = std::ranges::find(result.inputs, input);
    valueMap.push_back(static_cast<std::uint32_t>(found - result.inputs.begin()));
    if (found == result.inputs.end()) result.inputs.push_back(input);
  }
  const CubeList on = remapped(value.on, valueMap);
  const CubeList off = remapped(value.off, valueMap);
  ListAlgebra<Cube> algebra(result.inputs.size(), effort);
  for (const auto& [from, to] :
       {std::pair{&reader.on, &result.on}, std::pair{&reader.off, &result.off}}) {
    const Parts parts = split(*from, column, readerMap);
    const std::size_t size =
        parts.without.size() + parts.with1.size() * on.size() + parts.with0.size() * off.size();
    if (size > limit || !effort.spend(size)) return std::nullopt;
    *to = parts.without;
    addProducts(parts.with1, on, *to);
    addProducts(parts.with0, off, *to);
    // Where the net is open the reader is fixed only if both of its values agree.
    if (!value.isComplete) addProducts(parts.with0, parts.with1, *to);
    if (!algebra.simplify(*to)) return std::nullopt;
  }
  if (!expand(result.on, result.off, algebra, effort)) return std::nullopt;
  if (!expand(result.off, result.on, algebra, effort)) return std::nullopt;
  return result;
}

class Folder {
 public:
  Folder(Netlist& netlist, const Folding& folding, Report& report)
      : netlist_(netlist), folding_(folding), report_(report), effort_(flatEffort) {
    pieceOf_.assign(netlist.nets.size(), none);
    readers_.resize(netlist.nets.size());
    isPort_.assign(netlist.nets.size(), false);
    for (const Port& port : netlist.ports) {
      for (const Net net : port.bits) isPort_[net] = true;
    }
    isOfLoop_ = netsOfLoops(netlist);
    for (std::size_t i = 0; i < netlist.nets.size(); ++i) addPieces(static_cast<Net>(i));
  }

  void run() {
    std::optional<Net> loop;
    const std::vector<Net> order =
        combinationalOrder(netlist_, std::vector<bool>(netlist_.nets.size(), false), loop);
    bool isChanged = true;
    for (std::size_t round = 0; isChanged && round < mostRounds; ++round) {
      isChanged = false;
      for (const Net net : order) isChanged = tryNet(net) || isChanged;
    }
    for (Piece& piece : pieces_) {
      if (piece.rails) *piece.home = fromTwoRail(*std::move(piece.rails), piece.canInvert);
    }
  }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  void addPieces(Net net) {
    NetRecord& record = netlist_.nets[net];
    const bool isRegister = std::holds_alternative<Register>(record.driver);
    forEachFunctionOf(record, [&](Function& function, std::string_view role) {
      const bool isControl = role != "logic" && role != "data";
      Effort effort(foldEffort);
      Piece piece{&function, twoRail(function, effort), !isRegister && !isControl, isControl};
      for (const Net input : function.inputs) addReader(input, pieces_.size());
      if (std::holds_alternative<Function>(record.driver)) pieceOf_[net] = pieces_.size();
      pieces_.push_back(std::move(piece));
    });
  }

  void addReader(Net net, std::size_t piece) {
    auto& readers = readers_[net];
    if (std::ranges::find(readers, piece) == readers.end()) readers.push_back(piece);
  }

  bool reads(const Piece& piece, Net net) const {
    const auto& inputs = piece.rails ? piece.rails->inputs : piece.home->inputs;
    return std::ranges::find(inputs, net) != inputs.end();
  }

  bool isCandidate(Net net) const {
    const std::size_t piece = pieceOf_[net];
    if (piece == none || !pieces_[piece].rails || netlist_.nets[net].kept) return false;
    if (reads(pieces_[piece], net) || readers_[net].empty()) return false;
    if (folding_.flat) return true;
    // The names of a loop's states are what it can be compared by.
    return !isPort_[net] && (!isOfLoop_[net] || netlist_.nets[net].isUnnamed);
  }

  // Whether the net went.
  bool tryNet(Net net) {
    if (!isCandidate(net)) return false;
    const TwoRail value = *pieces_[pieceOf_[net]].rails;
    const std::size_t ownTerms = pieces_[pieceOf_[net]].terms();
    std::vector<std::pair<std::size_t, TwoRail>> changes;
    std::size_t before = isPort_[net] ? 0 : ownTerms + nodeCost;
    std::size_t after = 0;
    for (const std::size_t reader : readers_[net]) {
      const Piece& piece = pieces_[reader];
      if (!piece.rails) return failFlat(net);
      const std::size_t limit = mostTerms(piece);
      std::optional<TwoRail> changed = substituteIn(*piece.rails, net, value, limit);
      if (!changed) return failFlat(net);
      Piece trial{nullptr, std::move(changed), piece.canInvert, piece.isControl};
      before += piece.terms();
      after += trial.terms();
      if (!folding_.flat && trial.terms() > limit) return false;
      changes.emplace_back(reader, *std::move(trial.rails));
    }
    if (!folding_.flat && after > before) return false;
    commit(net, changes);
    return true;
  }

  std::size_t mostTerms(const Piece& piece) const {
    return std::max(piece.terms(), piece.isControl ? 1 : folding_.terms);
  }

  std::optional<TwoRail> substituteIn(const TwoRail& reader, Net net, const TwoRail& value,
                                      std::size_t limit) {
    if (folding_.flat) return substitute(reader, net, value, mostCubes, effort_);
    Effort effort(foldEffort);
    // Simplification seldom wins more than a tenfold.
    return substitute(reader, net, value, 100 + 10 * limit, effort);
  }

  bool failFlat(Net net) {
    if (folding_.flat && !hasFailed_) {
      report_.problems.push_back(netlist_.nets[net].name +
                                 ": the flat design is too large; leave --flat out");
    }
    hasFailed_ = hasFailed_ || folding_.flat;
    return false;
  }

  void commit(Net net, std::vector<std::pair<std::size_t, TwoRail>>& changes) {
    for (auto& [reader, rails] : changes) {
      for (const Net input : pieces_[reader].rails->inputs) std::erase(readers_[input], reader);
      for (const Net input : rails.inputs) addReader(input, reader);
      pieces_[reader].rails = std::move(rails);
    }
    if (isPort_[net]) return;
    const std::size_t own = pieceOf_[net];
    for (const Net input : pieces_[own].rails->inputs) std::erase(readers_[input], own);
    pieces_[own].rails.reset();
    pieceOf_[net] = none;
    netlist_.nets[net].driver = Undriven{};
  }

  Netlist& netlist_;
  const Folding& folding_;
  Report& report_;
  Effort effort_;
  bool hasFailed_ = false;
  std::vector<Piece> pieces_;
  std::vector<std::size_t> pieceOf_;               // by net that a function drives
  std::vector<std::vector<std::size_t>> readers_;  // by net: pieces, in order of joining
  std::vector<bool> isPort_;
  std::vector<bool> isOfLoop_;  // by net
};

}  // namespace

void fold(Netlist& netlist, const Folding& folding, Report& report) {
  Folder(netlist, folding, report).run();
}

}  // namespace ostrel::convert
