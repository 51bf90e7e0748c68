// A sum of products sorted into groups by number of dashes, and the merging that these groups
// make cheap: two cubes that join have equally many dashes, and a cube that swallows another
// through one literal has exactly one dash more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/coverage.h"
#include "minimizer/cube_list.h"
#include "minimizer/first_partner.h"

namespace ostrel {

/// Whether the cube of dashes only removes all others. In a list that was made compact from one
/// with columns that none of its cubes uses it is a cube like any other: its duplicates are
/// dropped, it swallows the cubes with one literal, and the rest stays beside it.
enum class UniversalCube { StandsAlone, IsOrdinary };

/// Group d of a list of width w holds its cubes with d dashes, d from 0 to w. An object can be
/// filled and emptied again and again; it keeps its memory from one list to the next.
template <PackedCube C>
class CubeGroups {
 public:
  explicit CubeGroups(std::size_t width) : groups_(width + 1), lowest_(width + 1) {}

  /// The width of the cubes, which is also the number of the last group.
  std::size_t width() const { return groups_.size() - 1; }

  /// Moves all cubes of the list into the groups, which must be empty. Each group ends in reverse
  /// list order. The list is left empty.
  void groupByDashes(std::vector<C>& list);

  /// Moves all cubes into `list`, whatever it held, from the group with the most dashes down to
  /// the one without dashes, each group in its own order. The groups are left empty.
  void flattenGroups(std::vector<C>& list);

  /// Keeps the first of equal cubes; a universal cube that stands alone keeps its copies. False if
  /// no two cubes had their dashes in the same columns, so that none are neighbours either.
  bool dropDuplicates(UniversalCube universal);

  /// Joins pairs that differ in one literal and drops cubes that a cube of the next group contains.
  /// The function stays the same.
  void mergeGroups(UniversalCube universal);

  /// Removes one literal from each cube for which a cube of the next group covers the half that
  /// is gained; the larger cube goes to the end of the next group. Then lets a universal cube
  /// stand alone. The function stays the same.
  void expandGroups();

  /// Removes, group by group and in order, each cube that the remaining cubes with as many or
  /// more dashes cover, as far as the effort goes. The universal cube neither goes nor helps. The
  /// function stays the same.
  void dropRedundant(Effort& effort);

 private:
  using Group = std::vector<C>;

  void add(std::size_t dashes, const C& cube);
  std::size_t ordinaryGroups(UniversalCube universal) const;
  void keepUniversalAlone();
  static bool mayHaveTwins(const Group& group);
  void dropDuplicatesOf(Group& group);
  void joinNeighbours(std::size_t dashes);
  void dropContained(std::size_t dashes);
  void expandGroup(std::size_t dashes);
  void eraseGone(Group& group);
  [[maybe_unused]] bool isInPlace() const;

  // All cubes stand in the groups lowest_ to highest_; the lists are short, and most groups empty.
  std::vector<Group> groups_;
  std::size_t lowest_;
  std::size_t highest_ = 0;

  PartnerScratch scratch_;
  Coverage<C> coverage_;  // scratch: the list that is searched for redundant cubes
};

}  // namespace ostrel
