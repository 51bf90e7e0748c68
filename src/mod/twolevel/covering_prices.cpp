// Idea. Each row offers a price to be met, and a column costs 1 less the prices of its rows. The
// prices and whatever columns cost less than nothing add up to a number that no choice can go
// below. Rows that no cheap column meets raise their price, those met more than once lower it. On
// the way, choosing columns by what they cost at present prices finds good choices. (Lagrangian
// relaxation with subgradients: Held, Karp, 1971; for covering Caprara, Fischetti, Toth, 1999.)
//
// Example. Rows {1 2}, {2 3}, {1 3}: at a price of 1/2 each, every column costs nothing, the bound
// is 1.5, and so any choice has two columns.
//
// Cost. Each round looks once at every entry of the table; a choice looks at the columns once for
// each that it takes.
//
// Order. Ties go to the first column. Prices are whole numbers, so that every machine rounds alike.
#include <algorithm>
#include <numeric>

#include "twolevel/covering.h"

namespace ostrel {

namespace {

using Price = std::int64_t;
constexpr Price unit = Price{1} << 16U;

class Pricing {
 public:
  Pricing(const std::vector<CoveringRow>& rows, std::size_t columnCount, Effort& effort)
      : effort_(effort), rows_(rows.size()), prices_(rows.size()) {
    std::vector<std::uint32_t> numbers(columnCount, UINT32_MAX);
    for (std::size_t r = 0; r < rows.size(); ++r) {
      for (const std::uint32_t column : rows[r]) {
        if (numbers[column] == UINT32_MAX) {
          numbers[column] = static_cast<std::uint32_t>(names_.size());
          names_.push_back(column);
          columns_.emplace_back();
        }
        rows_[r].push_back(numbers[column]);
        columns_[numbers[column]].push_back(static_cast<std::uint32_t>(r));
      }
      entries_ += rows[r].size();
    }
    for (std::size_t r = 0; r < rows_.size(); ++r) {
      prices_[r] = unit;
      for (const std::uint32_t j : rows_[r]) {
        prices_[r] = std::min(prices_[r], unit / static_cast<Price>(columns_[j].size()));
      }
    }
  }

  PricedCovering run(std::size_t cutoff, std::size_t rounds) {
    Price pace = 2 * unit;
    std::size_t idle = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
      const Price value = offer();
      const bool isBetter = value > bestValue_;
      if (isBetter || round == 0) keep(value);
      if (isBetter || round % 4 == 0) choose();
      if (bound() >= std::min(cutoff, best_.size()) || !effort_.spend(2 * entries_)) break;
      idle = isBetter ? 0 : idle + 1;
      if (idle == 12) {
        idle = 0;
        pace /= 2;
      }
      if (!step(value, pace)) break;
    }
    return answer(cutoff);
  }

 private:
  /// Works out what columns cost; the bound times `unit`.
  Price offer() {
    Price value = std::accumulate(prices_.begin(), prices_.end(), Price{0});
    costs_.assign(columns_.size(), unit);
    for (std::size_t j = 0; j < columns_.size(); ++j) {
      for (const std::uint32_t r : columns_[j]) costs_[j] -= prices_[r];
      value += std::min<Price>(0, costs_[j]);
    }
    return value;
  }

  void keep(Price value) {
    bestValue_ = value;
    bestCosts_ = costs_;
  }

  std::size_t bound() const {
    return static_cast<std::size_t>((std::max<Price>(bestValue_, 0) + unit - 1) / unit);
  }

  /// Moves the prices by how often their rows are met; false where that moves nothing.
  bool step(Price value, Price pace) {
    met_.assign(rows_.size(), 0);
    for (std::size_t j = 0; j < columns_.size(); ++j) {
      if (costs_[j] >= 0) continue;
      for (const std::uint32_t r : columns_[j]) ++met_[r];
    }
    Price norm = 0;
    for (const Price met : met_) norm += (1 - met) * (1 - met);
    if (norm == 0) return false;
    const Price gap = static_cast<Price>(best_.size()) * unit - value;
    const Price size = gap / norm * pace / unit;
    if (size == 0) return false;
    for (std::size_t r = 0; r < rows_.size(); ++r) {
      prices_[r] = std::max<Price>(0, prices_[r] + size * (1 - met_[r]));
    }
    return true;
  }

  /// Chooses a column after the other by its cost for the rows that it still meets, and leaves out
  /// what turns out not to be needed.
  void choose() {
    std::vector<std::uint32_t> chosen;
    std::vector<Price> costs = costs_;
    std::vector<Price> open(columns_.size());
    for (std::size_t j = 0; j < columns_.size(); ++j) {
      open[j] = static_cast<Price>(columns_[j].size());
    }
    met_.assign(rows_.size(), 0);
    for (std::size_t openRows = rows_.size(); openRows > 0;) {
      const std::uint32_t next = cheapest(costs, open);
      chosen.push_back(next);
      effort_.spend(columns_.size());
      for (const std::uint32_t r : columns_[next]) {
        if (met_[r]++ > 0) continue;
        --openRows;
        for (const std::uint32_t j : rows_[r]) {
          --open[j];
          costs[j] += prices_[r];
        }
      }
    }
    leaveOut(chosen);
    if (best_.empty() || chosen.size() < best_.size()) best_ = chosen;
  }

  static std::uint32_t cheapest(const std::vector<Price>& costs, const std::vector<Price>& open) {
    std::size_t best = costs.size();
    Price bestScore = 0;
    for (std::size_t j = 0; j < costs.size(); ++j) {
      if (open[j] == 0) continue;
      const Price score = costs[j] > 0 ? costs[j] * 4096 / open[j] : costs[j] * 4096 * open[j];
      if (best < costs.size() && score >= bestScore) continue;
      best = j;
      bestScore = score;
    }
    return static_cast<std::uint32_t>(best);
  }

  void leaveOut(std::vector<std::uint32_t>& chosen) {
    std::erase_if(chosen, [&](std::uint32_t j) {
      const auto isMetTwice = [&](std::uint32_t r) { return met_[r] > 1; };
      if (!std::all_of(columns_[j].begin(), columns_[j].end(), isMetTwice)) return false;
      for (const std::uint32_t r : columns_[j]) --met_[r];
      return true;
    });
  }

  PricedCovering answer(std::size_t cutoff) const {
    PricedCovering result;
    for (const std::uint32_t j : best_) result.covering.columns.push_back(names_[j]);
    result.covering.bound = std::min(bound(), best_.size());
    const auto limit = static_cast<Price>(std::min(cutoff, best_.size()));
    for (std::size_t j = 0; j < columns_.size(); ++j) {
      const Price with = bestValue_ + std::max<Price>(0, bestCosts_[j]);
      if (with > (limit - 1) * unit) result.excluded.push_back(names_[j]);
    }
    const auto byCost = [&](std::uint32_t a, std::uint32_t b) {
      return bestCosts_[a] < bestCosts_[b];
    };
    result.branch = names_[*std::min_element(best_.begin(), best_.end(), byCost)];
    return result;
  }

  Effort& effort_;
  std::vector<std::vector<std::uint32_t>> rows_;     // own numbers of the columns
  std::vector<std::vector<std::uint32_t>> columns_;  // rows of each column
  std::vector<std::uint32_t> names_;                 // the columns' numbers in the table
  std::size_t entries_ = 0;

  std::vector<Price> prices_;  // of the rows
  std::vector<Price> costs_;   // of the columns, 1 less the prices of their rows
  std::vector<Price> met_;     // scratch: how often a row is met
  Price bestValue_ = -1;
  std::vector<Price> bestCosts_;
  std::vector<std::uint32_t> best_;
};

}  // namespace

PricedCovering priceCovering(const std::vector<CoveringRow>& rows, std::size_t columnCount,
                             std::size_t cutoff, std::size_t rounds, Effort& effort) {
  return Pricing(rows, columnCount, effort).run(cutoff, rounds);
}

}  // namespace ostrel
