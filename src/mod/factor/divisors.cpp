// Fast extract: divisors of two cubes, and of one, found by looking at pairs.
//
// Idea. Any two cubes of a function have a divisor: what is left of each without the literals that
// both have. Equal divisors of different pairs are one node, and their pairs one cube each. A
// divisor of two single literals is at the same time the complement of a cube of two literals, and
// one of two literals each that differ in the sense of one has a complement of the same form:
// pairs with either are counted together. The divisor that saves the most literals gets a node,
// the pairs of the cubes that went and came are counted anew, and so on.
//
// Example. abx + acx, bdy + cdy and z!b!c: the divisor b + c serves all three: axn, dyn and z!n.
//
// Cost. Pairs of cubes of each function at first, and for each divisor those of the cubes that
// change. Divisors of many literals are left out: they hardly ever come twice. Arithmetic that was
// flattened loses nine cubes in ten to its first divisors, a random table none: so the work goes on
// only while the cubes get fewer.
//
// Order. Of divisors that save the same, the one that was met first, functions and cubes in order.
#include "factor/divisors.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>
#include <utility>

#include "minimizer/hash_index.h"
#include "minimizer/hash_key.h"

namespace ostrel {
namespace {

using Literal = std::uint32_t;  // twice the column, and 1 for the true sense
using Literals = std::vector<Literal>;

constexpr std::size_t maxDivisorLiterals = 6;
constexpr std::uint32_t none = UINT32_MAX;
constexpr int termValue = 1;                 // literals that a term counts for
constexpr std::size_t patience = 1'000'000;  // steps in which a tenth of the cubes has to go

/// A sum of two cubes; the first is the lesser one.
struct Divisor {
  Literals first;
  Literals second;
  friend bool operator==(const Divisor&, const Divisor&) = default;
  friend auto operator<=>(const Divisor&, const Divisor&) = default;
};

Divisor sorted(Literals a, Literals b) {
  if (b < a) std::swap(a, b);
  return {std::move(a), std::move(b)};
}

/// The literal in which two cubes of two literals each differ in sense alone, or `none`.
Literal opposed(const Divisor& divisor) {
  for (const Literal literal : divisor.first) {
    if (std::ranges::find(divisor.second, literal ^ 1U) != divisor.second.end()) return literal;
  }
  return none;
}

/// lx + !ly becomes l!x + !l!y.
Divisor complement(const Divisor& divisor, Literal l) {
  Divisor result = divisor;
  for (Literals* cube : {&result.first, &result.second}) {
    for (Literal& literal : *cube) {
      if ((literal ^ l) > 1) literal ^= 1U;
    }
    std::ranges::sort(*cube);
  }
  return sorted(std::move(result.first), std::move(result.second));
}

struct Named {
  Divisor divisor;
  bool isComplement = false;
};

/// A divisor and its complement have one name.
Named named(Divisor divisor) {
  if (divisor.first.size() == 2 && divisor.second.size() == 2) {
    if (const Literal literal = opposed(divisor); literal != none) {
      Divisor other = complement(divisor, literal);
      if (other < divisor) return {std::move(other), true};
    }
  }
  return {std::move(divisor), false};
}

std::uint64_t keyOf(const Divisor& divisor) {
  std::uint64_t key = hashKey;
  for (const Literals* cube : {&divisor.first, &divisor.second}) {
    key = mixBits(key + cube->size());
    for (const Literal literal : *cube) key = mixBits(key ^ (literal + 1));
  }
  return key;
}

Literals literalsOf(const Cube& cube) {
  Literals result;
  cube.forEachLiteral([&](std::size_t column, char literal) {
    result.push_back(static_cast<Literal>(2 * column + (literal == '1' ? 1 : 0)));
  });
  return result;
}

Cube cubeOf(const Literals& literals) {
  Cube cube;
  for (const Literal literal : literals) cube.set(literal / 2, (literal & 1U) != 0 ? '1' : '0');
  return cube;
}

Literals without(const Literals& all, const Literals& gone) {
  Literals result;
  std::ranges::set_difference(all, gone, std::back_inserter(result));
  return result;
}

class Extraction {
 public:
  Extraction(Network& network, const FactorLimits& limits, Effort& effort)
      : network_(network), limits_(limits), effort_(effort), cubesOf_(network.functions.size()) {
    mark_ = {0, effort.left()};
    for (std::size_t f = 0; f < network.functions.size(); ++f) {
      for (const Cube& cube : network.functions[f].on) {
        if (isWorthwhile()) add(f, literalsOf(cube));
      }
    }
    mark_.cubes = there_;
  }

  bool run() {
    while (isWorthwhile()) {
      const auto best = std::ranges::max_element(values_);
      if (best == values_.end() || *best <= 0) break;
      take(static_cast<std::size_t>(best - values_.begin()));
    }
    if (!isWorthwhile()) return false;
    for (std::size_t f = 0; f < cubesOf_.size(); ++f) {
      NetworkFunction& function = network_.functions[f];
      function.on.clear();
      for (const std::uint32_t id : cubesOf_[f]) function.on.push_back(cubeOf(cubes_[id].literals));
      function.off.clear();
      function.hasOff = false;
    }
    return true;
  }

 private:
  struct Entry {
    Literals literals;
    std::size_t function;
    bool isThere = true;
  };
  /// A pair of cubes with the divisor, or a single one with its complement.
  struct Use {
    std::uint32_t a;
    std::uint32_t b;
    bool isComplement;
  };

  /// False where the last steps, or all of them, came to nothing.
  bool isWorthwhile() {
    if (10 * there_ < 9 * mark_.cubes) mark_ = {there_, effort_.left()};
    return !effort_.isSpent() && mark_.effort - effort_.left() <= patience;
  }

  bool isNode(std::size_t f) const { return f >= network_.outputs; }

  void add(std::size_t f, Literals literals) {
    std::vector<std::uint32_t>& all = cubesOf_[f];
    const auto isSame = [&](std::uint32_t id) { return cubes_[id].literals == literals; };
    if (std::ranges::any_of(all, isSame)) return;
    const auto id = static_cast<std::uint32_t>(cubes_.size());
    cubes_.push_back({std::move(literals), f});
    count(id, +1);
    cubesOf_[f].push_back(id);
    ++there_;
  }

  void remove(std::uint32_t id) {
    std::erase(cubesOf_[cubes_[id].function], id);
    cubes_[id].isThere = false;
    --there_;
    count(id, -1);
  }

  /// Counts what the cube gives with each other one of its function, in or out.
  void count(std::uint32_t id, int sign) {
    const std::size_t f = cubes_[id].function;
    effort_.spend(1);
    for (const std::uint32_t other : cubesOf_[f]) {
      if (isNode(f) && cubesOf_[f].size() == 1) break;  // a new node's own two cubes
      if (effort_.isSpent()) return;
      countPair(other, id, sign);
    }
    const Literals& own = cubes_[id].literals;
    for (std::size_t i = 0; i < own.size(); ++i) {
      for (std::size_t j = i + 1; j < own.size(); ++j) {
        enter({{{own[i] ^ 1U}, {own[j] ^ 1U}}, true}, {id, none, true}, sign, 1);
      }
    }
  }

  void countPair(std::uint32_t a, std::uint32_t b, int sign) {
    effort_.spend(1);
    const Literals& x = cubes_[a].literals;
    const Literals& y = cubes_[b].literals;
    Literals first = without(x, y);
    Literals second = without(y, x);
    const std::size_t length = first.size() + second.size();
    if (first.empty() || second.empty() || length > maxDivisorLiterals) return;
    if (length == 2 && (first[0] ^ second[0]) == 1) return;
    const int base = static_cast<int>(x.size() - first.size());
    const int value = base + static_cast<int>(length) - 1 + termValue;
    Named name = named(sorted(std::move(first), std::move(second)));
    const bool isComplement = name.isComplement;
    enter(std::move(name), {a, b, isComplement}, sign, value);
  }

  void enter(Named name, Use use, int sign, int value) {
    const std::uint64_t key = keyOf(name.divisor);
    const auto isMeant = [&](std::uint32_t n) { return divisors_[n] == name.divisor; };
    std::uint32_t number = index_.find(key, isMeant);
    if (number == HashIndex::none) {
      number = index_.add(key);
      const std::size_t length = name.divisor.first.size() + name.divisor.second.size();
      values_.push_back(-static_cast<int>(length));
      divisors_.push_back(std::move(name.divisor));
      uses_.emplace_back();
    }
    values_[number] += sign * value;
    if (sign > 0) uses_[number].push_back(use);
  }

  /// The uses that are there and don't share a cube.
  std::vector<Use> apart(const std::vector<Use>& uses) const {
    std::vector<Use> result;
    std::vector<std::uint32_t> taken;
    const auto isTaken = [&](std::uint32_t id) {
      return !cubes_[id].isThere || std::ranges::find(taken, id) != taken.end();
    };
    for (const Use& use : uses) {
      if (isTaken(use.a) || (use.b != none && isTaken(use.b))) continue;
      result.push_back(use);
      taken.push_back(use.a);
      if (use.b != none) taken.push_back(use.b);
    }
    return result;
  }

  int valueOf(const Divisor& divisor, const std::vector<Use>& uses) const {
    const int length = static_cast<int>(divisor.first.size() + divisor.second.size());
    int value = -length;
    for (const Use& use : uses) {
      if (use.b == none) {
        ++value;
        continue;
      }
      const int literals = static_cast<int>(cubes_[use.a].literals.size()) +
                           static_cast<int>(cubes_[use.b].literals.size());
      value += (literals - length) / 2 + length - 1 + termValue;
    }
    return value;
  }

  /// How many nodes would stand one behind another up to a node of the divisor. With a limit only
  /// outputs read it, so that no node's level ever rises.
  std::size_t levelOf(const Divisor& divisor) const {
    std::size_t level = 0;
    for (const Literals* cube : {&divisor.first, &divisor.second}) {
      for (const Literal literal : *cube) {
        if (literal / 2 >= network_.width) {
          level = std::max(level, levels_[literal / 2 - network_.width]);
        }
      }
    }
    return level + 1;
  }

  void take(std::size_t number) {
    assert(values_.size() == divisors_.size() && uses_.size() == divisors_.size());
    const Divisor divisor = divisors_[number];
    const std::size_t level = levelOf(divisor);
    std::vector<Use> uses = apart(uses_[number]);
    if (limits_.depth != SIZE_MAX) {
      std::erase_if(uses, [&](const Use& use) { return isNode(cubes_[use.a].function); });
      if (level > limits_.depth) uses.clear();
    }
    effort_.spend(uses_[number].size());
    const int value = valueOf(divisor, uses);
    if (value <= 0 || uses.empty()) {
      values_[number] = INT32_MIN / 2;  // not worth another look
      return;
    }
    levels_.push_back(level);
    substitute(divisor, uses);
    values_[number] = std::min(values_[number], 0);
  }

  void substitute(const Divisor& divisor, const std::vector<Use>& uses) {
    const std::size_t f = network_.functions.size();
    const auto column = static_cast<Literal>(network_.columnOf(f));
    NetworkFunction& node = network_.functions.emplace_back();
    node.limit = network_.nodeLimit;
    cubesOf_.emplace_back();
    for (const Use& use : uses) {
      const std::size_t reader = cubes_[use.a].function;
      Literals cube;
      if (use.b == none) {
        cube = without(cubes_[use.a].literals,
                       Literals{divisor.first[0] ^ 1U, divisor.second[0] ^ 1U});
      } else {
        std::ranges::set_intersection(cubes_[use.a].literals, cubes_[use.b].literals,
                                      std::back_inserter(cube));
      }
      cube.push_back(2 * column + (use.isComplement ? 0 : 1));
      remove(use.a);
      if (use.b != none) remove(use.b);
      add(reader, std::move(cube));
    }
    add(f, divisor.first);
    add(f, divisor.second);
  }

  Network& network_;
  const FactorLimits& limits_;
  Effort& effort_;
  std::vector<Entry> cubes_;
  std::vector<std::vector<std::uint32_t>> cubesOf_;  // those that are there, of each function
  HashIndex index_;                                  // divisors by their literals
  std::vector<Divisor> divisors_;
  std::vector<int> values_;  // literals that each saves, by its uses
  std::vector<std::vector<Use>> uses_;
  std::vector<std::size_t> levels_;  // of the nodes, where depth is limited
  struct Mark {
    std::size_t cubes;   // that were there
    std::size_t effort;  // that was left
  };
  Mark mark_{};            // where a tenth of the cubes had gone since the mark before
  std::size_t there_ = 0;  // cubes
};

}  // namespace

bool extractDivisors(Network& network, const FactorLimits& limits, Effort& effort) {
  Network copy = network;
  if (!Extraction(copy, limits, effort).run()) return false;
  network = std::move(copy);
  return true;
}

}  // namespace ostrel
