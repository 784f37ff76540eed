#include <gtest/gtest.h>

#include <random>

#include "framework/values/ole_date.h"
#include "framework/values/variant.h"
#include "tests/support/print.h"

// The conversions of this library beside those of the system, in the neutral language.
namespace lorv {
namespace {

std::string SystemText(const VARIANT& value) {
  _variant_t text;
  const HRESULT result =
      ::VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, VT_BSTR);
  return FAILED(result) ? "fails" : TextToUtf8(TextView(text.bstrVal, SysStringLen(text.bstrVal)));
}

std::string OurText(const VARIANT& value) {
  _variant_t text;
  const HRESULT result = ChangeValueType(text, value, VT_BSTR);
  return FAILED(result) ? "fails" : TextToUtf8(TextView(text.bstrVal, SysStringLen(text.bstrVal)));
}

TEST(OleautAgreement, TextsOfDoubles) {
  std::mt19937_64 random(7);
  // From 1E+07 on, doubles are coarse enough to lie half-way between two texts of 15 digits, where the system
  // under test rounds away from zero and others to the even digit.
  std::uniform_int_distribution<int> exponent(-20, 6);
  std::uniform_real_distribution<double> mantissa(-10, 10);
  for (int i = 0; i < 20000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    EXPECT_EQ(OurText(_variant_t(value)), SystemText(_variant_t(value)));
    const double short_one = std::round(mantissa(random) * 1000) / 100;
    EXPECT_EQ(OurText(_variant_t(short_one)), SystemText(_variant_t(short_one)));
  }
  for (const double value : {0.0, -0.0, 1e15, 999999999999999.9, 1e14, 0.0001, 0.00001, 1.5e-5, 1e100}) {
    EXPECT_EQ(OurText(_variant_t(value)), SystemText(_variant_t(value)));
  }
}

TEST(OleautAgreement, TextsOfOtherKinds) {
  CY money;
  for (const long long amount : {0LL, 1LL, 12345LL, -15000LL, 1000000LL, 9223372036854775807LL}) {
    money.int64 = amount;
    EXPECT_EQ(OurText(_variant_t(money)), SystemText(_variant_t(money))) << amount;
  }
  for (const _variant_t& value :
       {_variant_t(true), _variant_t(false), _variant_t(), _variant_t(short{-7}), _variant_t(123456789),
        _variant_t(0.1f), _variant_t(1234567.0f), _variant_t(1.0f / 3), _variant_t(-5LL), _variant_t(7u),
        _variant_t(_T("x")), _variant_t(5L, VT_ERROR)}) {
    EXPECT_EQ(OurText(value), SystemText(value)) << value.vt;
  }
}

TEST(OleautAgreement, NumbersFromTextsAndNumbers) {
  const LPCTSTR kTexts[] = {_T("12"),  _T(" -1.5 "), _T("1,000"), _T("1e3"), _T(".5"),
                            _T("abc"), _T("12mm"),   _T(""),      _T("0.5"), _T("1.5"),
                            _T("2.5"), _T("-2.5"),   _T("99999"), _T("-1")};
  for (const LPCTSTR text : kTexts) {
    for (const VARTYPE type : {VT_I2, VT_I4, VT_R8, VT_UI1, VT_BOOL, VT_CY}) {
      const _variant_t source(text);
      _variant_t ours;
      _variant_t systems;
      const HRESULT mine = ChangeValueType(ours, source, type);
      const HRESULT its =
          ::VariantChangeTypeEx(&systems, const_cast<_variant_t*>(&source), LOCALE_INVARIANT, 0, type);
      EXPECT_EQ(mine, its) << test::Utf8(text) << " to " << type;
      EXPECT_TRUE(ours == systems) << test::Utf8(text) << " to " << type;
    }
  }
}

TEST(OleautAgreement, RoundingOfDoubles) {
  for (const double value :
       {0.5, 1.5, 2.5, -0.5, -1.5, 32767.4, 32767.5, 2147483647.4, 2147483648.0, 1e30, -1.0}) {
    for (const VARTYPE type : {VT_I2, VT_I4, VT_I8, VT_UI1, VT_UI4, VT_BOOL, VT_R4}) {
      const _variant_t source(value);
      _variant_t ours;
      _variant_t systems;
      const HRESULT mine = ChangeValueType(ours, source, type);
      const HRESULT its =
          ::VariantChangeTypeEx(&systems, const_cast<_variant_t*>(&source), LOCALE_INVARIANT, 0, type);
      EXPECT_EQ(mine, its) << value << " to " << type;
      EXPECT_TRUE(ours == systems) << value << " to " << type;
    }
  }
}

TEST(OleautAgreement, PartsOfDates) {
  // Quarters, not fractions that round up to the next day: the system under test then miscounts the months.
  for (double date = -657434; date < 2958466; date += 977.25) {
    SYSTEMTIME ours{};
    SYSTEMTIME systems{};
    ASSERT_TRUE(SplitOleDate(date, ours)) << date;
    ASSERT_TRUE(::VariantTimeToSystemTime(date, &systems)) << date;
    EXPECT_EQ(ours.wYear, systems.wYear) << date;
    EXPECT_EQ(ours.wMonth, systems.wMonth) << date;
    EXPECT_EQ(ours.wDay, systems.wDay) << date;
    EXPECT_EQ(ours.wHour, systems.wHour) << date;
    EXPECT_EQ(ours.wMinute, systems.wMinute) << date;
    EXPECT_EQ(ours.wSecond, systems.wSecond) << date;
  }
}

}  // namespace
}  // namespace lorv
