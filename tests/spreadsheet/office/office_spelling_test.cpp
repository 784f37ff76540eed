#include <gtest/gtest.h>

#include "spreadsheet/servers/office/column_width.h"
#include "spreadsheet/servers/office/file_filter.h"
#include "spreadsheet/servers/office/format_spelling.h"
#include "tests/support/print.h"

namespace lorv::office {
namespace {

std::string Spelled(const char* format, bool is_time) {
  const CString text = CString::FromUtf8(format);
  return test::Utf8(ProgramSpelling({Text(text.View()), is_time}));
}

TEST(FormatSpelling, HeaderExample) {
  EXPECT_EQ(Spelled("YYYY-MM-DD", true), "yyyy-mm-dd");
}

TEST(FormatSpelling, NumbersStayAsTheyAre) {
  for (const char* format :
       {"0", "0.00_ ", "@", "0.00%", "General", "#,##0.00", "0.00E+00", "# ?/?", "00000-0000", ""}) {
    EXPECT_EQ(Spelled(format, false), format);
  }
}

TEST(FormatSpelling, LettersOfDatesAndTimesAreSmall) {
  EXPECT_EQ(Spelled("H:MM:SS.00", true), "h:mm:ss.00");
  EXPECT_EQ(Spelled("M/D/YY H:MM AM/PM", true), "m/d/yy h:mm AM/PM");
  EXPECT_EQ(Spelled("NNNN, MMMM D", true), "NNNN, mmmm d");
  EXPECT_EQ(Spelled("[HH]:MM:SS", true), "[hh]:mm:ss");
  // An amount is no time: its letters are units.
  EXPECT_EQ(Spelled("0.0 \"M\"", false), "0.0 \"M\"");
}

TEST(FormatSpelling, WhatIsShownStays) {
  EXPECT_EQ(Spelled("YYYY\"YMD年\"M\"月\"", true), "yyyy\"YMD年\"m\"月\"");
  EXPECT_EQ(Spelled("\\YYYYY_D*M0", true), "\\Yyyyy_D*M0");
  EXPECT_EQ(Spelled("[$-804]YYYY", true), "[$-804]yyyy");
  EXPECT_EQ(Spelled("[$MDY-409]0", false), "[$MDY-409]0");
  EXPECT_EQ(Spelled("[DBNUM1]0", false), "[DBNUM1]0");
  EXPECT_EQ(Spelled("[>=100]0", false), "[>=100]0");
}

TEST(FormatSpelling, ColoursAreNamed) {
  EXPECT_EQ(Spelled("0;[RED]-0", false), "0;[Red]-0");
  EXPECT_EQ(Spelled("[BLUE]YYYY", true), "[Blue]yyyy");
}

TEST(FormatSpelling, WhatIsNotClosedGoesToTheEnd) {
  EXPECT_EQ(Spelled("YY\"MM", true), "yy\"MM");
  EXPECT_EQ(Spelled("YY[HH", true), "yy[HH");
  EXPECT_EQ(Spelled("YY\\", true), "yy\\");
  EXPECT_EQ(Spelled("[", true), "[");
  EXPECT_EQ(Spelled("[]", true), "[]");
}

TEST(ColumnWidth, HeaderExample) {
  EXPECT_EQ(HundredthsOf(8), 1614);
}

TEST(ColumnWidth, WholeCharactersSurviveTheStepsOfTheOffice) {
  for (long n = 0; n <= 255; ++n) {
    const auto width = static_cast<double>(n);
    for (const long off : {-2L, -1L, 0L, 1L, 2L}) EXPECT_EQ(CharactersOf(HundredthsOf(width) + off), width);
  }
  EXPECT_EQ(CharactersOf(HundredthsOf(8.43)), 8.43);
  EXPECT_EQ(CharactersOf(0), 0);
}

TEST(FileFilter, HeaderExample) {
  EXPECT_STREQ(FilterOf(_T("a.ods")).name, "calc8");
}

TEST(FileFilter, TheNameSaysTheFormat) {
  EXPECT_STREQ(FilterOf(_T("C:\\a.b\\C.XLSX")).name, "Calc MS Excel 2007 XML");
  for (const TCHAR* name : {_T("a.xls"), _T("a"), _T(""), _T("a.et"), _T("xlsx"), _T("a.xlsx.bak")}) {
    EXPECT_STREQ(FilterOf(name).name, "MS Excel 97");
    EXPECT_EQ(FilterOf(name).rows, 65536);
    EXPECT_EQ(FilterOf(name).columns, 256);
  }
  EXPECT_EQ(FilterOf(_T("a.ods")).rows, 1048576);
}

}  // namespace
}  // namespace lorv::office
