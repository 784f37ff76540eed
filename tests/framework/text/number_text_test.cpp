#include "framework/text/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::basic_string<TCHAR> Wide(const std::string& narrow) {
  return {narrow.begin(), narrow.end()};
}

TEST(NumberText, HeaderExamples) {
  EXPECT_EQ(ReadReal(_T(" 1.2.3")), 1.2);
  EXPECT_EQ(ReadInteger(_T("12mm")), 12);
  EXPECT_EQ(RealToText(1.5, 'f', 3), "1.500");
}

TEST(NumberText, ReadsTheLongestValidBeginning) {
  const struct {
    LPCTSTR text;
    double value;
    std::size_t used;
  } kRows[] = {
      {_T("12"), 12, 2},
      {_T("-1.5x"), -1.5, 4},
      {_T("+.5"), 0.5, 3},
      {_T("5."), 5, 2},
      {_T("5.e2"), 500, 4},
      {_T("1e5"), 1e5, 3},
      {_T("1E-2"), 0.01, 4},
      {_T("1e+"), 1, 1},
      {_T("1e"), 1, 1},
      {_T("1ee5"), 1, 1},
      {_T("1.2.3"), 1.2, 3},
      {_T("\t\r\n\v\f 7"), 7, 7},
      {_T("0x10"), 0, 1},
      {_T("1,5"), 1, 1},
      {_T("- 1"), 0, 0},
      {_T("--1"), 0, 0},
      {_T("+-1"), 0, 0},
      {_T("."), 0, 0},
      {_T(".e5"), 0, 0},
      {_T(""), 0, 0},
      {_T("e5"), 0, 0},
      {_T("inf"), 0, 0},
      {_T("nan"), 0, 0},
      {_T("１"), 0, 0},
      {_T("0"), 0, 1},
      {_T("00012"), 12, 5},
      {_T("1 2"), 1, 1},
      {_T("墙1"), 0, 0},
      {_T("123456789012345678."), 123456789012345678.0, 19},
      {_T(".1234567890123456789e1x"), 1.234567890123456789, 22},
  };
  for (const auto& row : kRows) {
    std::size_t used = 99;
    EXPECT_EQ(ReadReal(row.text, &used), row.value) << Utf8(row.text);
    EXPECT_EQ(used, row.used) << Utf8(row.text);
  }
}

TEST(NumberText, ZeroKeepsItsSign) {
  EXPECT_TRUE(std::signbit(ReadReal(_T("-0"))));
  EXPECT_FALSE(std::signbit(ReadReal(_T("0"))));
  EXPECT_FALSE(std::signbit(ReadReal(_T("-"))));
}

TEST(NumberText, BeyondTheRangeIsInfinityAndBelowItZero) {
  const std::string zeros(400, '0');
  const struct {
    std::string text;
    double value;
  } kRows[] = {
      {"1e308", 1e308},
      {"1.7976931348623157e308", DBL_MAX},
      {"1.7976931348623159e308", kInfinity},
      {"1e309", kInfinity},
      {"-1e309", -kInfinity},
      {"5e-324", 5e-324},
      {"1e-320", 1e-320},
      {"2e-324", 0},
      {"1e-400", 0},
      {"1e99999999999999999999", kInfinity},
      {"1e-99999999999999999999", 0},
      {"0e99999999999999999999", 0},
      {"0.000e999", 0},
      {"1" + zeros, kInfinity},
      {"0." + zeros + "1", 0},
      {"0." + zeros + "1e5", 0},
      {"0." + zeros + "1e401", 1},
      {"1" + zeros + "e-5", kInfinity},
      {"1" + zeros + "e-400", 1},
      {zeros + "1", 1},
  };
  for (const auto& row : kRows) EXPECT_EQ(ReadReal(Wide(row.text)), row.value) << row.text;
}

TEST(NumberText, ReadsEveryDoubleAsItWasWritten) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(ReadReal(Wide(RealToText(value, 'e', 16))), value) << value;
    const double short_one = std::floor(std::fmod(std::fabs(value), 1e9)) / 1000;
    ASSERT_EQ(ReadReal(Wide(RealToText(short_one, 'f', 3))), short_one) << short_one;
  }
}

TEST(NumberText, ShortDecimalsAreCorrectlyRounded) {
  for (int i = 0; i < 100000; ++i) {
    const std::string text = std::to_string(i / 1000) + "." + std::to_string(1000 + i % 1000).substr(1);
    ASSERT_EQ(ReadReal(Wide(text)), i / 1000.0) << text;
  }
}

TEST(NumberText, IntegersStopAtTheEndsOfTheirRange) {
  const struct {
    LPCTSTR text;
    int value;
  } kRows[] = {
      {_T("2147483646"), 2147483646},
      {_T("2147483647"), 2147483647},
      {_T("2147483648"), 2147483647},
      {_T("-2147483647"), -2147483647},
      {_T("-2147483648"), -2147483647 - 1},
      {_T("-2147483649"), -2147483647 - 1},
      {_T("99999999999999999999999"), 2147483647},
      {_T("-99999999999999999999999"), -2147483647 - 1},
      {_T(" +7"), 7},
      {_T("- 7"), 0},
      {_T("1.9"), 1},
      {_T(""), 0},
      {_T("-"), 0},
      {_T("x1"), 0},
      {_T("１"), 0},
      {_T("007"), 7},
  };
  for (const auto& row : kRows) EXPECT_EQ(ReadInteger(row.text), row.value) << Utf8(row.text);
}

TEST(NumberText, FrameworkNamesReadTheSame) {
  EXPECT_EQ(_wtof(_T("1.5x")), 1.5);
  EXPECT_EQ(_wtoi(_T("-3x")), -3);
}

TEST(NumberText, RealsAreWrittenFromTheirExactValue) {
  EXPECT_EQ(RealToText(0.5, 'f', 0), "0");
  EXPECT_EQ(RealToText(1.5, 'f', 0), "2");
  EXPECT_EQ(RealToText(2.675, 'f', 2), "2.67");
  EXPECT_EQ(RealToText(0.1, 'f', 20), "0.10000000000000000555");
  EXPECT_EQ(RealToText(1e22, 'f', 0), "10000000000000000000000");
  EXPECT_EQ(RealToText(-0.0, 'f', 1), "-0.0");
  EXPECT_EQ(RealToText(12345.678, 'e', 3), "1.235e+04");
  EXPECT_EQ(RealToText(12345.678, 'E', 3), "1.235E+04");
  EXPECT_EQ(RealToText(1e-5, 'g', 15), "1e-05");
  EXPECT_EQ(RealToText(1e15, 'G', 15), "1E+15");
  EXPECT_EQ(RealToText(100, 'g', 0), "1e+02");
  EXPECT_EQ(RealToText(kInfinity, 'f', 2), "inf");
  EXPECT_EQ(RealToText(-kInfinity, 'G', 2), "-INF");
  EXPECT_EQ(RealToText(DBL_MAX, 'f', 6).size(), 316u);
}

TEST(NumberText, FixedGoesIntoABufferOrNotAtAll) {
  char buffer[8];
  EXPECT_EQ(FixedToText(3.14159, 2, buffer, 8), 4);
  EXPECT_EQ(std::string(buffer, 4), "3.14");
  EXPECT_EQ(FixedToText(-1.5, 6, buffer, 8), 0);
  EXPECT_EQ(FixedToText(1.5, 6, buffer, 8), 8);
  EXPECT_EQ(std::string(buffer, 8), "1.500000");
  EXPECT_EQ(FixedToText(12345678, 0, buffer, 8), 8);
  EXPECT_EQ(FixedToText(123456789, 0, buffer, 8), 0);
  EXPECT_EQ(FixedToText(1e300, 0, buffer, 8), 0);
  EXPECT_EQ(FixedToText(0, 0, buffer, 0), 0);
}

// Values where the short way of printing decides, hesitates and declines.
double RandomFixed(std::mt19937_64& random, int decimals) {
  const double power = std::pow(10.0, decimals);
  const auto whole = static_cast<double>(static_cast<std::int64_t>(random() >> (22 + random() % 40)));
  const double sign = random() % 2 == 0 ? 1 : -1;
  switch (random() % 5) {
    case 0:  // in the middle of two, or as near as doubles go
      return sign * (whole + 0.5) / power;
    case 1:
      return sign * std::nextafter((whole + 0.5) / power, random() % 2 == 0 ? 1e300 : -1e300);
    case 2:
      return sign * (whole + 0.5 + std::ldexp(1.0, -static_cast<int>(random() % 14))) / power;
    case 3:
      return std::bit_cast<double>(random());
    default:
      return sign * whole / power;
  }
}

TEST(NumberText, FixedTextsAreThoseOfTheExactValue) {
  std::mt19937_64 random(2203);
  for (int round = 0; round < 400000; ++round) {
    const auto decimals = static_cast<int>(random() % 9);
    const double value = RandomFixed(random, decimals);
    char buffer[400];
    const int length = FixedToText(value, decimals, buffer, sizeof(buffer));
    ASSERT_EQ(std::string(buffer, static_cast<std::size_t>(length)), RealToText(value, 'f', decimals))
        << value << " with " << decimals;
    // A unit less than it takes is too little.
    ASSERT_EQ(FixedToText(value, decimals, buffer, length - 1), 0);
  }
  for (const double odd : {0.0, -0.0, -0.001, 4398046511103.996, 4398046511104.0, 1e22, 5e-324}) {
    char buffer[400];
    const int length = FixedToText(odd, 2, buffer, sizeof(buffer));
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(length)), RealToText(odd, 'f', 2));
  }
}

}  // namespace
}  // namespace lorv
