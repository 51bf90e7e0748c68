// Identities that shorten an exclusive-or sum.
//
// Idea. Link: for two cubes with dashes at the same places that differ in k literals, k cubes with
// one dash more have the same exclusive OR. The i-th of them has the literals of the first cube in
// front of the i-th difference, a dash there, and the literals of the second cube behind it. This
// is the exorlink of Song and Perkowski ("EXORCISM-MV-2", 1993), for cubes with the same dashes.
//
// Cross-link: if b has one dash more than a and dashes wherever a has, let a' be a with that
// literal inverted and t be a with a dash in its place. Then a XOR b = a' XOR (t XOR b), and t and
// b can be linked.
//
// A pass links all pairs in one group after the other, a cross pass all pairs of neighbouring
// groups; they alternate until the cross pass finds nothing. In the end equal cubes cancel in
// pairs. It ends because cubes move only to groups with more dashes, while a cross-link leaves a
// in its place.
//
// Example. The link of "111" and "000" is "-00", "1-0", "11-". For "110" and "-11", a cross-link:
// a' = "010", and "-10", "-11" link to "-1-".
//
// Cost. A pass compares all pairs of a group, and a group is given up above 128 cubes. Most groups
// come to rest soon: those without a change since a pass found nothing in them are passed over.
//
// Order. Part of the output, do not tidy: each pair takes the first partner behind it, whether that
// pays or not (for k above 2 the list grows); new cubes come to the front of a group that the walk
// has yet to reach; the first cube of a cross-link stays in hand with its literal inverted. Where a
// group is counted decides whether there is a cover at all.
#include <utility>

#include "minimizer/marked_lists.h"

namespace ostrel {
namespace {

/// Puts the link of two cubes into the groups; false, and nothing done, if there is none because
/// their dashes differ or they are equal.
template <PackedCube C>
bool linkCubes(const C& a, const C& b, MarkedGroups<C>& groups) {
  if (!haveSameDashes(a, b) || a == b) return false;
  C mixed = b;  // the literals of a in front of the column in hand, those of b from there on
  for (std::size_t i = 0; i < b.blockCount(); ++i) {
    const std::uint64_t differing = a.block(i).value ^ b.block(i).value;
    for (std::uint64_t rest = differing; rest != 0; rest &= rest - 1) {
      const std::size_t column = i * 64 + static_cast<std::size_t>(std::countr_zero(rest));
      C link = mixed;
      link.set(column, '-');
      pushCube(groups, std::move(link));
      mixed.invert(column);
    }
  }
  return true;
}

/// Cross-links a with b, which has one dash more; true if the pair was rewritten.
template <PackedCube C>
bool crossLink(C& a, MarkedCube<C>& b, MarkedGroups<C>& groups) {
  // With the dashes of a among those of b, b has exactly one more, in a column where a is literal.
  std::size_t column = 0;
  for (std::size_t i = 0; i < std::max(a.blockCount(), b.cube.blockCount()); ++i) {
    const std::uint64_t aCare = a.block(i).care;
    const std::uint64_t bCare = b.cube.block(i).care;
    if ((bCare & ~aCare) != 0) return false;
    if (aCare != bCare)
      column = i * 64 + static_cast<std::size_t>(std::countr_zero(aCare & ~bCare));
  }
  C widened = a;
  widened.set(column, '-');
  if (!linkCubes(widened, b.cube, groups)) return false;
  b.deleted = true;
  a.invert(column);
  return true;
}

enum class CrossResult { Unchanged, Changed, OverLimit };

/// The passes over the groups.
template <PackedCube C>
class XorReduction {
 public:
  explicit XorReduction(MarkedGroups<C>& groups)
      : groups_(groups), isPaired_(groups.size(), false), isCrossed_(groups.size(), false) {}

  bool run() {
    CrossResult crossed = CrossResult::Changed;
    while (crossed == CrossResult::Changed) {
      if (!pairPass()) return false;
      crossed = crossPass();
    }
    if (crossed == CrossResult::OverLimit) return false;
    for (MarkedList<C>& group : groups_) {
      removePairs(group, [](const C& a, const C& b) { return a == b; });
    }
    return true;
  }

 private:
  // The only place where a group is counted. Linked cubes stand in the next group in time for it.
  bool pairPass() {
    for (std::size_t d = 0; d < groups_.size(); ++d) {
      if (groups_[d].size() > xorGroupLimit) return false;
      if (isPaired_[d]) continue;
      const bool hasChanged = removePairs(
          groups_[d], [this](const C& a, const C& b) { return linkCubes(a, b, groups_); });
      if (hasChanged) markChanged(d, d + 1);
      isPaired_[d] = true;
    }
    return true;
  }

  // A cube of the lower group stays, with one literal inverted, and is compared further in that
  // form.
  //
  // Nothing is added to a group once its turn is over, and the next pair pass adds more before it
  // counts. So a group that ends its turn above the limit is bound to fail there, and it is
  // reported at once: the groups above it could grow by a factor of the width at each step.
  CrossResult crossPass() {
    CrossResult result = CrossResult::Unchanged;
    for (std::size_t d = 1; d < groups_.size(); ++d) {
      if (!isCrossed_[d]) {
        isCrossed_[d] = !crossGroups(d);
        if (!isCrossed_[d]) {
          markChanged(d - 1, d + 1);
          result = CrossResult::Changed;
        }
      }
      if (groups_[d].size() > xorGroupLimit) return CrossResult::OverLimit;
    }
    return result;
  }

  // True if the cubes of a group had cross-links with those of the group below it.
  bool crossGroups(std::size_t d) {
    bool hasChanged = false;
    MarkedList<C>& lower = groups_[d - 1];
    MarkedList<C>& upper = groups_[d];
    for (std::size_t i = lower.size(); i-- > 0;) {
      for (std::size_t j = upper.size(); j-- > 0;) {
        if (upper[j].deleted) continue;
        hasChanged |= crossLink(lower[i].cube, upper[j], groups_);
      }
    }
    purgeGroup(upper);
    return hasChanged;
  }

  // The groups from the first to the last have changed, and each of them concerns the cross-links
  // with the one below it and the one above it.
  void markChanged(std::size_t first, std::size_t last) {
    for (std::size_t d = first; d <= last + 1 && d < groups_.size(); ++d) {
      if (d <= last) isPaired_[d] = false;
      isCrossed_[d] = false;
    }
  }

  MarkedGroups<C>& groups_;
  std::vector<bool> isPaired_;   // no two cubes of the group have a link
  std::vector<bool> isCrossed_;  // nor a cross-link with one of the group below
};

}  // namespace

template <PackedCube C>
bool reduceXorCover(MarkedGroups<C>& groups) {
  return XorReduction<C>(groups).run();
}

template bool reduceXorCover(MarkedGroups<Cube>&);
template bool reduceXorCover(MarkedGroups<Cube64>&);

}  // namespace ostrel
