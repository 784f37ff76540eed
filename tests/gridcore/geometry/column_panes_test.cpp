#include "gridcore/geometry/column_panes.h"

#include <gtest/gtest.h>

#include <random>

using lorv::ColumnPane;
using lorv::PixelStretch;
using Panes = lorv::ColumnPanes;

TEST(ColumnPanes, WithoutAFrozenPartAllScrolls) {
  const Panes panes{30, 0, 100};
  EXPECT_FALSE(panes.AreSplit());
  EXPECT_EQ(panes.ScreenAt(0), -70);
  EXPECT_EQ(panes.ScreenAt(250), 180);
  EXPECT_EQ(panes.OnScreen(20, 60), (PixelStretch{-50, -10}));
  EXPECT_EQ(panes.PlaceAt(30), 100);
  EXPECT_EQ(panes.PlaceAt(0), 70);
  EXPECT_EQ(panes.PlaceAt(-200), -130);
}

TEST(ColumnPanes, TheFrozenPartStays) {
  const Panes panes{30, 100, 40};
  EXPECT_EQ(panes.Edge(), 130);
  EXPECT_EQ(panes.OnScreen(0, 100), (PixelStretch{30, 130}));
  EXPECT_EQ(panes.PlaceAt(129), 99);
  EXPECT_EQ(panes.PlaceAt(130), 140);
  EXPECT_EQ(panes.PlaceAt(10), -20) << "in front of the table";
}

TEST(ColumnPanes, WhatScrollsBelowItIsCutOff) {
  const Panes panes{30, 100, 40};
  EXPECT_EQ(panes.OnScreen(100, 180), (PixelStretch{130, 170}));
  EXPECT_EQ(panes.OnScreen(180, 200), (PixelStretch{170, 190}));
  EXPECT_TRUE(panes.OnScreen(100, 140).IsEmpty());
  EXPECT_FALSE(panes.OnScreen(100, 141).IsEmpty());
}

TEST(ColumnPanes, AStretchOverTheEdgeIsWhatIsSeenOfBoth) {
  EXPECT_EQ((Panes{30, 100, 40}.OnScreen(60, 200)), (PixelStretch{90, 190}));
  EXPECT_EQ((Panes{30, 100, 400}.OnScreen(60, 200)), (PixelStretch{90, 130}));
  EXPECT_EQ((Panes{30, 100, 0}.OnScreen(60, 200)), (PixelStretch{90, 230}));
}

TEST(ColumnPanes, DrawnAloneAPartIsOneLine) {
  const Panes frozen{30, 100, 40, ColumnPane::kFrozen};
  EXPECT_EQ(frozen.OnScreen(60, 200), (PixelStretch{90, 230}));
  EXPECT_EQ(frozen.PlaceAt(200), 170);
  const Panes scrolling{30, 100, 40, ColumnPane::kScrolling};
  EXPECT_EQ(scrolling.OnScreen(60, 200), (PixelStretch{50, 190}));
  EXPECT_EQ(scrolling.PlaceAt(50), 60);
}

TEST(ColumnPanes, EachPixelThatIsSeenLeadsBackToItsPlace) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    const auto upto = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const Panes panes{upto(40), upto(150), upto(300)};
    for (int x = panes.left; x < panes.left + 400; ++x) {
      const int place = panes.PlaceAt(x);
      ASSERT_EQ(panes.OnScreen(place, place + 1), (PixelStretch{x, x + 1})) << round << " at " << x;
    }
  }
}
