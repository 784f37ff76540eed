#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "comm/AdLorvComm.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr int kIntMin = std::numeric_limits<int>::min();
constexpr int kIntMax = std::numeric_limits<int>::max();

std::string Text(double value, int digits, bool fixed = false) {
  std::array<TCHAR, 64> out{};
  EXPECT_TRUE(Double2String(value, digits, out.data(), fixed, 64));
  return Utf8(LPCTSTR{out.data()});
}

TEST(Double2String, ExamplesOfTheInterface) {
  EXPECT_EQ(Text(2.0, 3), "2");
  EXPECT_EQ(Text(1.5, 3), "1.5");
  EXPECT_EQ(Text(1.5, 3, true), "1.500");
  EXPECT_EQ(Text(1.2345, 3), "1.234");
  EXPECT_EQ(Text(2.5, 0), "2");
  EXPECT_EQ(Text(0.0, 3), "0");
  EXPECT_EQ(Text(-1.5, 3), "-1.5");
}

TEST(Double2String, StaticFormGivesTheSame) {
  std::array<TCHAR, 64> out{};
  EXPECT_TRUE(CAdLorvComm::Double2String(0.24, 3, out.data(), false, 64));
  EXPECT_EQ(Utf8(LPCTSTR{out.data()}), "0.24");
}

TEST(Double2String, TerminatesOnlyWhereTheTextLeavesRoom) {
  for (const int size : {4, 5, 6}) {
    std::array<TCHAR, 8> out;
    out.fill('#');
    EXPECT_TRUE(Double2String(12.25, 3, out.data(), false, size)) << size;
    const TCHAR behind = size == 6 ? TCHAR(0) : TCHAR('#');
    EXPECT_EQ(out[5], behind) << size;
    EXPECT_EQ(out[4], size == 4 ? TCHAR('#') : TCHAR('5')) << size;
    EXPECT_EQ(out[6], TCHAR('#')) << size;
  }
}

TEST(Double2String, NoRoomIsFalseAndWritesNothing) {
  TCHAR out[1] = {'#'};
  EXPECT_FALSE(Double2String(1.0, 3, out, false, 0));
  EXPECT_FALSE(Double2String(1.0, 3, out, false, -5));
  EXPECT_FALSE(Double2String(1.0, 3, nullptr, false, 64));
  EXPECT_EQ(out[0], TCHAR('#'));
}

TEST(Double2String, HugeValueIsCutAtTheSize) {
  std::array<TCHAR, 65> out;
  out.fill('#');
  EXPECT_TRUE(Double2String(1e300, 3, out.data(), false, 64));
  EXPECT_EQ(out[0], TCHAR('1'));
  EXPECT_NE(out[63], TCHAR('#'));
  EXPECT_NE(out[63], TCHAR(0));
  EXPECT_EQ(out[64], TCHAR('#'));
}

TEST(NumberText, WhatLooksLikeANumber) {
  const struct {
    LPCTSTR text;
    bool result;
  } cases[] = {
      {_T(""), false},    {_T("-"), false}, {_T("--"), false},   {_T("-1"), true},  {_T("."), false},
      {_T("1."), true},   {_T("-."), true}, {_T("1.2.3"), true}, {_T("7"), true},   {_T("1-"), false},
      {_T("+1"), false},  {_T(".."), true}, {_T("1e5"), false},  {_T(" 1"), false}, {_T("１２"), false},
      {_T("1墙"), false}, {_T("a"), false}, {_T(".5"), true},
  };
  for (const auto& c : cases) EXPECT_EQ(CAdLorvComm::isNumber(c.text), c.result) << Utf8(c.text);
}

TEST(NumberText, ValidNumberStripsLeadingZeros) {
  const struct {
    LPCTSTR text;
    bool result;
    const char* left;
  } cases[] = {
      {_T("007"), true, "7"},    {_T("7a"), false, "7a"}, {_T("0"), false, ""},
      {_T("000"), false, ""},    {_T(""), false, ""},     {_T("10"), true, "10"},
      {_T("00a0"), false, "a0"}, {_T("-1"), false, "-1"}, {_T("0１"), false, "１"},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    EXPECT_EQ(CAdLorvComm::isValidNumberStr(text), c.result) << Utf8(c.text);
    EXPECT_EQ(Utf8(text), c.left) << Utf8(c.text);
  }
}

TEST(NumberText, FirstNumberOfAMixedText) {
  const struct {
    LPCTSTR text;
    double value;
  } cases[] = {
      {_T("abc12.5mm"), 12.5}, {_T("-3.5"), -3.5}, {_T("1a2"), 12},
      {_T("12-3"), 12},        {_T("5"), 5},       {_T("a-5b6"), -5},
      {_T("1.5.7"), 1.5},      {_T(".5"), 0.5},    {_T("墙厚240mm"), 240},
      {_T("1 2 3"), 123},      {_T("1.2 3"), 1.2}, {_T("--5"), 0},
      {_T("a."), 0},           {_T("+7x8"), 7},    {_T("１2"), 2},
      {_T("-.5.5"), -0.5},     {_T("1-.5"), 1},    {_T("1..5"), 1},
      {_T("C30/20"), 3020},
  };
  for (const auto& c : cases) {
    double value = 99;
    EXPECT_TRUE(CAdLorvComm::GetDoubleValueFromString(c.text, value)) << Utf8(c.text);
    EXPECT_EQ(value, c.value) << Utf8(c.text);
  }
}

TEST(NumberText, NoNumberLeavesTheValue) {
  for (const LPCTSTR text : {_T(""), _T("a"), _T("ab"), _T("-"), _T("."), _T("墙体")}) {
    double value = 99;
    EXPECT_FALSE(CAdLorvComm::GetDoubleValueFromString(text, value)) << Utf8(text);
    EXPECT_EQ(value, 99) << Utf8(text);
  }
}

TEST(NumberText, DigitsAndLettersAreAsciiOnly) {
  EXPECT_TRUE(CAdLorvComm::haveNumber(_T("KL1")));
  EXPECT_FALSE(CAdLorvComm::haveNumber(_T("KL")));
  EXPECT_FALSE(CAdLorvComm::haveNumber(_T("一１²")));
  EXPECT_FALSE(CAdLorvComm::haveNumber(_T("")));
  EXPECT_TRUE(CAdLorvComm::haveAlphabeticLetter(_T("12z")));
  EXPECT_TRUE(CAdLorvComm::haveAlphabeticLetter(_T("A")));
  EXPECT_FALSE(CAdLorvComm::haveAlphabeticLetter(_T("12-_[@`{")));
  EXPECT_FALSE(CAdLorvComm::haveAlphabeticLetter(_T("梁é")));
}

TEST(NumberText, FirstRunOfDigits) {
  const struct {
    LPCTSTR text;
    int number;
  } cases[] = {
      {_T("KL12-3"), 12}, {_T("5"), 5}, {_T("-7"), 7}, {_T("墙007"), 7}, {_T("a99999999999"), kIntMax},
  };
  for (const auto& c : cases) {
    int number = -1;
    EXPECT_TRUE(CAdLorvComm::GetTheNumber(c.text, number)) << Utf8(c.text);
    EXPECT_EQ(number, c.number) << Utf8(c.text);
  }
  int kept = -1;
  EXPECT_FALSE(CAdLorvComm::GetTheNumber(_T("KL"), kept));
  EXPECT_FALSE(CAdLorvComm::GetTheNumber(_T(""), kept));
  EXPECT_EQ(kept, -1);
}

TEST(NumberText, ZerosBehindThePoint) {
  const struct {
    LPCTSTR text;
    const char* left;
  } cases[] = {
      {_T("1.500"), "1.5"}, {_T("2.000"), "2"}, {_T("100"), "100"}, {_T("."), ""},        {_T("0.0"), "0"},
      {_T(".50"), ".5"},    {_T("1."), "1"},    {_T("1.2"), "1.2"}, {_T("1.0m"), "1.0m"}, {_T(".000"), ""},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    EXPECT_TRUE(CAdLorvComm::RemoveMoreZeroAferPoint(text)) << Utf8(c.text);
    EXPECT_EQ(Utf8(text), c.left) << Utf8(c.text);
  }
  CString empty;
  EXPECT_FALSE(CAdLorvComm::RemoveMoreZeroAferPoint(empty));
}

TEST(NumberText, CodePartsIntoHeadAndEndNumber) {
  const struct {
    LPCTSTR code;
    const char* head;
    const char* end;
  } cases[] = {
      {_T("KL12"), "KL", "12"},   {_T("KL"), "KL", ""},         {_T("12"), "12", ""},
      {_T("KL12)"), "KL12)", ""}, {_T("KL12(3)"), "KL", "12"},  {_T("KL1(2)(3)"), "KL1(2)", ""},
      {_T("墙Q3"), "墙Q", "3"},   {_T("12(a)"), "12", ""},      {_T("KL2-1"), "KL2-", "1"},
      {_T("KL007"), "KL", "007"}, {_T("KL(3)4"), "KL(3)", "4"},
  };
  for (const auto& c : cases) {
    CString head(_T("?"));
    CString end(_T("?"));
    EXPECT_TRUE(CAdLorvComm::DivideBHByEndNumber(c.code, head, end)) << Utf8(c.code);
    EXPECT_EQ(Utf8(head), c.head) << Utf8(c.code);
    EXPECT_EQ(Utf8(end), c.end) << Utf8(c.code);
  }
}

TEST(NumberText, NothingToPartLeavesTheOutputs) {
  for (const LPCTSTR code : {_T(""), _T("(3)"), _T("()")}) {
    CString head(_T("?"));
    CString end(_T("!"));
    EXPECT_FALSE(CAdLorvComm::DivideBHByEndNumber(code, head, end)) << Utf8(code);
    EXPECT_EQ(Utf8(head + end), "?!") << Utf8(code);
  }
}

TEST(NumberText, OutputsMayBeTheCodeItself) {
  CString code(_T("KL12"));
  CString end;
  EXPECT_TRUE(CAdLorvComm::DivideBHByEndNumber(code, code, end));
  EXPECT_EQ(Utf8(code), "KL");
  EXPECT_EQ(Utf8(end), "12");
}

TEST(NumberText, RulesCompareAsTexts) {
  const struct {
    LPCTSTR value;
    LPCTSTR rule;
    bool result;
  } cases[] = {
      {_T("600"), _T("<=500"), true},    // "6" sorts below "<"
      {_T("a"), _T("<=500"), false},     // letters sort above "<"
      {_T("<=500"), _T("<=500"), true},  // equal to the whole operand
      {_T("<500"), _T("<500"), false},   // "<" alone wants below
      {_T("400"), _T(">500"), false},    // "4" sorts below ">"
      {_T("a"), _T(">500"), true},       {_T(">500"), _T(">500"), false},
      {_T(">=500"), _T(">=500"), true},  {_T("A"), _T("a~b"), true},  // left bound "a", right operand "a~b"
      {_T("a~B"), _T("a~b"), true},      {_T("b"), _T("a~b"), false},
      {_T("C25"), _T("C20~C40"), false},  // the right operand is "0~C40"
      {_T("5"), _T("500"), false},       {_T(""), _T(""), false},
      {_T(""), _T("<"), true},           {_T("1"), _T("xx<5"), true},  // the operand is "x<5"
      {_T("z"), _T("xx<5"), false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsMeasureStr(c.value, c.rule), c.result) << Utf8(c.value) << " by " << Utf8(c.rule);
  }
}

// "<=" is looked for first; failing it, the same rule is tested as "<" with the operand of "<".
TEST(NumberText, RuleWithTwoCharactersIsTestedAsOneToo) {
  // As "<=" the operand is "ab<=5"; as "<" it is "b<=5", and "b" sorts below that but above the first.
  EXPECT_TRUE(IsMeasureStr(_T("b"), _T("ab<=5")));
  EXPECT_FALSE(IsMeasureStr(_T("c"), _T("ab<=5")));
}

TEST(NumberText, ClosestIntegerTriesTheUpperNeighbourFirst) {
  const struct {
    double value;
    double tolerance;
    int result;
  } cases[] = {
      {2.9999, 0.001, 3},
      {2.0001, 0.001, 2},
      {2.5, 0.001, 2},
      {-2.5, 0.001, -2},
      {2.5, 0.6, 3},
      {3.0, 0.0, 3},
      {-2.9999, 0.001, -3},
      {-2.0001, 0.001, -2},
      {1e10, 1, kIntMin},
      {-1e10, 1, kIntMin},
      {2147483647.0, 0.1, kIntMax},
      {-2147483648.0, 0.1, kIntMin},
      {std::nan(""), 1, kIntMin},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CAdLorvComm::GetCLosetInteger(c.value, c.tolerance), c.result) << c.value;
  }
}

TEST(NumberText, CompareIntServesASortRoutine) {
  std::array<int, 5> numbers = {3, -1, 7, 0, 3};
  std::qsort(numbers.data(), numbers.size(), sizeof(int), CAdLorvComm::compareInt);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  const int low = kIntMin;
  const int one = 1;
  EXPECT_EQ(CAdLorvComm::compareInt(&low, &one), kIntMax);  // the difference wraps
}

}  // namespace
}  // namespace lorv
