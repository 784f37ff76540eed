#include "tables/value_compare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/support/print.h"

namespace lorv {
namespace {

bool Equal(const _variant_t& value, const _variant_t& cell) {
  return CompareValues(1, true, value, cell);
}

bool Less(const _variant_t& value, const _variant_t& cell) {
  return CompareValues(4, true, value, cell);
}

TEST(ValueCompare, DifferentTagsFulfilNoComparison) {
  for (long comparison = 1; comparison <= 6; ++comparison) {
    EXPECT_FALSE(CompareValues(comparison, true, _variant_t(5L), _variant_t(_T("5")))) << comparison;
    EXPECT_FALSE(CompareValues(comparison, true, _variant_t(5L), _variant_t(5.0))) << comparison;
    EXPECT_FALSE(CompareValues(comparison, true, _variant_t(), _variant_t(_T("")))) << comparison;
  }
}

TEST(ValueCompare, NumbersCompareAsTexts) {
  EXPECT_TRUE(Less(_variant_t(10L), _variant_t(9L)));
  EXPECT_TRUE(Less(_variant_t(10.0), _variant_t(9.0)));
  EXPECT_TRUE(Less(_variant_t(-1L), _variant_t(0L)));
  EXPECT_TRUE(Less(_variant_t(true), _variant_t(false)));
  EXPECT_TRUE(Less(_variant_t(1e15), _variant_t(2.0)));
}

TEST(ValueCompare, EmptyNullAndErrorEqualTheirKind) {
  VARIANT a{};
  VARIANT b{};
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_ERROR}) {
    a.vt = type;
    b.vt = type;
    b.scode = 7;
    EXPECT_TRUE(CompareValues(1, true, a, b)) << type;
  }
}

TEST(ValueCompare, DatesAreEqualOnTheSameDay) {
  EXPECT_TRUE(Equal(_variant_t(45351.25, VT_DATE), _variant_t(45351.75, VT_DATE)));
  EXPECT_FALSE(Equal(_variant_t(45351.25, VT_DATE), _variant_t(45352.25, VT_DATE)));
  EXPECT_TRUE(Less(_variant_t(-1.0, VT_DATE), _variant_t(45351.0, VT_DATE)));
}

TEST(ValueCompare, DoublesAreEqualWhereFifteenDigitsAre) {
  EXPECT_TRUE(Equal(_variant_t(0.1 + 0.2), _variant_t(0.3)));
  EXPECT_TRUE(Equal(_variant_t(0.0), _variant_t(-0.0)));
  EXPECT_FALSE(Equal(_variant_t(1.0), _variant_t(1.00000000000001)));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Equal(_variant_t(nan), _variant_t(nan)));
}

TEST(ValueCompare, ShortWayForDoublesGivesWhatTheTextsGive) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> mantissa(1, 10);
  std::uniform_int_distribution<int> steps(-60, 60);
  for (int i = 0; i < 50000; ++i) {
    double a = mantissa(random);
    if (i % 3 == 0) a = 1 + (a - 1) * 1e-13;
    if (i % 5 == 0) a = 9.99999999999999 + (a - 5) * 1e-15;
    double b = a;
    for (int left = steps(random); left != 0; left += left > 0 ? -1 : 1)
      b = std::nextafter(b, left > 0 ? 20.0 : 0.0);
    const bool same = VariantToText(_variant_t(a)) == VariantToText(_variant_t(b));
    ASSERT_EQ(Equal(_variant_t(a), _variant_t(b)), same) << a << " " << b;
    ASSERT_EQ(CompareValues(6, true, _variant_t(a), _variant_t(b)), !same) << a << " " << b;
  }
}

TEST(ValueCompare, WithoutCaseLettersAreCapitals) {
  EXPECT_TRUE(CompareValues(1, false, _variant_t(_T("kl墙")), _variant_t(_T("KL墙"))));
  EXPECT_FALSE(CompareValues(1, true, _variant_t(_T("kl墙")), _variant_t(_T("KL墙"))));
  EXPECT_TRUE(CompareValues(2, false, _variant_t(_T("_")), _variant_t(_T("a"))));
  EXPECT_TRUE(CompareValues(4, true, _variant_t(_T("_")), _variant_t(_T("a"))));
  EXPECT_FALSE(CompareValues(1, false, _variant_t(CString(TCHAR{0xE9})), _variant_t(CString(TCHAR{0xC9}))));
}

TEST(ValueCompare, BeginningSortsBeforeTheWhole) {
  EXPECT_TRUE(Less(_variant_t(_T("ab")), _variant_t(_T("abc"))));
  EXPECT_TRUE(CompareValues(4, false, _variant_t(_T("AB")), _variant_t(_T("abc"))));
  EXPECT_TRUE(Less(_variant_t(_T("")), _variant_t(_T("a"))));
  EXPECT_TRUE(Equal(_variant_t(static_cast<LPCTSTR>(nullptr)), _variant_t(_T(""))));
}

TEST(ValueCompare, CellTextsAreThoseOfTheOneRule) {
  for (const _variant_t& value : {_variant_t(), _variant_t(-2147483647 - 1), _variant_t(short{-32768}),
                                  _variant_t(true), _variant_t(0.1), _variant_t(_T("墙")),
                                  _variant_t(45351.0, VT_DATE), _variant_t(5L, VT_ERROR), _variant_t(7LL)}) {
    EXPECT_EQ(test::Utf8(CellText(value).View()), test::Utf8(VariantToText(value))) << value.vt;
  }
}

}  // namespace
}  // namespace lorv
