#include "framework/values/ole_date.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// "Y-M-D h:m:s w" of a day number, "none" for no date.
std::string Split(double date) {
  SYSTEMTIME t{};
  if (!SplitOleDate(date, t)) return "none";
  CString text;
  text.Format(_T("%d-%d-%d %d:%d:%d w%d"), t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond,
              t.wDayOfWeek);
  return text.ToUtf8();
}

TEST(OleDate, HeaderExamples) {
  EXPECT_EQ(Split(36526.5), "2000-1-1 12:0:0 w6");
  EXPECT_EQ(Utf8(OleDateToText(-1)), "1899-12-29");
}

TEST(OleDate, KnownDaysOnBothSidesOfTheFirst) {
  const struct {
    double date;
    const char* text;
  } kRows[] = {
      {0, "1899-12-30"},       {1, "1899-12-31"},      {2, "1900-01-01"},       {60, "1900-02-28"},
      {61, "1900-03-01"},      {25569, "1970-01-01"},  {36584, "2000-02-28"},   {36585, "2000-02-29"},
      {36586, "2000-03-01"},   {45351, "2024-02-29"},  {-1, "1899-12-29"},      {-363, "1899-01-01"},
      {-364, "1898-12-31"},    {-36522, "1800-01-01"}, {-109205, "1601-01-01"}, {-657434, "0100-01-01"},
      {2958465, "9999-12-31"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Utf8(OleDateToText(row.date)), row.text) << row.date;
}

TEST(OleDate, FractionCountsForwardOnBothSides) {
  EXPECT_EQ(Split(0.75), "1899-12-30 18:0:0 w6");
  EXPECT_EQ(Split(-0.75), "1899-12-30 18:0:0 w6");
  EXPECT_EQ(Split(-1.25), "1899-12-29 6:0:0 w5");
  EXPECT_EQ(Split(-1.0), "1899-12-29 0:0:0 w5");
  EXPECT_EQ(Utf8(OleDateToText(-1.99)), "1899-12-29");
}

TEST(OleDate, TimesAreRoundedToTheSecondAndRollOver) {
  EXPECT_EQ(Split(1.0 + 59.4 / 86400), "1899-12-31 0:0:59 w0");
  EXPECT_EQ(Split(1.0 + 59.6 / 86400), "1899-12-31 0:1:0 w0");
  EXPECT_EQ(Split(1.999999), "1900-1-1 0:0:0 w1");
  EXPECT_EQ(Split(-2.999999), "1899-12-29 0:0:0 w5");
}

TEST(OleDate, RangeEndsAtTheYears100And9999) {
  EXPECT_EQ(Split(-657434), "100-1-1 0:0:0 w5");
  EXPECT_EQ(Split(-657434.5), "100-1-1 12:0:0 w5");
  EXPECT_EQ(Split(-657435), "none");
  EXPECT_EQ(Split(2958465.5), "9999-12-31 12:0:0 w5");
  EXPECT_EQ(Split(2958465.999999), "none");
  EXPECT_EQ(Split(2958466), "none");
  EXPECT_EQ(Split(1e300), "none");
  EXPECT_EQ(Split(std::numeric_limits<double>::quiet_NaN()), "none");
  EXPECT_EQ(Split(-std::numeric_limits<double>::infinity()), "none");
  EXPECT_EQ(Utf8(OleDateToText(1e9)), "");
}

TEST(OleDate, FailureLeavesTheOutputs) {
  SYSTEMTIME t{};
  t.wYear = 7;
  EXPECT_FALSE(SplitOleDate(1e9, t));
  EXPECT_EQ(t.wYear, 7);
  double date = 5;
  EXPECT_FALSE(JoinOleDate(t, date));
  EXPECT_FALSE(TextToOleDate(_T("x"), date));
  EXPECT_EQ(date, 5);
}

TEST(OleDate, EveryDayGoesThereAndBack) {
  for (int day = -657434; day < 2958466; day += 37) {
    SYSTEMTIME t{};
    double back = 0;
    ASSERT_TRUE(SplitOleDate(day, t)) << day;
    ASSERT_TRUE(JoinOleDate(t, back)) << day;
    ASSERT_EQ(back, day);
  }
}

TEST(OleDate, JoinRefusesWhatIsNoDate) {
  const SYSTEMTIME kBad[] = {
      {99, 12, 0, 31, 0, 0, 0, 0},  {10000, 1, 0, 1, 0, 0, 0, 0}, {2023, 2, 0, 29, 0, 0, 0, 0},
      {1900, 2, 0, 29, 0, 0, 0, 0}, {2024, 0, 0, 1, 0, 0, 0, 0},  {2024, 13, 0, 1, 0, 0, 0, 0},
      {2024, 4, 0, 31, 0, 0, 0, 0}, {2024, 4, 0, 0, 0, 0, 0, 0},  {2024, 4, 0, 1, 24, 0, 0, 0},
      {2024, 4, 0, 1, 0, 60, 0, 0}, {2024, 4, 0, 1, 0, 0, 60, 0},
  };
  double date = 0;
  for (const SYSTEMTIME& t : kBad)
    EXPECT_FALSE(JoinOleDate(t, date)) << t.wYear << "-" << t.wMonth << "-" << t.wDay;
  EXPECT_TRUE(JoinOleDate({1899, 12, 0, 29, 6, 0, 0, 0}, date));
  EXPECT_EQ(date, -1.25);
}

TEST(OleDate, ReadsTexts) {
  const struct {
    LPCTSTR text;
    double date;
  } kGood[] = {
      {_T("2000-01-01"), 36526},          {_T(" 2000/1/1 "), 36526}, {_T("2000-1-1 12:00"), 36526.5},
      {_T("1899-12-29 06:00:00"), -1.25}, {_T("18:00"), 0.75},       {_T("9999-12-31"), 2958465},
  };
  for (const auto& row : kGood) {
    double date = 0;
    EXPECT_TRUE(TextToOleDate(row.text, date)) << Utf8(row.text);
    EXPECT_EQ(date, row.date) << Utf8(row.text);
  }
  for (const LPCTSTR text :
       {_T(""), _T(" "), _T("2000"), _T("2000-1"), _T("2000-1/1"), _T("2000-13-1"), _T("2000-1-1x"),
        _T("2000-1-1 "
           "x"),
        _T("2000-1-112:00"), _T("20000-1-1"), _T("24:00"), _T("1:2:3:4"), _T("12"), _T("2000-1-1 12:00 1")}) {
    double date = 0;
    EXPECT_FALSE(TextToOleDate(text, date)) << Utf8(text);
  }
}

}  // namespace
}  // namespace lorv
