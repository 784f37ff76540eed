#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "framework/values/ole_date.h"
#include "tests/spreadsheet/open_exchange.h"

namespace lorv {
namespace {

using test::OpenExchange;
using test::Utf8;

std::string Address(int row, int column) {
  return Utf8(OpenExchange().RowCol2XlsCell(row, column));
}

TEST(CornerAddress, LettersAreDigitsOfTheColumnTheLowestFirst) {
  EXPECT_EQ(Address(0, 0), "A1");
  EXPECT_EQ(Address(0, 25), "Z1");
  EXPECT_EQ(Address(9, 26), "AB10");
  EXPECT_EQ(Address(4, 27), "BB5");
  EXPECT_EQ(Address(0, 52), "AC1");
  EXPECT_EQ(Address(0, 701), "ZAB1");
  EXPECT_EQ(Address(0, 676), "AAB1");
  EXPECT_EQ(Address(1048575, 1), "B1048576");
}

TEST(CornerAddress, TheLargestRowHasANumber) {
  EXPECT_EQ(Address(std::numeric_limits<int>::max(), 0), "A2147483648");
}

struct NumberCase {
  const char* text;
  int numeric;
  long long decimals;  // -7: left as they were
};

TEST(PlainNumber, IsRecognisedByItsCharacters) {
  const NumberCase cases[] = {
      {"", 0, -7},
      {"0", 1, -7},
      {"007", 0, -7},
      {"00", 0, -7},
      {"0.0", 0, -7},
      {"0.00", 0, -7},
      {".", 0, -7},
      {"0.", 0, -7},
      {"..", 0, -7},
      {"0.5", 1, 1},
      {"12.50", 1, 2},
      {"1.2.3", 1, 3},
      {"5.", 1, 0},
      {".5", 1, 1},
      {"12", 1, 0},
      {"1,000", 0, -7},
      {"1e5", 0, -7},
      {"+1", 0, -7},
      {"-1", 0, -7},
      {" 1", 0, -7},
      {"1 ", 0, -7},
      {"\xEF\xBC\x91", 0, -7},  // a full-width one
      {"\xC2\xB2", 0, -7},      // a small two below 256
      {"100000000000000000000", 1, 0},
      {"墙", 0, -7},
  };
  for (const NumberCase& each : cases) {
    __int64 decimals = -7;
    EXPECT_EQ(OpenExchange().IsNumeric(CString::FromUtf8(each.text), decimals), each.numeric) << each.text;
    EXPECT_EQ(decimals, each.decimals) << each.text;
  }
}

TEST(PlainNumber, ANumberTooSmallToBeOneIsNone) {
  __int64 decimals = -7;
  const CString tiny = _T("0.") + CString(_T('0'), 400) + _T("1");
  EXPECT_EQ(OpenExchange().IsNumeric(tiny, decimals), 0);
  EXPECT_EQ(decimals, -7);
}

TEST(PlainNumber, NoTextIsNone) {
  __int64 decimals = -7;
  EXPECT_EQ(OpenExchange().IsNumeric(nullptr, decimals), 0);
}

TEST(FixedNumber, HasExactlyTheDecimals) {
  CString out(_T("before"));
  OpenExchange exchange;
  exchange.ftoa(2.5, 0, out);
  EXPECT_EQ(Utf8(out), "2");
  exchange.ftoa(12.34, 3, out);
  EXPECT_EQ(Utf8(out), "12.340");
  exchange.ftoa(-0.4, 0, out);
  EXPECT_EQ(Utf8(out), "-0");
  exchange.ftoa(1e22, 1, out);
  EXPECT_EQ(Utf8(out), "10000000000000000000000.0");
  exchange.ftoa(1.5, -2, out);
  EXPECT_EQ(Utf8(out), "2");
  exchange.ftoa(0.1, 5000, out);
  EXPECT_EQ(out.GetLength(), 5002);
}

TEST(NumberFormat, HasAZeroForEachDecimal) {
  OpenExchange exchange;
  EXPECT_EQ(Utf8(exchange.GetFormatOfNumber(0)), "0");
  EXPECT_EQ(Utf8(exchange.GetFormatOfNumber(-1)), "0");
  EXPECT_EQ(Utf8(exchange.GetFormatOfNumber(1)), "0.0_ ");
  EXPECT_EQ(Utf8(exchange.GetFormatOfNumber(2)), "0.00_ ");
}

TEST(TextToSheetValue, OnlyPlainDecimalsAreNumbers) {
  struct Case {
    const char* text;
    double number;  // NaN: a text
    const char* format;
  };
  const double text = std::nan("");
  const Case cases[] = {{"12.50", 12.5, "0.00_ "},
                        {"-3", -3, "0"},
                        {"0", 0, "0"},
                        {"0.00", text, "@"},
                        {"007", text, "@"},
                        {"1,000", text, "@"},
                        {"-0", 0, "0"},
                        {"-", text, "@"},
                        {"--1", text, "@"},
                        {"+1", text, "@"},
                        {"1e3", text, "@"},
                        {"-0.50", -0.5, "0.00_ "},
                        {"1.2.3", 1.2, "0.000_ "},
                        {"-1.2.3", -1.2, "0.000_ "},
                        {"墙 240", text, "@"},
                        {"5.", 5, "0"}};
  for (const Case& each : cases) {
    COleVariant value(_variant_t(true));
    const CString source = CString::FromUtf8(each.text);
    EXPECT_EQ(Utf8(OpenExchange().Str2ExcelValueStyle(source, value)), each.format) << each.text;
    if (std::isnan(each.number)) {
      ASSERT_EQ(value.vt, VT_BSTR) << each.text;
      EXPECT_EQ(Utf8(CString(_bstr_t(value).View())), each.text);
    } else {
      ASSERT_EQ(value.vt, VT_R8) << each.text;
      EXPECT_EQ(value.dblVal, each.number) << each.text;
    }
  }
}

TEST(TextToSheetValue, NoTextIsAnEmptyValue) {
  COleVariant value(_variant_t(1.5));
  EXPECT_EQ(Utf8(OpenExchange().Str2ExcelValueStyle(CString(), value)), "@");
  EXPECT_EQ(value.vt, VT_EMPTY);
}

class WholeMillimetres : public OpenExchange {
 protected:
  CString GetFormatOfNumber(int decimals) override {
    return decimals == 0 ? CString(_T("0\" mm\"")) : OpenExchange::GetFormatOfNumber(decimals);
  }
};

TEST(TextToSheetValue, ASubclassHasOtherNumberFormats) {
  COleVariant value;
  EXPECT_EQ(Utf8(WholeMillimetres().Str2ExcelValueStyle(_T("240"), value)), "0\" mm\"");
}

std::string Shown(const _variant_t& value, const char* format) {
  CString shown = CString::FromUtf8(format);
  return Utf8(OpenExchange().ExcelCellValue2Str(COleVariant(value), shown));
}

TEST(SheetValueToText, OfADoubleTheFirstRuleThatFits) {
  struct Case {
    double value;
    const char* format;
    const char* text;
  };
  const Case cases[] = {
      {0.1234, "0.00%", "12.34%"},
      {0.5, "0%", "50%"},
      {0.12345, "0.0\"%\"%", "12.3450%"},  // from the first point to the last "%"
      {0.5, "%0.0", "0.5"},                // "%" not at the end
      {1234.5, "$#,##0.00", "$1234.50"},
      {1234.5, "$#,##0", "$1234"},
      {45000, "YYYY-MM-DD", "$45000"},
      {45000, "yyyy-mm-dd", "0:0:0"},  // letters count as they are: "mm" makes a time
      {0.5, "h:mm:ss", "12:0:0"},
      {0.99999, "h:mm:ss", "23:59:59"},
      {1.0 / 24 + 2.0 / 1440 + 3.0 / 86400, "[h]:mm:ss", "1:2:3"},
      {0.5, "m:ss", "0.5"},  // no "m" behind the first one
      {0.5, "m:mm", "0.5"},  // nor behind a later one
      {1234.5, "#,##0.00", "1234.50"},
      {3, "0.00", "3.00"},
      {1.5, "0.##", "1.50"},  // the last zero before the point: what stands behind it
      {1.5, "0.", "2"},
      {1.25, "0.0#", "1.2"},
      {1.5, "#.##", "2"},  // fewer than no decimals
      {1.5, "0.00_ ", "1.50"},
      {1500, "0.00E+00", "1500"},
      {1234.4, "0_ ", "1234"},
      {1234.5, "0_)", "1234"},   // a half goes to the even number
      {1234.4, "0_", "1234.4"},  // two characters
      {1234.5, "General", "1234.5"},
      {1234567890123.0, "", "1.23456789e+12"},
      {0.1 + 0.2, "General", "0.3"},
      {-0.0, "0.0", "-0.0"},
  };
  for (const Case& each : cases) EXPECT_EQ(Shown(each.value, each.format), each.text) << each.format;
}

TEST(SheetValueToText, ANumberThatIsNoTimeIsPrintedAsAnyOther) {
  EXPECT_EQ(Shown(1e9, "mm:ss"), "1000000000");
  EXPECT_EQ(Shown(std::numeric_limits<double>::infinity(), "mm:ss"), "inf");
}

TEST(SheetValueToText, TheSecondIsRoundedBeforeTheTimeIsSplit) {
  EXPECT_EQ(Shown(0.999999, "hh:mm"), "0:0:0");
}

TEST(SheetValueToText, MoneyLosesItsFraction) {
  CY money;
  money.int64 = 123400;
  EXPECT_EQ(Shown(_variant_t(money), "0.00"), "$12.00");
  EXPECT_EQ(Shown(_variant_t(money), "General"), "$12");
  money.int64 = -129999;
  EXPECT_EQ(Shown(_variant_t(money), "#,##0.0"), "$-12.0");
}

TEST(SheetValueToText, DatesAreNotPadded) {
  double date = 0;
  ASSERT_TRUE(TextToOleDate(_T("2024-03-07 13:00"), date));
  EXPECT_EQ(Shown(_variant_t(date, VT_DATE), "yyyy-mm-dd"), "2024-3-7");
  EXPECT_EQ(Shown(_variant_t(date, VT_DATE), ""), "2024-3-7");
  EXPECT_EQ(Shown(_variant_t(1e9, VT_DATE), ""), "");
}

TEST(SheetValueToText, TextsStandAndTheRestHasNone) {
  EXPECT_EQ(Shown(_variant_t(_T("007")), "0.00"), "007");
  EXPECT_EQ(Shown(_variant_t(), "0.00"), "");
  EXPECT_EQ(Shown(_variant_t(true), "0.00"), "");
  EXPECT_EQ(Shown(_variant_t(5L), "0.00"), "");
  EXPECT_EQ(Shown(_variant_t(long{DISP_E_PARAMNOTFOUND}, VT_ERROR), "0.00"), "");
  VARIANT none = {};
  none.vt = VT_BSTR;
  EXPECT_EQ(Shown(_variant_t(none), "0"), "");
}

}  // namespace
}  // namespace lorv
