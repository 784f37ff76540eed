#include "grid/printing/page_breaks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Breaks = std::vector<int>;

int Tens(int at) {
  return at / 10 * 10;
}

TEST(PageBreaks, FallAtTheEdgesOfLines) {
  EXPECT_EQ(lorv::PageBreaks(50, 25, 9, Tens, {}), (Breaks{0, 20, 40, 50}));
  EXPECT_EQ(lorv::PageBreaks(50, 50, 9, Tens, {}), (Breaks{0, 50}));
  EXPECT_EQ(lorv::PageBreaks(50, 49, 9, Tens, {}), (Breaks{0, 40, 50}));
}

TEST(PageBreaks, ThereIsNoneWithoutATableOrARoom) {
  EXPECT_TRUE(lorv::PageBreaks(0, 25, 9, Tens, {}).empty());
  EXPECT_TRUE(lorv::PageBreaks(50, 0, 9, Tens, {}).empty());
  EXPECT_TRUE(lorv::PageBreaks(50, -3, 9, Tens, {}).empty());
}

TEST(PageBreaks, ALineLargerThanThePageIsBroken) {
  EXPECT_EQ(lorv::PageBreaks(50, 4, 2, Tens, {}), (Breaks{0, 4, 8}));
}

TEST(PageBreaks, WhatBelongsTogetherStaysSoWhereItFits) {
  EXPECT_EQ(lorv::PageBreaks(60, 30, 9, Tens, {{20, 40}}), (Breaks{0, 20, 50, 60}));
  EXPECT_EQ(lorv::PageBreaks(60, 30, 9, Tens, {{20, 40}, {10, 30}}), (Breaks{0, 10, 40, 60}))
      << "one leads into the other";
  EXPECT_EQ(lorv::PageBreaks(60, 30, 9, Tens, {{0, 60}}), (Breaks{0, 30, 60})) << "larger than a page";
}

TEST(PageBreaks, StopAtTheMostPages) {
  EXPECT_EQ(lorv::PageBreaks(100, 10, 3, Tens, {}), (Breaks{0, 10, 20, 30}));
}

// Whatever the lines are: pages follow each other, none is empty or larger than its room.
TEST(PageBreaks, RandomTablesArePartedWithoutLossOrOverlap) {
  std::mt19937 random(17);
  for (int round = 0; round < 500; ++round) {
    std::vector<int> edges = {0};
    const int lines = 1 + static_cast<int>(random() % 40);
    for (int line = 0; line < lines; ++line)
      edges.push_back(edges.back() + 1 + static_cast<int>(random() % 30));
    std::vector<lorv::WholeStretch> whole;
    for (int i = static_cast<int>(random() % 4); i > 0; --i) {
      const auto first = random() % edges.size();
      const auto end = std::min(edges.size() - 1, first + 1 + random() % 4);
      whole.push_back({edges[first], edges[end]});
    }
    const int room = 1 + static_cast<int>(random() % 90);
    const auto edge_at = [&](int at) { return *(std::upper_bound(edges.begin(), edges.end(), at) - 1); };
    const Breaks breaks = lorv::PageBreaks(edges.back(), room, 100000, edge_at, whole);
    ASSERT_EQ(breaks.front(), 0);
    ASSERT_EQ(breaks.back(), edges.back());
    for (std::size_t i = 1; i < breaks.size(); ++i) {
      ASSERT_GT(breaks[i], breaks[i - 1]);
      ASSERT_LE(breaks[i] - breaks[i - 1], room);
      for (const auto& one : whole) {
        const bool cut = one.first < breaks[i] && breaks[i] < one.end;
        ASSERT_TRUE(!cut || one.end - one.first > room || one.first <= breaks[i - 1]);
      }
    }
  }
}

}  // namespace
