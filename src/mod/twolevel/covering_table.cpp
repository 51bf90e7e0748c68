// Idea. Points that lie in the same primes are one row, and a point that lies in more primes than
// another needs no row at all. So the space is halved column by column, each half with the primes
// that reach into it. Where the primes have no literal 1 in a column, the points of its 1 half lie
// in no prime that doesn't hold their twins in the other half too: a 0 half needs only those points
// whose twin is not to be covered. Where one prime is left, or none has a literal left, the half is
// one row. (Row dominance after McCluskey, 1956; on whole subspaces Coudert, Two-level logic
// minimization: an overview, 1994.)
//
// Example. Points of a + b with the primes a, b: the 0 half of a has the row {b}. In the 1 half
// no prime needs a 0, so only points whose twin is not covered count there: a b', with the row {a}.
//
// Cost. A few words for each 64 primes and half; the halves can be as many as the points, which
// effort and limit end.
//
// Order. Rows come in the order of the halves, 0 before 1; equal ones may follow.
// The order decides ties.
#include "twolevel/covering_table.h"

#include <bit>
#include <utility>

namespace ostrel {

namespace {

using Words = std::vector<std::uint64_t>;

// A table in memory, with the copies that its reduction makes of it.
constexpr std::size_t maxEntries = 2'000'000;

class Halving {
 public:
  Halving(Diagram& diagram, std::span<const Cube> primes, std::size_t limit)
      : diagram_(diagram),
        words_((primes.size() + 63) / 64),
        limit_(limit),
        zeros_(diagram.width(), Words(words_)),
        ones_(diagram.width(), Words(words_)) {
    for (std::size_t i = 0; i < primes.size(); ++i) {
      primes[i].forEachLiteral([&](std::size_t column, char literal) {
        (literal == '0' ? zeros_ : ones_)[column][i / 64] |= std::uint64_t{1} << (i % 64);
      });
    }
  }

  std::optional<std::vector<CoveringRow>> rows(Diagram::Edge lower, std::size_t primeCount) {
    Words all(words_, ~std::uint64_t{0});
    if (primeCount % 64 != 0) all.back() >>= 64 - primeCount % 64;
    if (primeCount == 0 || !halve(all, lower, 0)) return std::nullopt;
    return std::move(rows_);
  }

 private:
  bool meets(const Words& a, const Words& b) const {
    for (std::size_t i = 0; i < words_; ++i) {
      if ((a[i] & b[i]) != 0) return true;
    }
    return false;
  }

  static Words without(Words a, const Words& b) {
    for (std::size_t i = 0; i < a.size(); ++i) a[i] &= ~b[i];
    return a;
  }

  static bool isSingle(const Words& set) {
    std::size_t count = 0;
    for (const std::uint64_t word : set) count += bitCount(word);
    return count == 1;
  }

  bool halve(const Words& primes, Diagram::Edge points, std::uint32_t at) {
    if (points == Diagram::zero) return true;
    if (at == diagram_.width() || isSingle(primes)) return emit(primes);
    if (!diagram_.effort().spend(1 + words_ / 8)) return false;
    const bool hasZeros = meets(primes, zeros_[at]);
    const bool hasOnes = meets(primes, ones_[at]);
    Diagram::Edge low = diagram_.low(points, at);
    Diagram::Edge high = diagram_.high(points, at);
    if (!hasZeros && !hasOnes) return halve(primes, diagram_.disjunction(low, high), at + 1);
    if (!hasZeros) high = diagram_.difference(high, low);
    if (!hasOnes) low = diagram_.difference(low, high);
    return halve(without(primes, ones_[at]), low, at + 1) &&
           halve(without(primes, zeros_[at]), high, at + 1);
  }

  bool emit(const Words& primes) {
    if (diagram_.effort().isSpent()) return false;
    CoveringRow row;
    for (std::size_t i = 0; i < words_; ++i) {
      for (std::uint64_t rest = primes[i]; rest != 0; rest &= rest - 1) {
        row.push_back(static_cast<std::uint32_t>(i * 64) +
                      static_cast<std::uint32_t>(std::countr_zero(rest)));
      }
    }
    entries_ += row.size();
    rows_.push_back(std::move(row));
    return rows_.size() <= limit_ && entries_ <= maxEntries;
  }

  Diagram& diagram_;
  std::size_t words_;
  std::size_t limit_;
  std::vector<Words> zeros_;  // for each column the primes with that literal
  std::vector<Words> ones_;
  std::vector<CoveringRow> rows_;
  std::size_t entries_ = 0;
};

}  // namespace

std::optional<std::vector<CoveringRow>> coveringRows(Diagram& diagram, Diagram::Edge lower,
                                                     std::span<const Cube> primes,
                                                     std::size_t limit) {
  return Halving(diagram, primes, limit).rows(lower, primes.size());
}

}  // namespace ostrel
