// Cubes, whatever block a column stands in.
#include "minimizer/cube.h"

#include <gtest/gtest.h>
#include <set>

#include "minimizer/column_map.h"
#include "minimizer/sum_of_products.h"
#include "support/cube_texts.h"

namespace ostrel {
namespace {

TEST(Cube, ComparesAcrossBlocks) {
  const std::string dashes(130, '-');
  Cube wide(dashes);
  wide.set(3, '1');
  EXPECT_EQ(wide, Cube("---1"));
  wide.set(129, '0');
  EXPECT_TRUE(cubeContains(Cube("---1"), wide));
  EXPECT_FALSE(cubeContains(wide, Cube("---1")));
  Cube other = wide;
  other.invert(129);
  EXPECT_EQ(adjacentColumn(wide, other), std::optional<std::size_t>(129));
  EXPECT_FALSE(cubesIntersect(wide, other));
  wide.set(129, '-');
  EXPECT_EQ(literalHash(wide), literalHash(Cube("---1")));
}

// Whatever the secret is: rows chosen by their columns, and the same columns of other blocks.
TEST(Cube, HashesCantBeMadeToCollide) {
  std::set<std::uint64_t> hashes;
  for (unsigned bits = 0; bits < 1024; ++bits) {
    Cube cube;
    for (std::size_t b = 0; b < 10; ++b) cube.set(64 * b + 63, (bits >> b & 1U) != 0 ? '1' : '0');
    Cube sparse;
    sparse.set(64 * bits + bits % 32 + 32, '1');
    hashes.insert(literalHash(cube));
    hashes.insert(literalHash(sparse));
  }
  EXPECT_GT(hashes.size(), 2040U);  // one may come by chance, once in thousands of runs
}

TEST(Cube, MakesProductsPiecesAndMaps) {
  const struct {
    const char *a, *b, *product;
    bool pieced;
    Texts pieces;
  } table[] = {
      {"1-", "--", "1-", true, {}}, {"--", "11", "11", true, {"0-", "-0"}},
      {"10", "11", "", false, {}},  {"1--", "-01", "101", true, {"11-", "1-0"}},
      {"0-", "1-", "", false, {}},
  };
  for (const auto& row : table) {
    const Cube a((std::string_view(row.a)));
    const Cube b((std::string_view(row.b)));
    const auto product = intersectCubes(a, b);
    EXPECT_EQ(product ? product->text(widthOf({row.a})) : "", row.product);
    CubeList pieces;
    EXPECT_EQ(sharpCube(a, b, pieces), row.pieced);
    EXPECT_EQ(textsOf(pieces, widthOf({row.a})), row.pieces);
  }
  ColumnSet used;
  for (const std::size_t column : {70U, 3U, 5U}) used.insert(column);
  const ColumnMap map(used, 80);
  Cube wide("-----1");
  wide.set(70, '0');
  EXPECT_EQ(map.compact(wide).text(map.compactWidth()), "-10");
  EXPECT_EQ(map.restore(Cube("-10")), wide);
  EXPECT_EQ(adjacentColumn(Cube("1-0"), Cube("110")), std::nullopt);
  EXPECT_EQ(adjacentColumn(Cube("1-0"), Cube("0-1")), std::nullopt);
}

}  // namespace
}  // namespace ostrel
