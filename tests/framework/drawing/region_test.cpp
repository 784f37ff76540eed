#include "framework/drawing/region.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "tests/support/print.h"

namespace {

using lorv::Region;
using Rects = std::vector<CRect>;
constexpr int kEdge = 12;
using Pixels = std::set<std::pair<int, int>>;

Pixels CoveredBy(const CRect& rect) {
  Pixels pixels;
  for (int y = rect.top; y < rect.bottom; ++y)
    for (int x = rect.left; x < rect.right; ++x) pixels.emplace(x, y);
  return pixels;
}

// Fails where two rectangles overlap or one is empty.
Pixels CoveredBy(const Region& region) {
  Pixels pixels;
  for (const CRect& rect : region.Rects()) {
    EXPECT_EQ(rect.IsRectEmpty(), 0);
    for (const auto& pixel : CoveredBy(rect)) EXPECT_TRUE(pixels.insert(pixel).second) << rect.left;
  }
  return pixels;
}

CRect RandomRect(std::mt19937& random) {
  const auto at = [&] { return static_cast<int>(random() % (kEdge + 1)); };
  return {at(), at(), at(), at()};
}

}  // namespace

TEST(Region, HeaderExample) {
  Region region(CRect(0, 0, 9, 9));
  region.Remove(CRect(0, 0, 9, 3));
  EXPECT_EQ(region.Bounds(), CRect(0, 3, 9, 9));
}

TEST(Region, EmptyRectanglesAreNoPart) {
  Region region(CRect(5, 5, 5, 9));
  region.Add(CRect(9, 9, 3, 3));
  EXPECT_TRUE(region.IsEmpty());
  EXPECT_TRUE(region.Covers(CRect(4, 4, 4, 4)));
  EXPECT_FALSE(region.Touches(CRect(0, 0, 9, 9)));
  EXPECT_EQ(region.Bounds(), CRect());
}

TEST(Region, FarRectanglesStayApart) {
  Region region(CRect(0, 0, 10, 10));
  region.Add(CRect(90, 90, 99, 99));
  EXPECT_EQ(region.Rects(), (Rects{{0, 0, 10, 10}, {90, 90, 99, 99}}));
  EXPECT_FALSE(region.Touches(CRect(40, 40, 50, 50)));
  EXPECT_TRUE(region.Touches(CRect(98, 98, 120, 120)));
}

TEST(Region, NeighboursThatMakeARectangleBecomeOne) {
  Region region(CRect(0, 0, 5, 5));
  region.Add(CRect(5, 0, 9, 5));
  region.Add(CRect(0, 5, 9, 8));
  EXPECT_EQ(region.Rects(), (Rects{{0, 0, 9, 8}}));
}

TEST(Region, MovesAndKeeps) {
  Region region(CRect(0, 0, 10, 10));
  region.Move(CSize(5, -2));
  EXPECT_EQ(region.Bounds(), CRect(5, -2, 15, 8));
  region.Keep(CRect(0, 0, 8, 100));
  EXPECT_EQ(region.Rects(), (Rects{{5, 0, 8, 8}}));
  region.Keep(CRect(50, 50, 60, 60));
  EXPECT_TRUE(region.IsEmpty());
}

TEST(Region, TakesItselfAway) {
  Region region(CRect(0, 0, 10, 10));
  region.Add(region);
  EXPECT_EQ(region.Rects().size(), 1U);
  region.Remove(region);
  EXPECT_TRUE(region.IsEmpty());
}

TEST(Region, AgreesWithASetOfPixels) {
  std::mt19937 random(7);
  for (int round = 0; round < 400; ++round) {
    Region region;
    Pixels expected;
    for (int step = 0; step < 12; ++step) {
      const CRect rect = RandomRect(random);
      const Pixels pixels = CoveredBy(rect);
      const auto way = random() % 8;
      if (way < 4) {
        region.Add(rect);
        expected.insert(pixels.begin(), pixels.end());
      } else if (way < 7) {
        region.Remove(rect);
        for (const auto& pixel : pixels) expected.erase(pixel);
      } else {
        region.Keep(rect);
        std::erase_if(expected, [&](const auto& pixel) { return pixels.count(pixel) == 0; });
      }
      ASSERT_EQ(CoveredBy(region), expected);
      const CRect asked = RandomRect(random);
      const Pixels wanted = CoveredBy(asked);
      const auto inside = std::count_if(wanted.begin(), wanted.end(),
                                        [&](const auto& pixel) { return expected.count(pixel) != 0; });
      EXPECT_EQ(region.Touches(asked), inside != 0);
      EXPECT_EQ(region.Covers(asked), static_cast<std::size_t>(inside) == wanted.size());
    }
  }
}

TEST(Region, SimplifiedItHoldsNoFewerPixels) {
  std::mt19937 random(8);
  for (int round = 0; round < 300; ++round) {
    Region region;
    for (int step = 0; step < 9; ++step) {
      const int x = static_cast<int>(random() % kEdge);
      const int y = static_cast<int>(random() % kEdge);
      region.Add(CRect(x, y, x + 1, y + 1));
    }
    const Pixels before = CoveredBy(region);
    const std::size_t most = 1 + random() % 6;
    region.Simplify(most);
    EXPECT_LE(region.Rects().size(), most);
    const Pixels after = CoveredBy(region);
    EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end()));
  }
}

TEST(Region, SimplifyJoinsWhatLiesNear) {
  Region region(CRect(0, 0, 10, 10));
  region.Add(CRect(12, 0, 20, 10));
  region.Add(CRect(500, 500, 510, 510));
  region.Simplify(2);
  EXPECT_TRUE(region.Covers(CRect(0, 0, 20, 10)));
  EXPECT_FALSE(region.Touches(CRect(30, 30, 400, 400)));
  EXPECT_EQ(region.Rects().size(), 2U);
}
