// Rectangles beside plain models: sets of pixels where these are small, 64-bit numbers cut to 32 where they
// are not.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <set>

#include "framework/drawing/geometry.h"

namespace {

using Pixels = std::set<std::pair<int, int>>;
constexpr int kSide = 6;

CRect SmallRect(std::mt19937& random) {
  const auto at = [&] { return static_cast<int>(random() % (kSide + 1)); };
  return {at(), at(), at(), at()};
}

Pixels PixelsOf(const CRect& rect) {
  Pixels pixels;
  for (int y = 0; y <= kSide; ++y)
    for (int x = 0; x <= kSide; ++x)
      if (rect.PtInRect(CPoint(x, y)) != 0) pixels.emplace(x, y);
  return pixels;
}

// Numbers at the ends of 32 bits and around 0, where sums wrap.
int EdgeNumber(std::mt19937& random) {
  static constexpr std::array kEdges = {
      std::numeric_limits<int>::min(),     std::numeric_limits<int>::min() + 1, -1, 0, 1,
      std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max()};
  return random() % 2 == 0 ? kEdges[random() % kEdges.size()] : static_cast<int>(random());
}

int Cut(std::int64_t number) {
  return static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(number)));
}

}  // namespace

TEST(RectModel, IntersectionHoldsThePixelsOfBoth) {
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    const CRect a = SmallRect(random);
    const CRect b = SmallRect(random);
    CRect both(9, 9, 9, 9);
    const bool any = both.IntersectRect(a, b) != 0;
    Pixels expected;
    const Pixels of_a = PixelsOf(a);
    const Pixels of_b = PixelsOf(b);
    std::set_intersection(of_a.begin(), of_a.end(), of_b.begin(), of_b.end(),
                          std::inserter(expected, expected.end()));
    ASSERT_EQ(PixelsOf(both), expected);
    ASSERT_EQ(any, !expected.empty());
    if (!any) {
      ASSERT_TRUE(both.IsRectNull());
    }
    CRect onto_itself(a);
    onto_itself.IntersectRect(onto_itself, b);
    ASSERT_EQ(onto_itself, both);
  }
}

TEST(RectModel, UnionIsTheSmallestRectangleAroundBoth) {
  std::mt19937 random(2);
  for (int round = 0; round < 5000; ++round) {
    const CRect a = SmallRect(random);
    const CRect b = SmallRect(random);
    CRect around(9, 9, 9, 9);
    const bool any = around.UnionRect(a, b) != 0;
    Pixels all = PixelsOf(a);
    all.merge(PixelsOf(b));
    ASSERT_EQ(any, !all.empty());
    if (!any) {
      ASSERT_TRUE(around.IsRectNull());
      continue;
    }
    const auto [left, right] =
        std::minmax_element(all.begin(), all.end(), [](auto p, auto q) { return p.first < q.first; });
    const auto [top, bottom] =
        std::minmax_element(all.begin(), all.end(), [](auto p, auto q) { return p.second < q.second; });
    ASSERT_EQ(around, CRect(left->first, top->second, right->first + 1, bottom->second + 1));
  }
}

TEST(RectModel, DifferenceIsExactWhereItIsARectangleAndElseTheWhole) {
  std::mt19937 random(3);
  for (int round = 0; round < 5000; ++round) {
    const CRect a = SmallRect(random);
    const CRect b = SmallRect(random);
    CRect rest(9, 9, 9, 9);
    const bool any = rest.SubtractRect(a, b) != 0;
    Pixels exact = PixelsOf(a);
    for (const auto& pixel : PixelsOf(b)) exact.erase(pixel);
    ASSERT_EQ(any, PixelsOf(rest).size() != 0);
    ASSERT_TRUE(PixelsOf(rest) == exact || rest == a);
    // A strip that spans a side is always taken off.
    if (b.left <= a.left && b.right >= a.right && b.top <= a.top) {
      ASSERT_EQ(PixelsOf(rest), exact);
    }
  }
}

TEST(RectModel, NumbersWrapAroundAsThoseOf64BitsCut) {
  std::mt19937 random(4);
  for (int round = 0; round < 20000; ++round) {
    const int left = EdgeNumber(random), top = EdgeNumber(random), right = EdgeNumber(random);
    const int bottom = EdgeNumber(random), x = EdgeNumber(random), y = EdgeNumber(random);
    const CRect rect(left, top, right, bottom);
    EXPECT_EQ(rect.Width(), Cut(std::int64_t{right} - left));
    EXPECT_EQ(rect.Height(), Cut(std::int64_t{bottom} - top));
    EXPECT_EQ(rect + CPoint(x, y), CRect(Cut(std::int64_t{left} + x), Cut(std::int64_t{top} + y),
                                         Cut(std::int64_t{right} + x), Cut(std::int64_t{bottom} + y)));
    CRect grown(rect);
    grown.InflateRect(x, y);
    EXPECT_EQ(grown, CRect(Cut(std::int64_t{left} - x), Cut(std::int64_t{top} - y),
                           Cut(std::int64_t{right} + x), Cut(std::int64_t{bottom} + y)));
    grown.DeflateRect(x, y);
    EXPECT_EQ(grown, rect);
    EXPECT_EQ(rect.CenterPoint().x, static_cast<int>((std::int64_t{left} + right) / 2));
    EXPECT_EQ(-CPoint(x, y), CPoint(Cut(-std::int64_t{x}), Cut(-std::int64_t{y})));
    EXPECT_EQ(rect - CPoint(x, y) + CPoint(x, y), rect);
    CRect moved(rect);
    moved.MoveToXY(x, y);
    EXPECT_EQ(moved.TopLeft(), CPoint(x, y));
    EXPECT_EQ(moved.Width(), rect.Width());
  }
}

TEST(RectModel, NormalizedTwiceIsNormalizedOnce) {
  std::mt19937 random(5);
  for (int round = 0; round < 5000; ++round) {
    CRect rect(EdgeNumber(random), EdgeNumber(random), EdgeNumber(random), EdgeNumber(random));
    rect.NormalizeRect();
    EXPECT_LE(rect.left, rect.right);
    EXPECT_LE(rect.top, rect.bottom);
    CRect again(rect);
    again.NormalizeRect();
    EXPECT_EQ(again, rect);
  }
}
