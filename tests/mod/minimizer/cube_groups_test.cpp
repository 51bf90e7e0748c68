// Groups of cubes by their dashes, against plain scans.
#include "minimizer/cube_groups.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

#include "support/cube_texts.h"

namespace ostrel {
namespace {

// The steps of CubeGroups by plain scans: each group in order, each cube with its first partner.
using Groups = std::vector<CubeList>;
using Partner = std::function<bool(const Cube& a, const Cube& b)>;

void scanDuplicates(Groups& groups) {
  for (std::size_t d = 0; d + 1 < groups.size(); ++d) {
    CubeList kept;
    for (const Cube& cube : groups[d]) {
      if (std::find(kept.begin(), kept.end(), cube) == kept.end()) kept.push_back(cube);
    }
    groups[d] = kept;
  }
}

// Takes each cube that has a partner in group d + step out, with a partner of its own group, and
// appends it to the next group without the literal in which the two are opposite, if there is one.
void scanPartners(Groups& groups, std::size_t d, std::size_t step, const Partner& isPartner) {
  CubeList& group = groups[d];
  for (std::size_t a = 0; a < group.size();) {
    const CubeList& others = groups[d + step];
    std::size_t b = step == 0 ? a + 1 : 0;
    while (b < others.size() && !isPartner(group[a], others[b])) ++b;
    if (b >= others.size()) {
      ++a;
      continue;
    }
    Cube wider = group[a];
    others[b].forEachLiteral([&](std::size_t column, char literal) {
      if (wider.at(column) != literal) wider.set(column, '-');
    });
    if (!(wider == group[a])) groups[d + 1].push_back(wider);
    if (step == 0) group.erase(group.begin() + static_cast<std::ptrdiff_t>(b));
    group.erase(group.begin() + static_cast<std::ptrdiff_t>(a));
  }
}

/// The columns in which two cubes are opposite, and those in which only one has a literal.
std::pair<std::size_t, std::size_t> differences(const Cube& a, const Cube& b) {
  const Cube::Block x = a.block(0);
  const Cube::Block y = b.block(0);
  return {bitCount(x.care & y.care & (x.value ^ y.value)), bitCount(x.care ^ y.care)};
}

void scanMerge(Groups& groups) {
  const auto differInOne = [](const Cube& a, const Cube& b) {
    const auto [opposite, missing] = differences(a, b);
    return opposite + missing == 1;
  };
  scanDuplicates(groups);
  for (std::size_t d = 0; d + 1 < groups.size(); ++d) scanPartners(groups, d, 0, differInOne);
  for (std::size_t d = 0; d + 2 < groups.size(); ++d) scanPartners(groups, d, 1, differInOne);
}

void scanExpand(Groups& groups) {
  const auto expands = [](const Cube& a, const Cube& b) {
    return (b.block(0).care & ~a.block(0).care) == 0 && differences(a, b).first == 1;
  };
  scanDuplicates(groups);
  for (std::size_t d = 0; d + 2 < groups.size(); ++d) scanPartners(groups, d, 1, expands);
}

TEST(CubeGroups, FindByHashWhatAScanFinds) {
  std::mt19937 random(22);
  for (int round = 0; round < 100; ++round) {
    const std::size_t width = 6 + random() % 5;
    const CubeList list = cubesOf(randomTexts(random, 100 + random() % 500, width));
    Groups scanned(width + 1);
    for (auto cube = list.rbegin(); cube != list.rend(); ++cube) {
      scanned[dashCount(*cube, width)].push_back(*cube);
    }
    const bool expands = round % 2 == 0;
    expands ? scanExpand(scanned) : scanMerge(scanned);
    if (!scanned[width].empty()) scanned.assign(1, scanned[width]);
    CubeList expected;
    for (auto group = scanned.rbegin(); group != scanned.rend(); ++group) {
      expected.insert(expected.end(), group->begin(), group->end());
    }
    CubeGroups<Cube> groups(width);
    CubeList found = list;
    groups.groupByDashes(found);
    expands ? groups.expandGroups() : groups.mergeGroups(UniversalCube::StandsAlone);
    groups.flattenGroups(found);
    ASSERT_EQ(textsOf(found, width), textsOf(expected, width)) << "expands: " << expands;
  }
}

}  // namespace
}  // namespace ostrel
