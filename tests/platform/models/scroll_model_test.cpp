#include "platform/models/scroll_model.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

lorv::ScrollModel Bar(int least, int most, UINT page, int position = 0) {
  lorv::ScrollModel bar;
  bar.Set({sizeof(SCROLLINFO), SIF_ALL, least, most, page, position, 0});
  return bar;
}

}  // namespace

TEST(ScrollModel, HeaderExample) {
  lorv::ScrollModel bar;
  bar.Set({sizeof(SCROLLINFO), SIF_ALL, 0, 1000000, 100, 500, 0});
  bar.Drag(500000);
  EXPECT_EQ(bar.Info().nTrackPos, 500000);
  EXPECT_EQ(bar.Info().nPos, 500);
}

TEST(ScrollModel, PositionStaysInTheRangeLessThePage) {
  const struct {
    int least, most;
    UINT page;
    int position, expected;
  } rows[] = {{0, 99, 10, 500, 90},
              {0, 99, 10, -5, 0},
              {0, 99, 0, 500, 99},
              {0, 99, 1, 500, 99},
              {0, 99, 100, 7, 0},
              {0, 99, 1000, 7, 0},
              {-50, 50, 11, 50, 40},
              {5, 5, 0, 9, 5},
              {9, 3, 0, 100, 9},
              {0, kMost, 0, kMost, kMost},
              {0, kMost, 2, kMost, kMost - 1},
              {kLeast, kMost, 100, kMost, kMost - 99},
              {kLeast, kMost, 100, kLeast, kLeast},
              {kLeast, kMost, 0xFFFFFFFFU, 77, kLeast + 1}};
  for (const auto& row : rows)
    EXPECT_EQ(Bar(row.least, row.most, row.page, row.position).Info().nPos, row.expected)
        << row.least << " to " << row.most << ", page " << row.page << ", at " << row.position;
}

TEST(ScrollModel, PageOfTheWholeRangeOfIntIsKept) {
  EXPECT_EQ(Bar(kLeast, kMost, 100).Info().nPage, 100U);
  EXPECT_EQ(Bar(kLeast, kMost, 0xFFFFFFFFU).Info().nPage, 0xFFFFFFFFU);
  EXPECT_EQ(Bar(0, 9, 100).Info().nPage, 10U);
  EXPECT_EQ(Bar(9, 3, 100).Info().nPage, 1U);
}

TEST(ScrollModel, ScrollsOnlyWhatIsLargerThanThePage) {
  EXPECT_TRUE(Bar(0, 99, 10).Scrolls());
  EXPECT_TRUE(Bar(0, 99, 99).Scrolls());
  EXPECT_FALSE(Bar(0, 99, 100).Scrolls());
  EXPECT_FALSE(Bar(0, 0, 0).Scrolls());
  EXPECT_TRUE(Bar(kLeast, kMost, 100).Scrolls());
}

TEST(ScrollModel, MaskSaysWhatIsTaken) {
  lorv::ScrollModel bar = Bar(0, 99, 10, 20);
  bar.Set({sizeof(SCROLLINFO), SIF_POS, 7, 8, 9, 30, 0});
  EXPECT_EQ(bar.Info().nMax, 99);
  EXPECT_EQ(bar.Info().nPage, 10U);
  EXPECT_EQ(bar.Info().nPos, 30);
  bar.Set({sizeof(SCROLLINFO), SIF_PAGE, 0, 0, 80, 0, 0});
  EXPECT_EQ(bar.Info().nPos, 20);
}

TEST(ScrollModel, DragIsItsOwnPlaceUntilItEnds) {
  lorv::ScrollModel bar = Bar(0, 99, 10, 20);
  EXPECT_EQ(bar.Info().nTrackPos, 20);
  bar.Drag(70);
  bar.Set({sizeof(SCROLLINFO), SIF_POS, 0, 0, 0, 60, 0});
  EXPECT_EQ(bar.Info().nTrackPos, 70);
  EXPECT_EQ(bar.Info().nPos, 60);
  bar.Drag(1000);
  EXPECT_EQ(bar.Info().nTrackPos, 90);
  bar.EndDrag();
  EXPECT_EQ(bar.Info().nTrackPos, 60);
  EXPECT_FALSE(bar.IsDragged());
}
