// The reading of numbers in formulas beside the library's general reader: both must give the same bits.

#include "TEXPRESSCAL/language/formula_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <string>
#include <utility>

#include "framework/text/cstring.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// The value, and how many units were read.
std::pair<double, int> Read(const CString& text) {
  LPCTSTR at = text;
  const double value = ReadFormulaNumber(at);
  return {value, static_cast<int>(at - text.GetString())};
}

void ExpectAsTheGeneralReader(const CString& text) {
  const auto [value, used] = Read(text);
  EXPECT_EQ(used, text.GetLength()) << Utf8(text);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(ReadReal(text.View())))
      << Utf8(text);
}

TEST(FormulaNumber, EndsBehindDigitsAndPoints) {
  EXPECT_EQ(Read(_T("12+3")), std::pair(12.0, 2));
  EXPECT_EQ(Read(_T("1.5*A")), std::pair(1.5, 3));
  EXPECT_EQ(Read(_T("7.")), std::pair(7.0, 2));
  EXPECT_EQ(Read(_T("2e3")), std::pair(2.0, 1));  // no exponents in formulas
  EXPECT_EQ(Read(_T("1.2.3+4")), std::pair(1.2, 5));
  EXPECT_EQ(Read(_T("1..5")), std::pair(1.0, 4));
}

TEST(FormulaNumber, TheShortWayEndsAtFifteenDigits) {
  for (int digits = 1; digits <= 40; ++digits) {
    ExpectAsTheGeneralReader(CString(_T('9'), digits));
    for (int point = 1; point <= digits; ++point) {
      CString text(_T('7'), digits);
      text.Insert(point, _T('.'));
      ExpectAsTheGeneralReader(text);
    }
  }
}

TEST(FormulaNumber, LongTextsOfZerosAreNumbersToo) {
  ExpectAsTheGeneralReader(CString(_T('0'), 400) + _T("1"));
  ExpectAsTheGeneralReader(_T("0.") + CString(_T('0'), 400) + _T("1"));
  ExpectAsTheGeneralReader(_T("1") + CString(_T('0'), 400));
  ExpectAsTheGeneralReader(CString(_T('9'), 5000));
}

TEST(FormulaNumber, RandomDigitsHaveTheSameBits) {
  std::mt19937 random(61);
  for (int round = 0; round < 50000; ++round) {
    CString text(static_cast<TCHAR>('0' + random() % 10), 1);
    const int units = static_cast<int>(random() % 22);
    bool pointed = false;
    for (int i = 0; i < units; ++i) {
      const bool point = !pointed && random() % 8 == 0;
      pointed = pointed || point;
      text.AppendChar(point ? TCHAR('.') : static_cast<TCHAR>('0' + random() % 10));
    }
    ExpectAsTheGeneralReader(text);
  }
}

}  // namespace
}  // namespace lorv
