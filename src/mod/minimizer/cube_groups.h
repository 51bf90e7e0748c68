// A sum of products sorted into groups by number of dashes, and the merging that these groups
// make cheap: two cubes that join have equally many dashes, and a cube that swallows another
// through one literal has exactly one dash more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "minimizer/coverage.h"
#include "minimizer/cube_index.h"
#include "minimizer/cube_list.h"
#include "minimizer/row_coverage.h"

namespace ostrel {

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

  /// Keeps the first cube of each text in the groups 0 to groupCount - 1; later groups stay, also
  /// in a later call with a greater count.
  void dropDuplicates(std::size_t groupCount);

  /// Joins pairs that differ in one literal, drops cubes that a cube of the next group contains,
  /// and lets a universal cube stand alone. The function stays the same.
  ///
  /// `universalGroup` is the number of the group whose cubes count as the universal cube: the
  /// width, or a larger number if the cubes were narrowed from a list with columns that none of
  /// them uses. Then the group of all dashes is a group like any other: its duplicates are
  /// dropped, it swallows the cubes with one literal, and the rest stays beside it.
  void mergeGroups(std::size_t universalGroup);

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
  void keepUniversalAlone();
  static bool hasTwins(const Group& group);
  void dropDuplicatesOf(Group& group);
  void joinNeighbours(std::size_t dashes);
  void scanNeighbours(std::size_t dashes);
  void indexNeighbours(std::size_t dashes);
  void join(std::size_t dashes, const C& a, const C& b);
  std::size_t indexedNeighbour(const Group& group, std::size_t a) const;
  void dropContained(std::size_t dashes);
  void expandGroup(std::size_t dashes);
  void scanExpanders(std::size_t dashes);
  void indexExpanders(std::size_t dashes);
  std::size_t indexedExpander(const C& cube, const Group& larger) const;
  template <class AnyCoverage>
  void dropCovered(AnyCoverage& coverage, std::size_t end, std::size_t count, Effort& effort);
  void eraseGone(Group& group);

  // All cubes stand in the groups lowest_ to highest_; the lists are short, and most groups empty.
  std::vector<Group> groups_;
  std::size_t lowest_;
  std::size_t highest_ = 0;

  // False if no two cubes of a group have their dashes at the same places: then there are no
  // duplicates and no neighbours.
  bool mayHaveTwins_ = false;

  CubeIndex index_;                 // scratch: the cubes of one group by hash
  std::vector<std::uint8_t> gone_;  // scratch: 1 for each cube of a group that has been removed
  RowCoverage rowCoverage_;         // scratch: a short list that is searched for redundant cubes
  Coverage coverage_;               // scratch: a long one
};

}  // namespace ostrel
