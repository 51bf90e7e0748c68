// Buried nodes: a Signal with a name of its own, a column at the end of the table, and terms that
// other Equations gave up.
#include <algorithm>

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
  Signal& node = createBuriedNode(baseName);
  node.fillFromTerms(group);
  if (logicListIsCurrent_) {
    logicList_.add(node);  // the newest Signal stands behind all others
  } else {
    classifySignals();
  }
  return node;
}

Signal& Design::createBuriedNode(std::string_view baseName) {
  PlaName record;
  record.base = makeNodeName(baseName);
  record.registerType = RegisterType::COM;
  Signal& node = *declareSignal(record, true);
  addInputColumn(node);
  logMessage(toLog, "<Note> %s: buried node %s generated\n", toolTag, node.name.c_str());
  node.reduced = false;
  return node;
}

/// The first free name for the lowest number. Names are never given back once nodes are made, so
/// the search goes on behind the last number that it gave out for a base.
std::string Design::makeNodeName(std::string_view baseName) {
  const std::string_view base = baseName.substr(0, maxBaseLength);
  int& number = nextNodeNumber_[std::string(base)];
  std::string name = nodeName(base, number);
  while (findSignal(name) != nullptr) name = nodeName(base, ++number);
  return name;
}

std::size_t Design::columnFor(Signal& signal) {
  return signal.columns.empty() ? addInputColumn(signal) : signal.columns.front();
}

std::size_t Design::addInputColumn(Signal& signal) {
  const std::size_t column = columns_.size();
  columns_.push_back({&signal, signal.isCombinatorial() ? Extension::None : Extension::Q});
  signal.columns.push_back(column);
  (signal.isNode ? signal.feedbackColumn : signal.pinColumn) = static_cast<int>(column);
  terms_.appendColumns(1);
  return column;
}

}  // namespace ostrel
