#include "framework/text/text_compare.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

int Sign(int order) {
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

TEST(TextCompare, HeaderExample) {
  EXPECT_EQ(strcompare(_T("Beam"), _T("BEAM"), -1), 0);
}

TEST(TextCompare, LengthsCountUnits) {
  EXPECT_EQ(TextLength(_T("")), 0u);
  EXPECT_EQ(TextLength(_T("墙a")), 2u);
  EXPECT_EQ(TextLength(_T("\U00020000")), 2u);
}

// The text ends where its memory ends, at any distance from a whole step.
TEST(TextCompare, LengthsOfTextsThatEndWithTheirMemory) {
  for (std::size_t length = 0; length < 40; ++length) {
    for (std::size_t from = 0; from <= length; ++from) {
      std::vector<TCHAR> units(length + 1, 'a');
      units[length] = 0;
      units.shrink_to_fit();
      EXPECT_EQ(TextLength(units.data() + from), length - from);
    }
  }
}

TEST(TextCompare, PointersAndViewsGiveTheSameOrder) {
  const struct {
    LPCTSTR a;
    LPCTSTR b;
    int exact;
    int without_case;
  } kRows[] = {
      {_T(""), _T(""), 0, 0},       {_T(""), _T("a"), -1, -1},     {_T("a"), _T(""), 1, 1},
      {_T("a"), _T("a"), 0, 0},     {_T("a"), _T("A"), 1, 0},      {_T("A"), _T("b"), -1, -1},
      {_T("B"), _T("a"), -1, 1},    {_T("ab"), _T("abc"), -1, -1}, {_T("abc"), _T("ab"), 1, 1},
      {_T("_"), _T("A"), 1, -1},    {_T("_"), _T("a"), -1, -1},    {_T("["), _T("z"), -1, -1},
      {_T("墙"), _T("梁"), -1, -1}, {_T("Z墙"), _T("z墙"), -1, 0}, {_T("é"), _T("É"), 1, 1},
      {_T("{"), _T("Z"), 1, 1},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(Utf8(row.a) + " with " + Utf8(row.b));
    EXPECT_EQ(Sign(CompareExact(row.a, row.b)), row.exact);
    EXPECT_EQ(Sign(CompareExact(TextView(row.a), TextView(row.b))), row.exact);
    EXPECT_EQ(Sign(CompareWithoutCase(row.a, row.b)), row.without_case);
    EXPECT_EQ(Sign(CompareWithoutCase(TextView(row.a), TextView(row.b))), row.without_case);
    EXPECT_EQ(Sign(strcompare(row.a, row.b, -1)), row.without_case);
  }
}

TEST(TextCompare, ViewsSeeZeroUnits) {
  const TextView a(_T("a\0b"), 3);
  const TextView b(_T("a\0C"), 3);
  EXPECT_GT(CompareExact(a, b), 0);
  EXPECT_LT(CompareWithoutCase(a, b), 0);
  EXPECT_GT(CompareExact(a, TextView(_T("a"))), 0);
}

TEST(TextCompare, HighUnitsAreLargerThanLowOnes) {
  const TCHAR high[] = {0xFFFF, 0};
  const TCHAR low[] = {0x0001, 0};
  EXPECT_GT(CompareExact(high, low), 0);
  EXPECT_GT(CompareWithoutCase(high, low), 0);
}

TEST(TextCompare, CountLimitsTheSuitesComparison) {
  EXPECT_EQ(strcompare(_T("beam1"), _T("BEAM2"), 4), 0);
  EXPECT_LT(strcompare(_T("beam1"), _T("BEAM2"), 5), 0);
  EXPECT_EQ(strcompare(_T("a"), _T("b"), 0), 0);
  EXPECT_EQ(strcompare(_T("a"), _T("A"), 100), 0);
  EXPECT_LT(strcompare(_T("a"), _T("ab"), 2), 0);
  EXPECT_EQ(strcompare(_T("a"), _T("ab"), 1), 0);
  EXPECT_LT(strcompare(_T("a"), _T("b"), -7), 0);
}

}  // namespace
}  // namespace lorv
