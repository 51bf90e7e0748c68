// What decision diagrams are stored in: nodes that exist once, and results that are found again.
//
// Which results are still found decides how much work a run counts, so their places depend on the
// keys alone; the secret of the process moves only nodes, which are found wherever they lie.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "minimizer/hash_key.h"

namespace ostrel {

/// Nodes of four numbers each; equal nodes have one number, given in the order of creation.
class NodeTable {
 public:
  using Node = std::array<std::uint32_t, 4>;

  const Node& operator[](std::uint32_t number) const { return nodes_[number]; }
  std::size_t size() const { return nodes_.size(); }

  /// The number of the node, which is added if it is new.
  std::uint32_t number(const Node& node) {
    if (2 * nodes_.size() >= slots_.size()) grow();
    std::uint32_t& slot = slots_[find(node)];
    if (slot == 0) {
      nodes_.push_back(node);
      slot = static_cast<std::uint32_t>(nodes_.size());
    }
    return slot - 1;
  }

 private:
  // A comparison of arrays is a call into a library.
  static bool isEqual(const Node& a, const Node& b) {
    return a[1] == b[1] && a[2] == b[2] && a[3] == b[3] && a[0] == b[0];
  }

  std::size_t find(const Node& node) const {
    const std::size_t mask = slots_.size() - 1;
    std::uint64_t hash = (std::uint64_t{node[0]} << 32U | node[1]) * factors_[0];
    hash = mixBits(hash + (std::uint64_t{node[2]} << 32U | node[3]) * factors_[1]);
    std::size_t i = static_cast<std::size_t>(hash) & mask;
    while (slots_[i] != 0 && !isEqual(nodes_[slots_[i] - 1], node)) i = (i + 1) & mask;
    return i;
  }

  void grow() {
    slots_.assign(slots_.size() * 4, 0);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      slots_[find(nodes_[i])] = static_cast<std::uint32_t>(i + 1);
    }
  }

  std::array<std::uint64_t, 2> factors_ = {hashFactor(0), hashFactor(1)};
  std::vector<Node> nodes_;
  std::vector<std::uint32_t> slots_ = std::vector<std::uint32_t>(256, 0);  // number + 1, 0 if free
};

/// Results by a pair of operands, the first of which isn't 0. It forgets: a new result takes the
/// place of an older one.
class ResultCache {
 public:
  std::optional<std::uint64_t> find(std::uint32_t a, std::uint32_t b) const {
    assert(a != 0);
    const Entry& entry = entries_[place(a, b)];
    if (entry.a != a || entry.b != b) return std::nullopt;
    return entry.result;
  }

  void store(std::uint32_t a, std::uint32_t b, std::uint64_t result) {
    if (++stored_ > entries_.size() && entries_.size() < maxSize) grow();
    entries_[place(a, b)] = {a, b, result};
  }

 private:
  static constexpr std::size_t maxSize = std::size_t{1} << 20U;

  struct Entry {
    std::uint32_t a = 0;  // 0 where there is none
    std::uint32_t b = 0;
    std::uint64_t result = 0;
  };

  std::size_t place(std::uint32_t a, std::uint32_t b) const {
    return static_cast<std::size_t>(mixBits(std::uint64_t{a} << 32U | b)) & (entries_.size() - 1);
  }

  void grow() {
    std::vector<Entry> old(entries_.size() * 4);
    old.swap(entries_);
    for (const Entry& entry : old) {
      if (entry.a != 0) entries_[place(entry.a, entry.b)] = entry;
    }
  }

  std::size_t stored_ = 0;
  std::vector<Entry> entries_ = std::vector<Entry>(256);
};

}  // namespace ostrel
