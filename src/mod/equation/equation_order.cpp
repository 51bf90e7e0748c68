// The order of terms for cutting: terms that read the same columns stand next to each other.
//
// Idea. The first term is the one with the most literals; each further one is the term that has the
// most columns in common with all that were placed before it. When no term left has a column in
// common, the columns of all that are left take part from there on.
//
// Example: "1---", "11--", "--11" come out as "11--", "1---", "--11".
//
// Cost. The overlaps are kept up to date column by column instead of being counted anew for each
// choice, so it is that of the literals, times a logarithm for the choice of the greatest.
//
// Order. The whole result is one: it decides which terms share a node, and ties go to the term that
// stands first in the chain.
#include <algorithm>
#include <cassert>
#include <optional>
#include <queue>
#include <utility>
#include <vector>

#include "equation/equation.h"

namespace ostrel {
namespace {

class TermOrder {
 public:
  TermOrder(const TermChain& chain, const TermTable& terms)
      : chain_(chain),
        terms_(terms),
        readers_(terms.width()),
        overlap_(chain.size(), 0),
        heaped_(chain.size(), 0),
        placed_(chain.size(), false) {
    for (std::size_t i = 0; i < chain.size(); ++i) {
      terms.cube(chain[i]).forEachLiteral(
          [&](std::size_t column, char) { readers_[column].push_back(i); });
    }
  }

  TermChain order(const ColumnSet& support) {
    TermChain result;
    addColumns(support);
    while (result.size() < chain_.size()) {
      const auto next = takeBest();
      if (!next) {
        if (!addRemaining()) break;
        continue;
      }
      if (result.empty()) clearColumns();
      placed_[*next] = true;
      result.push_back(chain_[*next]);
      ColumnSet columns;
      terms_.cube(chain_[*next]).addSupportTo(columns);
      addColumns(columns);
    }
    appendUnplaced(result);
    return result;
  }

 private:
  using Entry = std::pair<int, std::size_t>;  // overlap, place in the chain
  struct Worse {
    bool operator()(const Entry& a, const Entry& b) const {
      return a.first != b.first ? a.first < b.first : a.second > b.second;
    }
  };

  /// The unplaced term with the greatest overlap above 0. Entries of the heap that a later one
  /// has overtaken are passed over.
  std::optional<std::size_t> takeBest() {
    while (!heap_.empty()) {
      const auto [overlap, i] = heap_.top();
      heap_.pop();
      if (!placed_[i] && overlap_[i] == overlap) return i;
    }
    return std::nullopt;
  }

  /// Terms whose overlap grows go into the heap once, with what it has become.
  void addColumns(const ColumnSet& columns) {
    touched_.clear();
    columns.forEach([this](std::size_t column) {
      if (working_.contains(column)) return;
      working_.insert(column);
      for (const std::size_t i : readers_[column]) {
        if (!placed_[i] && overlap_[i]++ == heaped_[i]) touched_.push_back(i);
      }
    });
    for (const std::size_t i : touched_) heap_.emplace(heaped_[i] = overlap_[i], i);
  }

  void clearColumns() {
    working_.clear();
    heap_ = {};
    std::fill(overlap_.begin(), overlap_.end(), 0);
    std::fill(heaped_.begin(), heaped_.end(), 0);
  }

  /// Lets the columns of all terms left take part. False if they have none.
  bool addRemaining() {
    ColumnSet columns;
    for (std::size_t i = 0; i < chain_.size(); ++i) {
      if (!placed_[i]) terms_.cube(chain_[i]).addSupportTo(columns);
    }
    clearColumns();
    addColumns(columns);
    return !columns.empty();
  }

  /// Terms without a literal have nothing in common with any: they stand behind all others.
  void appendUnplaced(TermChain& result) const {
    for (std::size_t i = 0; i < chain_.size(); ++i) {
      if (!placed_[i]) result.push_back(chain_[i]);
    }
  }

  const TermChain& chain_;
  const TermTable& terms_;
  std::vector<std::vector<std::size_t>> readers_;  // by column, places in the chain
  std::vector<int> overlap_;                       // by place: columns in common with working_
  std::vector<int> heaped_;                        // by place: the overlap in its last entry
  std::vector<std::size_t> touched_;               // scratch
  std::vector<bool> placed_;
  ColumnSet working_;
  std::priority_queue<Entry, std::vector<Entry>, Worse> heap_;
};

}  // namespace

void Equation::orderTerms() {
  for (TermChain* chain : {&onSet_, &offSet_}) {
    if (chain->empty()) continue;
    computeSupport();
    TermChain ordered = TermOrder(*chain, *terms_).order(supportColumns());
    assert(ordered.size() == chain->size() && sameTerms(ordered, *chain));
    *chain = std::move(ordered);
  }
}

}  // namespace ostrel
