#include "framework/drawing/line_runs.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <set>

#include "tests/support/print.h"

namespace {

using lorv::LineRuns;
using lorv::Stroke;
using Rects = std::vector<CRect>;
const CRect kArea(0, 0, 40, 30);

}  // namespace

TEST(LineRuns, HeaderExample) {
  EXPECT_EQ(LineRuns({1, 0}, {4, 0}, Stroke(), CRect(0, 0, 9, 9)), (Rects{{1, 0, 4, 1}}));
}

TEST(LineRuns, StraightLinesAreOneRectangleEitherWay) {
  EXPECT_EQ(LineRuns({4, 0}, {1, 0}, Stroke(), kArea), (Rects{{2, 0, 5, 1}}));
  EXPECT_EQ(LineRuns({3, 9}, {3, 2}, Stroke(), kArea), (Rects{{3, 3, 4, 10}}));
  EXPECT_EQ(LineRuns({3, 2}, {3, 9}, {0, 2, PS_SOLID}, kArea), (Rects{{3, 2, 5, 10}}));
}

TEST(LineRuns, NothingIsGivenForNoLine) {
  EXPECT_TRUE(LineRuns({3, 3}, {3, 3}, Stroke(), kArea).empty());
  EXPECT_TRUE(LineRuns({0, 0}, {9, 0}, {0, 1, PS_NULL}, kArea).empty());
  EXPECT_TRUE(LineRuns({0, 0}, {9, 0}, {0, 0, PS_SOLID}, kArea).empty());
  EXPECT_TRUE(LineRuns({0, 50}, {9, 50}, Stroke(), kArea).empty());
  EXPECT_TRUE(LineRuns({0, 0}, {9, 0}, Stroke(), CRect()).empty());
}

TEST(LineRuns, DashesAreFourOfSix) {
  EXPECT_EQ(LineRuns({0, 1}, {10, 1}, {0, 1, PS_DASH}, kArea), (Rects{{0, 1, 4, 2}, {6, 1, 10, 2}}));
  EXPECT_EQ(LineRuns({0, 1}, {4, 1}, {0, 1, PS_DOT}, kArea), (Rects{{0, 1, 1, 2}, {2, 1, 3, 2}}));
}

TEST(LineRuns, LongLinesCostNoTime) {
  constexpr int kFar = 2000000000;
  EXPECT_EQ(LineRuns({-kFar, 5}, {kFar, 5}, Stroke(), kArea), (Rects{{0, 5, 40, 6}}));
  EXPECT_LE(LineRuns({-kFar, -kFar}, {kFar, kFar}, {0, 1, PS_DOT}, kArea).size(), 40U);
}

// One pixel for each step of the longer way, whatever rectangles they are given in.
TEST(LineRuns, HoldThePixelsOfEachStep) {
  std::mt19937 random(3);
  const auto at = [&] { return static_cast<int>(random() % 60) - 10; };
  for (int round = 0; round < 500; ++round) {
    const POINT from = {at(), at()};
    const POINT to = {at(), at()};
    const int style = round % 3 == 0 ? PS_DOT : PS_SOLID;
    std::set<std::pair<LONG, LONG>> expected;
    const int across = to.x - from.x;
    const int down = to.y - from.y;
    const int steps = std::max(std::abs(across), std::abs(down));
    for (int i = 0; i < steps; i += style == PS_DOT ? 2 : 1) {
      const POINT pixel = {from.x + across * i / steps, from.y + down * i / steps};
      if (kArea.PtInRect(pixel) != 0) expected.emplace(pixel.x, pixel.y);
    }
    std::set<std::pair<LONG, LONG>> drawn;
    for (const CRect& run : LineRuns(from, to, {0, 1, style}, kArea))
      for (LONG y = run.top; y < run.bottom; ++y)
        for (LONG x = run.left; x < run.right; ++x) drawn.emplace(x, y);
    ASSERT_EQ(drawn, expected) << from.x << "," << from.y << " " << to.x << "," << to.y;
  }
}
