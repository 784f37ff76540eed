#include "TEXPRESSCAL/diagnose/nearest_name.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Names = std::vector<CString>;

std::string Nearest(LPCTSTR typed, const Names& known) {
  return Utf8(NearestName(typed, known));
}

// Slips by the whole table: letters changed, added, left out, neighbours exchanged.
int PlainSlips(const std::string& a, const std::string& b) {
  std::vector<std::vector<int>> table(a.size() + 1, std::vector<int>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      int& cell = table[i][j];
      if (i == 0 || j == 0) {
        cell = static_cast<int>(i + j);
        continue;
      }
      cell = std::min(
          {table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        cell = std::min(cell, table[i - 2][j - 2] + 1);
    }
  }
  return table[a.size()][b.size()];
}

TEST(NearestName, OneSlipOfEachKind) {
  const Names known = {_T("LENGTH"), _T("WIDTH")};
  EXPECT_EQ(Nearest(_T("LENGHT"), known), "LENGTH");
  EXPECT_EQ(Nearest(_T("LENGT"), known), "LENGTH");
  EXPECT_EQ(Nearest(_T("LENNGTH"), known), "LENGTH");
  EXPECT_EQ(Nearest(_T("WIDTG"), known), "WIDTH");
  EXPECT_EQ(Nearest(_T("width"), known), "WIDTH");
}

TEST(NearestName, NamesOfOneLetterAreNotGuessed) {
  EXPECT_EQ(Nearest(_T("X"), {_T("Y"), _T("XY")}), "");
  EXPECT_EQ(Nearest(_T("x"), {_T("Y"), _T("X")}), "X");
  EXPECT_EQ(Nearest(_T(""), {_T("A"), _T("")}), "");
}

TEST(NearestName, AllLettersChangedIsNoSlip) {
  EXPECT_EQ(Nearest(_T("AB"), {_T("C")}), "");
  EXPECT_EQ(Nearest(_T("ABC"), {_T("X"), _T("ABX")}), "ABX");
  EXPECT_EQ(Nearest(_T("墙长"), {_T("墙高"), _T("梁宽")}), "墙高");
}

TEST(NearestName, OfEqualsTheFirst) {
  EXPECT_EQ(Nearest(_T("CAT"), {_T("CAR"), _T("CAB")}), "CAR");
  EXPECT_EQ(Nearest(_T("CAT"), {_T("CAB"), _T("CAR")}), "CAB");
  EXPECT_EQ(Nearest(_T("CAT"), {_T("CAB"), _T("CAT")}), "CAT");
}

TEST(NearestName, NamesBeyondTheLimitAreFarFromEveryOther) {
  const CString longest(_T('A'), 32);
  EXPECT_EQ(Nearest(longest, {longest}), Utf8(longest));
  EXPECT_EQ(Nearest(CString(_T('A'), 31), {longest}), Utf8(longest));
  const CString beyond(_T('A'), 33);
  EXPECT_EQ(Nearest(beyond, {beyond, longest}), "");
  EXPECT_EQ(Nearest(longest, {beyond}), "");
}

TEST(NearestName, AgreesWithTheWholeTable) {
  std::mt19937 random(41);
  const auto any = [&random] {
    std::string name(1 + random() % 7, 'A');
    for (char& c : name) c = static_cast<char>('A' + random() % 3);
    return name;
  };
  for (int round = 0; round < 5000; ++round) {
    const std::string typed = any();
    Names known;
    std::string expected;
    int best = typed.size() < 2 ? 0 : typed.size() <= 3 ? 1 : 2;
    for (int i = 0; i < 5; ++i) {
      const std::string name = any();
      known.push_back(CString::FromUtf8(name));
      const int slips = PlainSlips(typed, name);
      const bool nearer = expected.empty() ? slips <= best : slips < best;
      if (!nearer || slips >= static_cast<int>(name.size())) continue;
      best = slips;
      expected = name;
    }
    ASSERT_EQ(Utf8(NearestName(CString::FromUtf8(typed).View(), known)), expected) << typed;
  }
}

}  // namespace
}  // namespace lorv
