// Buried nodes: a Signal with a name of its own, a column at the end of the table, and terms that
// other Equations gave up.
//
// Order: the number in a name is the lowest that is free, and the node stands behind all older
// Signals and columns; both are seen in the output.
#include <algorithm>
#include <cassert>

#include "design/design.h"
#include "run/log.h"

namespace ostrel {
namespace {

constexpr std::size_t maxNodeNameLength = 35;
constexpr std::size_t maxBaseLength = 31;  // leaves room for "_" and three digits

/// "base_n", the base cut so far that the whole fits.
std::string nodeName(std::string_view base, int n) {
  const std::string number = std::string("_").append(std::to_string(n));
  const std::size_t room = std::min(maxBaseLength, maxNodeNameLength - number.size());
  return std::string(base.substr(0, room)) + number;
}

}  // namespace

Signal& Design::createNodeFrom(std::span<const Term> group, std::string_view baseName) {
  assert(!group.empty());
  PlaName record;
  record.base = makeNodeName(baseName);
  record.registerType = RegisterType::COM;
  Signal& node = *declare(record, true);
  addReadingColumn(node);
  note({"buried node ", node.name, " generated"});
  node.reduced = false;
  Equation& logic = node.makeEquation(SlotLogic);
  logic.extension = Extension::None;
  for (const Term term : group) logic.addOnTerm(term);
  if (logicIsCurrent_) {
    logic_.push_back(&node);  // the newest Signal stands behind all others
  } else {
    listLogic();
  }
  assert(logic_.back() == &node);
  return node;
}

/// The first free name for the lowest number. Names are never given back once nodes are made, so
/// the search goes on behind the last number that it gave out for a base.
std::string Design::makeNodeName(std::string_view baseName) {
  const std::string_view base = baseName.substr(0, maxBaseLength);
  int& number = nextNodeNumber_[std::string(base)];
  std::string name = nodeName(base, number);
  while (find(name) != nullptr) name = nodeName(base, ++number);
  return name;
}

}  // namespace ostrel
