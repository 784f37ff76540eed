#include "framework/text/format.h"

#include <gtest/gtest.h>

#include <limits>

#include "framework/text/cstring.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

template <class... Args>
std::string F(LPCTSTR format, const Args&... args) {
  CString text;
  text.Format(format, args...);
  return text.ToUtf8();
}

TEST(Format, HeaderExample) {
  EXPECT_EQ(TextToUtf8(FormatText(_T("%d%s"), {3, _T("m")})), "3m");
}

TEST(Format, WholeNumbers) {
  EXPECT_EQ(F(_T("%d|%i|%u"), -5, 7, 9u), "-5|7|9");
  EXPECT_EQ(F(_T("%5d|%-5d|%05d|%+d|% d"), 42, 42, 42, 42, 42), "   42|42   |00042|+42| 42");
  EXPECT_EQ(F(_T("%.3d|%6.3d|%-6.3d|%06.3d"), 7, 7, 7, 7), "007|   007|007   |   007");
  EXPECT_EQ(F(_T("%.0d|%.0d"), 0, 1), "|1");
  EXPECT_EQ(F(_T("%05d|%-05d"), -42, 42), "-0042|42   ");
  EXPECT_EQ(F(_T("%d"), std::numeric_limits<int>::min()), "-2147483648");
  EXPECT_EQ(F(_T("%lld %llu"), std::numeric_limits<long long>::min(),
              std::numeric_limits<unsigned long long>::max()),
            "-9223372036854775808 18446744073709551615");
}

TEST(Format, UnsignedFormsOfNegativeNumbersHave32BitsAtLeast) {
  EXPECT_EQ(F(_T("%u"), -1), "4294967295");
  EXPECT_EQ(F(_T("%x"), short{-1}), "ffffffff");
  EXPECT_EQ(F(_T("%X"), static_cast<unsigned char>(200)), "C8");
  EXPECT_EQ(F(_T("%x"), -1LL), "ffffffffffffffff");
  EXPECT_EQ(F(_T("%o"), 8), "10");
}

TEST(Format, AlternativeForms) {
  EXPECT_EQ(F(_T("%#x|%#X|%#x"), 255, 255, 0), "0xff|0XFF|0");
  EXPECT_EQ(F(_T("%#o|%#o"), 8, 0), "010|0");
  EXPECT_EQ(F(_T("%#08x"), 255), "0x0000ff");
  EXPECT_EQ(F(_T("%#.0f|%#.0e|%#g|%#.3g|%#g|%#G"), 3.0, 3.0, 1.5, 100.0, 1e10, 1e-10),
            "3.|3.e+00|1.50000|100.|1.00000e+10|1.00000E-10");
}

TEST(Format, LengthWordsAreReadAndIgnored) {
  EXPECT_EQ(F(_T("%hd %ld %lld %I64d %I32d %zu %td %jd"), 1, 2, 3, 4, 5, 6, 7, 8), "1 2 3 4 5 6 7 8");
  EXPECT_EQ(F(_T("%ls %hs %lf"), _T("a"), _T("b"), 1.0), "a b 1.000000");
}

TEST(Format, RealNumbers) {
  EXPECT_EQ(F(_T("%f|%.2f|%.0f"), 3.14159, 2.675, 0.5), "3.141590|2.67|0");
  EXPECT_EQ(F(_T("%e|%.2E"), 12345.678, 0.00012), "1.234568e+04|1.20E-04");
  EXPECT_EQ(F(_T("%g|%g|%g|%.3g|%G"), 0.0001, 0.00001, 1e6, 1234.5, 1e-10),
            "0.0001|1e-05|1e+06|1.23e+03|1E-10");
  EXPECT_EQ(F(_T("%8.2f|%-8.2f|%08.2f|%+.1f|% .1f"), 3.14159, 3.14159, -3.14159, 1.0, 1.0),
            "    3.14|3.14    |-0003.14|+1.0| 1.0");
  EXPECT_EQ(F(_T("%.3f"), 1.5f), "1.500");
  EXPECT_EQ(F(_T("%.1f"), -0.0), "-0.0");
  EXPECT_EQ(F(_T("%f"), 1e308).size(), 316u);
}

TEST(Format, InfinityAndNan) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(F(_T("%f|%08.1f|%E"), infinity, -infinity, infinity), "inf|    -inf|INF");
  EXPECT_EQ(F(_T("%#g|%f"), infinity, std::numeric_limits<double>::quiet_NaN()), "inf|nan");
}

TEST(Format, TextsAndUnits) {
  const CString text(_T("墙梁板"));
  EXPECT_EQ(F(_T("%s|%5s|%-5s|%.2s|%5.1s"), text, text, text, text, text),
            "墙梁板|  墙梁板|墙梁板  |墙梁|    墙");
  EXPECT_EQ(F(_T("%S"), text), "墙梁板");
  EXPECT_EQ(F(_T("%c%c|%3c|%-3c|"), TCHAR{'a'}, 'b', 'c', TCHAR{0x5899}), "ab|  c|墙  |");
  EXPECT_EQ(F(_T("%s"), static_cast<LPCTSTR>(nullptr)), "(null)");
  TCHAR buffer[] = {'o', 'k', 0};
  EXPECT_EQ(F(_T("%s"), buffer), "ok");
}

TEST(Format, WidthsFromArguments) {
  EXPECT_EQ(F(_T("%*d|%*d|%.*f|%-*d|"), 5, 42, -5, 42, 2, 3.14159, 4, 7), "   42|42   |3.14|7   |");
  EXPECT_EQ(F(_T("%.*f"), -1, 1.5), "1.500000");
  EXPECT_EQ(F(_T("%*d")), "");
}

TEST(Format, WidthsAndPrecisionsAreCutToTheLimit) {
  for (const int width : {kMaxFormatWidth - 1, kMaxFormatWidth, kMaxFormatWidth + 1, 2147483647}) {
    const auto expected = static_cast<std::size_t>(std::min(width, kMaxFormatWidth));
    EXPECT_EQ(F(_T("%*d"), width, 1).size(), expected) << width;
    EXPECT_EQ(F(_T("%-*s"), width, _T("x")).size(), expected) << width;
    EXPECT_EQ(F(_T("%.*f"), width, 0.5).size(), expected + 2) << width;
    EXPECT_EQ(F(_T("%.*d"), width, 1).size(), expected) << width;
  }
  EXPECT_EQ(F(_T("%99999999999d"), 1).size(), static_cast<std::size_t>(kMaxFormatWidth));
  EXPECT_EQ(F(_T("%*d"), std::numeric_limits<int>::min(), 1).size(),
            static_cast<std::size_t>(kMaxFormatWidth));
}

TEST(Format, PercentSignsAndUnknownLetters) {
  EXPECT_EQ(F(_T("100%%")), "100%");
  EXPECT_EQ(F(_T("%5%")), "%");
  EXPECT_EQ(F(_T("%y|%5.2q|%"), 1), "%y|%5.2q|%");
  EXPECT_EQ(F(_T("%5")), "%5");
  EXPECT_EQ(F(_T("")), "");
}

TEST(Format, MissingArgumentsPrintNothing) {
  EXPECT_EQ(F(_T("a%db%sc%f"), 1), "a1bc");
}

TEST(Format, ArgumentsOfAnotherKindAreConverted) {
  EXPECT_EQ(F(_T("%d"), 3.9), "3");
  EXPECT_EQ(F(_T("%.1f"), 3), "3.0");
  EXPECT_EQ(F(_T("%.1f"), 3000000000u), "3000000000.0");
  EXPECT_EQ(F(_T("%s %s"), 42, 1.5), "42 1.5");
  EXPECT_EQ(F(_T("%s"), std::numeric_limits<unsigned long long>::max()), "18446744073709551615");
  EXPECT_EQ(F(_T("%d"), _T("text")), "text");
  EXPECT_EQ(F(_T("%d"), 1e300), "-9223372036854775808");
  EXPECT_EQ(F(_T("%d"), true), "1");
}

TEST(Format, PointersHave16Digits) {
  EXPECT_EQ(F(_T("%p"), static_cast<const void*>(nullptr)), "0000000000000000");
  EXPECT_EQ(F(_T("%p"), reinterpret_cast<const void*>(0xABCDu)), "000000000000ABCD");
}

TEST(Format, AppendsToTheText) {
  CString text(_T("a"));
  text.AppendFormat(_T("%d"), 1);
  text.AppendFormat(_T("%d"), 2);
  EXPECT_EQ(text.ToUtf8(), "a12");
}

}  // namespace
}  // namespace lorv
