#include "framework/values/variant_convert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "framework/values/variant.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr double kInfiniteReal = std::numeric_limits<double>::infinity();

std::string TextOf(const VARIANT& value) {
  _variant_t text;
  if (FAILED(ChangeValueType(text, value, VT_BSTR))) return "fails";
  return TextToUtf8(TextView(text.bstrVal, SysStringLen(text.bstrVal)));
}

HRESULT Convert(const VARIANT& value, VARTYPE type) {
  _variant_t target(7L);
  const HRESULT result = ChangeValueType(target, value, type);
  if (FAILED(result)) {
    EXPECT_EQ(target.vt, VT_I4) << "a failure must leave the target";
  }
  return result;
}

CY Money(long long tenthousandths) {
  CY money;
  money.int64 = tenthousandths;
  return money;
}

TEST(VariantConvert, HeaderExample) {
  EXPECT_EQ(Utf8(RealValueToText(0.1 + 0.2)), "0.3");
}

TEST(VariantConvert, DoublesHaveFifteenDigits) {
  const struct {
    double value;
    const char* text;
  } kRows[] = {
      {0, "0"},
      {-0.0, "0"},
      {1, "1"},
      {-1.5, "-1.5"},
      {0.1, "0.1"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {100, "100"},
      {1e14, "100000000000000"},
      {123456789012345, "123456789012345"},
      {999999999999999, "999999999999999"},
      {999999999999999.9, "1E+15"},
      {1e15, "1E+15"},
      {1234567890123456, "1.23456789012346E+15"},
      {1e100, "1E+100"},
      {-1.5e300, "-1.5E+300"},
      {0.0001, "0.0001"},
      {0.00012345, "0.00012345"},
      {0.0000999999999999999999, "0.0001"},
      {0.00001, "1E-05"},
      {0.000015, "1.5E-05"},
      {DBL_MAX, "1.79769313486232E+308"},
      {DBL_MIN, "2.2250738585072E-308"},
      {5e-324, "4.94065645841247E-324"},
      {kInfiniteReal, "1.#INF"},
      {-kInfiniteReal, "-1.#INF"},
      {std::numeric_limits<double>::quiet_NaN(), "1.#QNAN"},
      {-std::numeric_limits<double>::quiet_NaN(), "-1.#IND"},
  };
  for (const auto& row : kRows) EXPECT_EQ(TextOf(_variant_t(row.value)), row.text) << row.value;
}

TEST(VariantConvert, FloatsHaveSevenDigits) {
  EXPECT_EQ(TextOf(_variant_t(0.1f)), "0.1");
  EXPECT_EQ(TextOf(_variant_t(1.0f / 3)), "0.3333333");
  EXPECT_EQ(TextOf(_variant_t(1234567.0f)), "1234567");
  EXPECT_EQ(TextOf(_variant_t(12345678.0f)), "1.234568E+07");
  EXPECT_EQ(TextOf(_variant_t(-0.0f)), "0");
}

TEST(VariantConvert, WholeNumbersToTheEndsOfTheirRange) {
  EXPECT_EQ(TextOf(_variant_t(short{-32768})), "-32768");
  EXPECT_EQ(TextOf(_variant_t(2147483647)), "2147483647");
  EXPECT_EQ(TextOf(_variant_t(-2147483647 - 1)), "-2147483648");
  EXPECT_EQ(TextOf(_variant_t(std::numeric_limits<long long>::min())), "-9223372036854775808");
  EXPECT_EQ(TextOf(_variant_t(std::numeric_limits<unsigned long long>::max())), "18446744073709551615");
  EXPECT_EQ(TextOf(_variant_t(4294967295u)), "4294967295");
  EXPECT_EQ(TextOf(_variant_t(static_cast<unsigned char>(255))), "255");
  EXPECT_EQ(TextOf(_variant_t(static_cast<char>(-5))), "-5");
  EXPECT_EQ(TextOf(_variant_t(static_cast<unsigned short>(65535))), "65535");
}

TEST(VariantConvert, BooleansMoneyDatesAndTheEmptyValue) {
  EXPECT_EQ(TextOf(_variant_t(true)), "-1");
  EXPECT_EQ(TextOf(_variant_t(false)), "0");
  EXPECT_EQ(TextOf(_variant_t(Money(12345))), "1.2345");
  EXPECT_EQ(TextOf(_variant_t(Money(15000))), "1.5");
  EXPECT_EQ(TextOf(_variant_t(Money(1000000))), "100");
  EXPECT_EQ(TextOf(_variant_t(Money(-5))), "-0.0005");
  EXPECT_EQ(TextOf(_variant_t(Money(0))), "0");
  EXPECT_EQ(TextOf(_variant_t(Money(std::numeric_limits<long long>::min()))), "-922337203685477.5808");
  EXPECT_EQ(TextOf(_variant_t(45351.25, VT_DATE)), "2024-02-29");
  EXPECT_EQ(TextOf(_variant_t()), "");
  EXPECT_EQ(TextOf(_variant_t(_T("墙"))), "墙");
}

TEST(VariantConvert, NullErrorAndObjectsHaveNoOtherKind) {
  _variant_t null;
  null.vt = VT_NULL;
  const _variant_t error(DISP_E_PARAMNOTFOUND, VT_ERROR);
  for (const VARTYPE type : {VT_BSTR, VT_I4, VT_R8, VT_BOOL, VT_DATE}) {
    EXPECT_EQ(Convert(null, type), DISP_E_TYPEMISMATCH) << type;
    EXPECT_EQ(Convert(error, type), DISP_E_TYPEMISMATCH) << type;
  }
  EXPECT_EQ(Convert(_variant_t(static_cast<IUnknown*>(nullptr)), VT_R8), DISP_E_TYPEMISMATCH);
}

TEST(VariantConvert, TagThatIsNoneFails) {
  VARIANT wrong{};
  wrong.vt = 15;
  EXPECT_LT(Convert(wrong, VT_BSTR), 0);
  EXPECT_LT(Convert(_variant_t(5L), 15), 0);
  EXPECT_LT(Convert(_variant_t(5L), 0x0FFF), 0);
}

TEST(VariantConvert, FractionsRoundAHalfToTheEvenNeighbour) {
  const struct {
    double value;
    int whole;
  } kRows[] = {{0.5, 0},   {1.5, 2},    {2.5, 2},  {-0.5, 0},   {-1.5, -2},
               {-2.5, -2}, {2.4999, 2}, {2.51, 3}, {-2.51, -3}, {0.49999999999999994, 0}};
  for (const auto& row : kRows) EXPECT_EQ(static_cast<int>(_variant_t(row.value)), row.whole) << row.value;
  EXPECT_EQ(static_cast<int>(_variant_t(Money(15000))), 2);
  EXPECT_EQ(static_cast<int>(_variant_t(Money(25000))), 2);
  EXPECT_EQ(static_cast<int>(_variant_t(Money(-15001))), -2);
  EXPECT_EQ(static_cast<long long>(_variant_t(Money(9223372036854775807LL))), 922337203685478LL);
}

TEST(VariantConvert, WhatDoesNotFitOverflows) {
  EXPECT_EQ(Convert(_variant_t(32767.4), VT_I2), S_OK);
  EXPECT_EQ(Convert(_variant_t(32767.5), VT_I2), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(-32768.5), VT_I2), S_OK);
  EXPECT_EQ(Convert(_variant_t(-32769), VT_I2), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(2147483648.0), VT_I4), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(2147483647.0), VT_I4), S_OK);
  EXPECT_EQ(Convert(_variant_t(-1L), VT_UI4), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(256L), VT_UI1), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(9223372036854775808.0), VT_I8), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(9223372036854775808.0), VT_UI8), S_OK);
  EXPECT_EQ(Convert(_variant_t(18446744073709551616.0), VT_UI8), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(std::numeric_limits<double>::quiet_NaN()), VT_I4), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(kInfiniteReal), VT_I8), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(1e39), VT_R4), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(1e15), VT_CY), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(std::numeric_limits<long long>::min()), VT_CY), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(1e9), VT_DATE), DISP_E_OVERFLOW);
  EXPECT_EQ(Convert(_variant_t(_T("1e999")), VT_R8), DISP_E_OVERFLOW);
}

TEST(VariantConvert, TextsBecomeNumbers) {
  const struct {
    LPCTSTR text;
    double value;
  } kGood[] = {{_T("12"), 12},
               {_T(" -1.5 "), -1.5},
               {_T("+3"), 3},
               {_T("1,000"), 1000},
               {_T("1,234,567.5"), 1234567.5},
               {_T(".5"), 0.5},
               {_T("5."), 5},
               {_T("1e3"), 1000},
               {_T("1E-2"), 0.01},
               {_T("-0"), 0}};
  for (const auto& row : kGood) {
    EXPECT_EQ(static_cast<double>(_variant_t(row.text)), row.value) << Utf8(row.text);
  }
  for (const LPCTSTR text : {_T(""), _T(" "), _T("abc"), _T("12mm"), _T("1 2"), _T("--1"), _T(",1"),
                             _T("1.2.3"), _T("1e"), _T("."), _T("1.0,5"), _T("１")}) {
    EXPECT_EQ(Convert(_variant_t(text), VT_R8), DISP_E_TYPEMISMATCH) << Utf8(text);
  }
  EXPECT_EQ(Convert(_variant_t(static_cast<LPCTSTR>(nullptr)), VT_I4), DISP_E_TYPEMISMATCH);
}

TEST(VariantConvert, LongWholeTextsKeepEveryDigit) {
  EXPECT_EQ(static_cast<long long>(_variant_t(_T("123456789012345678"))), 123456789012345678LL);
  EXPECT_EQ(static_cast<long long>(_variant_t(_T("-999999999999999999"))), -999999999999999999LL);
  EXPECT_EQ(static_cast<long long>(_variant_t(_T("1000000000000000000"))), 1000000000000000000LL);
}

TEST(VariantConvert, BooleansFromTextsAndNumbers) {
  for (const LPCTSTR text : {_T("True"), _T("TRUE"), _T(" true "), _T("1"), _T("-1"), _T("0.1")}) {
    EXPECT_TRUE(static_cast<bool>(_variant_t(text))) << Utf8(text);
  }
  for (const LPCTSTR text : {_T("False"), _T("false"), _T("0"), _T("0.0")}) {
    EXPECT_FALSE(static_cast<bool>(_variant_t(text))) << Utf8(text);
  }
  EXPECT_EQ(Convert(_variant_t(_T("yes")), VT_BOOL), DISP_E_TYPEMISMATCH);
  EXPECT_TRUE(static_cast<bool>(_variant_t(2L)));
  EXPECT_FALSE(static_cast<bool>(_variant_t()));
}

TEST(VariantConvert, TrueIsAllBitsSet) {
  EXPECT_EQ(static_cast<int>(_variant_t(true)), -1);
  EXPECT_EQ(static_cast<unsigned char>(_variant_t(true)), 255);
  EXPECT_EQ(static_cast<unsigned>(_variant_t(true)), 4294967295u);
  EXPECT_EQ(static_cast<unsigned>(_variant_t(false)), 0u);
}

TEST(VariantConvert, DatesFromTextsAndNumbers) {
  _variant_t value(_T("2000-01-01 12:00"));
  value.ChangeType(VT_DATE);
  EXPECT_EQ(value.date, 36526.5);
  value = _variant_t(_T("5"));
  value.ChangeType(VT_DATE);
  EXPECT_EQ(value.date, 5);
  EXPECT_EQ(static_cast<double>(_variant_t(36526.5, VT_DATE)), 36526.5);
}

TEST(VariantConvert, TargetMayBeTheSource) {
  _variant_t value(_T("12.5"));
  EXPECT_EQ(ChangeValueType(value, value, VT_R8), S_OK);
  EXPECT_EQ(value.dblVal, 12.5);
  EXPECT_EQ(ChangeValueType(value, value, VT_R8), S_OK);
  EXPECT_EQ(ChangeValueType(value, value, VT_BSTR), S_OK);
  EXPECT_EQ(TextOf(value), "12.5");
}

TEST(VariantConvert, ReferencesAreFollowed) {
  double real = 2.5;
  VARIANT by_reference{};
  by_reference.vt = VT_R8 | VT_BYREF;
  by_reference.byref = &real;
  EXPECT_EQ(TextOf(by_reference), "2.5");
  _variant_t text(_T("梁"));
  VARIANT outer{};
  outer.vt = VT_VARIANT | VT_BYREF;
  outer.pvarVal = &text;
  EXPECT_EQ(TextOf(outer), "梁");
  outer.pvarVal = &outer;
  EXPECT_EQ(TextOf(outer), "fails");
  outer.byref = nullptr;
  EXPECT_EQ(TextOf(outer), "fails");
}

TEST(VariantConvert, ReferenceToAReferenceGivesItsValue) {
  int number = 42;
  VARIANT inner{};
  inner.vt = VT_I4 | VT_BYREF;
  inner.byref = &number;
  VARIANT outer{};
  outer.vt = VT_VARIANT | VT_BYREF;
  outer.pvarVal = &inner;
  EXPECT_EQ(TextOf(outer), "42");
  _variant_t target;
  EXPECT_EQ(VariantCopyInd(&target, &outer), S_OK);
  EXPECT_EQ(target.vt, VT_I4);
  EXPECT_EQ(target.lVal, 42);
  EXPECT_EQ(inner.vt, VT_I4 | VT_BYREF);
  EXPECT_EQ(inner.byref, static_cast<void*>(&number));
  inner.byref = nullptr;
  EXPECT_EQ(TextOf(outer), "fails");
}

TEST(VariantConvert, ReferencesReadAsManyBytesAsTheirKindHas) {
  // What stands behind the value must not show in it.
  unsigned char bytes[16];
  std::fill(std::begin(bytes), std::end(bytes), static_cast<unsigned char>(0xFE));
  const struct {
    VARTYPE type;
    const char* text;
  } kRows[] = {{VT_UI1, "254"},
               {VT_I1, "-2"},
               {VT_UI2, "65278"},
               {VT_I2, "-258"},
               {VT_UI4, "4278124286"},
               {VT_I4, "-16843010"},
               {VT_UI8, "18374403900871474942"},
               {VT_I8, "-72340172838076674"}};
  for (const auto& row : kRows) {
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(row.type | VT_BYREF);
    reference.byref = bytes;
    EXPECT_EQ(TextOf(reference), row.text) << row.type;
  }
}

TEST(VariantConvert, WholeNumbersSurviveEveryWiderKind) {
  std::mt19937_64 random(11);
  const VARTYPE kKinds[] = {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT};
  for (int round = 0; round < 2000; ++round) {
    const auto number = static_cast<long long>(random()) >> random() % 64;
    const _variant_t start(number);
    const std::string text = std::to_string(number);
    for (const VARTYPE kind : kKinds) {
      _variant_t there;
      if (FAILED(ChangeValueType(there, start, kind))) continue;
      _variant_t back;
      ASSERT_EQ(ChangeValueType(back, there, VT_I8), S_OK) << text << " by " << kind;
      EXPECT_EQ(back.llVal, number) << kind;
      EXPECT_EQ(TextOf(there), text) << kind;
    }
  }
}

TEST(VariantConvert, TextsOfWholeNumbersReadBack) {
  std::mt19937_64 random(12);
  for (int round = 0; round < 2000; ++round) {
    const auto number = static_cast<long long>(random()) >> (random() % 59 + 5);
    const _variant_t text(CString::FromUtf8(std::to_string(number)));
    _variant_t back;
    ASSERT_EQ(ChangeValueType(back, text, VT_I8), S_OK);
    EXPECT_EQ(back.llVal, number);
    // Commas between the digits and blanks around them change nothing.
    std::string grouped = std::to_string(number);
    for (int at = static_cast<int>(grouped.size()) - 3; at > (number < 0 ? 1 : 0); at -= 3)
      grouped.insert(static_cast<std::size_t>(at), ",");
    ASSERT_EQ(ChangeValueType(back, _variant_t(CString::FromUtf8(" " + grouped + "\t")), VT_I8), S_OK)
        << grouped;
    EXPECT_EQ(back.llVal, number) << grouped;
  }
}

TEST(VariantConvert, TextsOfTheLargestWholeNumbersReadBack) {
  _variant_t back;
  ASSERT_EQ(ChangeValueType(back, _variant_t(_T("9223372036854775807")), VT_I8), S_OK);
  EXPECT_EQ(back.llVal, std::numeric_limits<long long>::max());
  ASSERT_EQ(ChangeValueType(back, _variant_t(_T("-9223372036854775808")), VT_I8), S_OK);
  EXPECT_EQ(back.llVal, std::numeric_limits<long long>::min());
  ASSERT_EQ(ChangeValueType(back, _variant_t(_T("18446744073709551615")), VT_UI8), S_OK);
  EXPECT_EQ(back.ullVal, std::numeric_limits<unsigned long long>::max());
  ASSERT_EQ(ChangeValueType(back, _variant_t(_T("00000000000000000000000000007")), VT_UI8), S_OK);
  EXPECT_EQ(back.ullVal, 7U);
  EXPECT_EQ(ChangeValueType(back, _variant_t(_T("9223372036854775808")), VT_I8), DISP_E_OVERFLOW);
  EXPECT_EQ(ChangeValueType(back, _variant_t(_T("-9223372036854777856")), VT_I8), DISP_E_OVERFLOW);
  EXPECT_EQ(ChangeValueType(back, _variant_t(_T("18446744073709551616")), VT_UI8), DISP_E_OVERFLOW);
  EXPECT_EQ(ChangeValueType(back, _variant_t(_T("-1")), VT_UI8), DISP_E_OVERFLOW);
  EXPECT_EQ(back.ullVal, 7U);
  // Past 64 bits a whole number is a double.
  ASSERT_EQ(ChangeValueType(back, _variant_t(_T("-36893488147419103232")), VT_R8), S_OK);
  EXPECT_EQ(back.dblVal, -36893488147419103232.0);
}

TEST(VariantConvert, MoneyKeepsFourDecimals) {
  std::mt19937_64 random(13);
  for (int round = 0; round < 2000; ++round) {
    VARIANT money{};
    money.vt = VT_CY;
    money.cyVal = Money(static_cast<long long>(random()) >> random() % 64);
    _variant_t text;
    ASSERT_EQ(ChangeValueType(text, money, VT_BSTR), S_OK);
    // Back through a double, so only as many digits as one holds.
    if (std::llabs(money.cyVal.int64 / 2) >= 500000000000000LL) continue;
    _variant_t back;
    ASSERT_EQ(ChangeValueType(back, text, VT_CY), S_OK) << TextOf(money);
    EXPECT_EQ(back.cyVal.int64, money.cyVal.int64) << TextOf(money);
  }
}

}  // namespace
}  // namespace lorv
