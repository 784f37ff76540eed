#include "grid/columns/column_texts.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "tests/support/print.h"

using lorv::DeclaredColumns;
using lorv::ProportionalWidths;
using lorv::WidthsFromText;
using lorv::WidthsToText;
using Widths = std::vector<int>;

TEST(ColumnTexts, HeaderExamples) {
  const auto columns = DeclaredColumns(_T("梁,板"), _T("100"));
  ASSERT_EQ(columns.size(), 2U);
  EXPECT_EQ(columns[0].width, 100);
  EXPECT_EQ(columns[1].width, 80);
  EXPECT_EQ(WidthsFromText(_T("120,0,60")), (Widths{120, 80, 60}));
  EXPECT_EQ(WidthsToText({120, 80}), CString(_T("120,80")));
  EXPECT_EQ(ProportionalWidths({100, 200}, 450), (Widths{150, 300}));
}

TEST(ColumnTexts, AWidthOfNothingHidesAndCountsAsTheDefault) {
  const auto columns = DeclaredColumns(_T("a,b,c"), _T("0,x,12"));
  ASSERT_EQ(columns.size(), 3U);
  EXPECT_TRUE(columns[0].hidden);
  EXPECT_EQ(columns[0].width, 80);
  EXPECT_TRUE(columns[1].hidden) << "no number reads as 0";
  EXPECT_FALSE(columns[2].hidden);
  EXPECT_EQ(columns[2].width, 12);
}

TEST(ColumnTexts, AMissingWidthDoesNotHide) {
  const auto columns = DeclaredColumns(_T("a,b"), _T("50"));
  EXPECT_FALSE(columns[1].hidden);
}

TEST(ColumnTexts, WidthsWithoutNamesMakeNoColumns) {
  EXPECT_EQ(DeclaredColumns(_T("a"), _T("1,2,3")).size(), 1U);
}

TEST(ColumnTexts, EmptyNamesAreColumns) {
  const auto columns = DeclaredColumns(_T("a,,c"), _T("1,2,3"));
  ASSERT_EQ(columns.size(), 3U);
  EXPECT_EQ(columns[1].name, CString(_T("")));
  EXPECT_EQ(columns[1].width, 2);
}

TEST(ColumnTexts, NumbersAreReadAsFarAsTheyGo) {
  EXPECT_EQ(WidthsFromText(_T(" 12mm,-5,,99999999999")), (Widths{12, -5, 80, 2147483647}));
  EXPECT_EQ(WidthsFromText(_T("")), Widths());
}

TEST(ColumnTexts, NoWidthsGiveAnEmptyText) {
  EXPECT_EQ(WidthsToText({}), CString(_T("")));
  EXPECT_EQ(WidthsToText({-3}), CString(_T("-3")));
}

TEST(ColumnTexts, SharesFillTheNewRoomExactly) {
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    Widths widths(1 + random() % 12);
    for (int& width : widths) width = static_cast<int>(random() % 500) + 1;
    const int room = static_cast<int>(random() % 4000);
    const Widths fitted = ProportionalWidths(widths, room);
    ASSERT_EQ(std::accumulate(fitted.begin(), fitted.end(), 0), room) << "round " << round;
    const double scale = static_cast<double>(room) / std::accumulate(widths.begin(), widths.end(), 0);
    for (std::size_t i = 0; i + 1 < widths.size(); ++i) {
      ASSERT_LE(fitted[i], widths[i] * scale + 1e-6);
      ASSERT_GT(fitted[i], widths[i] * scale - 1 - 1e-6);
    }
  }
}

TEST(ColumnTexts, ColumnsWithoutWidthStay) {
  EXPECT_EQ(ProportionalWidths({0, 0}, 100), (Widths{0, 0}));
  EXPECT_EQ(ProportionalWidths({}, 100), Widths());
}
