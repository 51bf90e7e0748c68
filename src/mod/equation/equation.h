// One logic function in two-level form.
//
// An Equation holds an ON set (the terms that say when the function is 1), an OFF set (when it is
// 0), or both, over the input columns of its design. Either set may be missing: it is read from
// the file, or worked out from the other one when a pass asks for it. A polarity says whether the
// sets are read as they stand or inverted. ON is the working set of all passes.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "fil/pla_file.h"
#include "fil/status.h"
#include "minimizer/term_chain.h"
#include "minimizer/term_table.h"
#include "run/options.h"
#include "twolevel/minimize.h"

namespace ostrel {

/// Which constant Equation::isConstant asks for.
enum class Constant : unsigned char { Zero, One, Either };

/// The two sets that the rows of a file give for one output column, in row order.
struct ColumnSets {
  TermChain on;
  TermChain off;
  TermChain free;  ///< "-"; read for --minimize alone
};

class ColumnMap;
struct XorOperands;

/// What is known after a two-level minimisation, and the steps that it took.
struct Minimized {
  CoverState state = CoverState::Given;
  std::size_t steps = 0;
};

class Equation {
 public:
  /// An Equation without terms; the table of its terms outlives it.
  explicit Equation(TermTable& terms) : terms_(&terms) {}

  // ---- the output column that it was read from and goes back to ----

  Extension extension = Extension::End;  ///< End as long as no column was read
  Polarity polarity = Polarity::None;    ///< only Inverted inverts
  XorHalf xorRole = XorHalf::None;
  char phase = '1';  ///< of the output column, written back with it

  /// --lossless found that the rows leave every point open: any function is right.
  bool isFree = false;

  // ---- reading ----

  /// Fills the Equation from output column `column` of the file, whose rows gave `sets`. A percent
  /// mark toggles the polarity. A column without a row is the constant 0 in a file of type f, and
  /// an empty Equation otherwise. Fatal, with a message, if a column was read before.
  Status readColumn(const PlaFile& file, int column, ColumnSets sets);

  /// Makes the sets say a constant, in front of the polarity.
  void makeConstant(bool isOne) {
    const TermChain universal = {terms_->term(Cube())};
    onSet_ = isOne ? universal : TermChain();
    offSet_ = isOne ? TermChain() : universal;
  }

  void addOnTerm(Term term) { onSet_.push_back(term); }
  void addOffTerm(Term term) { offSet_.push_back(term); }

  // ---- queries ----

  const TermChain& onSet() const { return onSet_; }
  const TermChain& offSet() const { return offSet_; }
  int onCount() const { return static_cast<int>(onSet_.size()); }
  int offCount() const { return static_cast<int>(offSet_.size()); }
  bool isEmpty() const { return onSet_.empty() && offSet_.empty(); }

  /// The number of terms of a set; for Smaller the smaller count that isn't 0, or 0.
  int termCount(SetSelector selector) const;

  /// True if the Equation is the constant. Without terms it is 0, or 1 if it is inverted.
  bool isConstant(Constant constant) const;

  /// True if some term of the ON set has no literal.
  bool onHoldsUniversal() const;

  /// True if the constant, which is One or Zero, is proven to be a choice that the rows of a file
  /// of this type leave: no point wants the other one. Rows that contradict each other want
  /// nothing.
  bool mayBe(Constant constant, PlaType type) const;

  /// True if the square of the columns in use times the terms of both sets passes 4096: then no
  /// missing set is worked out. The columns are those of the support, and without one there are
  /// none.
  bool isTooComplex() const;

  /// True if the ON sets, or the OFF sets, are not empty and hold the same terms.
  bool sameFunction(const Equation& other) const;

  // ---- support: the columns that the ON set uses ----

  /// Works the support out, unless it is there. It describes the ON set of that moment: a change of
  /// columns and minimize() drop it, and no told reduction or exchange of sets refreshes it.
  void computeSupport();

  /// Adds the support to `columns`, which keeps what it has.
  void markUsedColumns(ColumnSet& columns);

  // ---- choice of sets ----

  /// Drops a set, unless it stands for a constant: the ON set of a constant 1, the OFF set of a
  /// constant 0.
  void clearOnSet();
  void clearOffSet();

  /// Keeps the set that the selector names (for Smaller the smaller one, ON on a tie), and brings
  /// a lone OFF set into ON form by inversion. True if that changed the polarity.
  bool keepSets(SetSelector selector);

  /// Exchanges the sets, which complements the function.
  void swapSets() { onSet_.swap(offSet_); }

  /// Inverted becomes None, every other polarity Inverted.
  void togglePolarity();

  /// Brings an inverted constant into plain form.
  void normalizePolarity();

  /// Replaces a reset extension by its set twin and the other way round.
  void swapExtension();

  /// Minimises the wanted sets that are there, then works out a wanted one that is missing as the
  /// complement of the other. False, with nothing changed, if a set is missing and isTooComplex,
  /// or if there is no ON set and the complement of the OFF set is beyond all bounds.
  bool reduce(SetSelector selector);

  /// Like reduce(), for a caller that lets go of the larger set anyway: an OFF set that is proven
  /// to be no smaller than the ON set is not worked out.
  bool reduceForSmaller(SetSelector selector);

  /// Puts covers of few terms in the place of both sets, those of a complement where one is
  /// missing; where both were given, points in neither are free. The sets keep what they have if
  /// that is less, and a larger set may stay or go missing. Says what is known of the smaller set
  /// afterwards. (minimize.h of the two-level minimisation.)
  Minimized minimize(WantedSets wanted, Thoroughness thoroughness);

  /// A pair with one term on the left and fewer than `termLimit` terms in all, or nothing; found by
  /// a wider search than that of decomposeXor. The right operand may be inverted if `mayTurn`. For
  /// an Equation that isn't inverted and has an ON set. Adds the steps that it took to `steps`.
  std::optional<std::pair<Equation, Equation>> findXorPair(int termLimit, bool mayTurn,
                                                           Thoroughness thoroughness,
                                                           std::size_t& steps) const;

  // ---- columns ----

  /// Replaces every term by its successor after a deletion of columns.
  void renumber(const std::vector<Term>& renumbered);

  // ---- splitting ----

  /// Rearranges both sets so that terms which read the same columns stand together; a tie goes to
  /// the term that stands first.
  void orderTerms();

  /// Replaces the listed terms of the ON set, which are distinct and at least one, by one literal
  /// of `column`, "0" for an inverted polarity and "1" otherwise, at the end of the chain, and
  /// drops the OFF set. False, with nothing changed, if a term is missing, or with `exact` if the
  /// list isn't the whole set.
  bool substituteNode(std::span<const Term> list, std::size_t column, Polarity nodePolarity,
                      bool exact);

  /// Drops the later copies of equal terms from the ON set. True if there were any.
  bool dropRepeatedTerms();

  // ---- exclusive-or synthesis ----

  /// The function as an exclusive-or pair. None if no pair was found, or if each pair is proven to
  /// have `termLimit` terms or more. The Equation's function stays, but it may have been brought to
  /// polarity None, with an OFF set of its own.
  std::optional<XorOperands> decomposeXor(int termLimit);

 private:
  // Of the support only the terms that it comes from are kept: a set of columns for each Equation
  // would take columns times Equations of memory.
  struct Support {
    TermChain chain;
    std::size_t length = 0;  // columns of the design at the time
    std::uint32_t revision = 0;
  };
  bool hasSupport() const;
  ColumnSet supportColumns() const;
  static bool exceedsLimit(std::size_t columns, std::size_t terms);
  std::optional<TermChain> complementOf(const TermChain& chain) const;
  bool workOut(SetSelector selector, bool keepsSmaller);
  bool bringToPlainForm();
  Equation makeXorOperand(std::span<const Cube> cubes, const ColumnMap& map, XorHalf role) const;

  TermTable* terms_;
  TermChain onSet_;
  TermChain offSet_;
  TermChain freeTerms_;  // where the file says that the function may be either
  Support support_;
};

/// A function as the exclusive OR of a left operand, a single product term, and a right operand, a
/// sum of products.
struct XorOperands {
  Equation left;
  Equation right;
};

/// Exchanges the sets of both halves of an exclusive-or pair, which keeps its function, if that
/// makes the right one shorter and leaves the left one a single term.
void swapSetsIfShorter(Equation& left, Equation& right);

}  // namespace ostrel
