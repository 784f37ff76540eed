#include "platform/models/window/scroll_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

#include "tests/support/whole_number_limits.h"

namespace {

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

// Whatever is set in whatever order: the page fits the range and fills the window at the last position.
TEST(ScrollModel, HoldsItsOrderWhateverIsSet) {
  std::mt19937 random(32);
  const auto any = [&random] {
    constexpr int kEdges[] = {kLeast, kLeast + 1, -1, 0, 1, 9, 100, kMost - 1, kMost};
    return random() % 2 == 0 ? kEdges[random() % 9] : static_cast<int>(random());
  };
  lorv::ScrollModel bar;
  for (int round = 0; round < 5000; ++round) {
    const lorv::ScrollModel before = bar;
    const UINT mask = static_cast<UINT>(random()) & (SIF_RANGE | SIF_PAGE | SIF_POS);
    const SCROLLINFO set = {sizeof(SCROLLINFO), mask, any(), any(), static_cast<UINT>(any()), any(), 0};
    bar.Set(set);
    const SCROLLINFO now = bar.Info();
    const bool ranged = (mask & SIF_RANGE) != 0;
    EXPECT_EQ(now.nMin, ranged ? set.nMin : before.Info().nMin);
    EXPECT_EQ(now.nMax, ranged ? std::max(set.nMin, set.nMax) : before.Info().nMax);
    const std::int64_t span = std::int64_t{now.nMax} - now.nMin + 1;
    const std::int64_t page = (mask & SIF_PAGE) != 0 ? set.nPage : before.Info().nPage;
    EXPECT_EQ(now.nPage, std::min(page, span));
    const std::int64_t last =
        std::max<std::int64_t>(now.nMin, now.nMax - std::max<std::int64_t>(page - 1, 0));
    const std::int64_t wanted = (mask & SIF_POS) != 0 ? set.nPos : before.Info().nPos;
    EXPECT_EQ(now.nPos, std::clamp<std::int64_t>(wanted, now.nMin, last));
    EXPECT_EQ(bar.Scrolls(), last > now.nMin);
  }
}
