#include "TEXPRESSCAL/map_value.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::string Listed(const CMapValue& map) {
  return Utf8(MapValueToStr(map));
}

// What holds for every map: names ascend, and each has its word beside it.
void ExpectWhole(const CMapValue& map) {
  ASSERT_EQ(map.Words().size(), map.size());
  for (std::size_t i = 0; i < map.size(); ++i) {
    const auto& name = map.Entries()[i].first;
    if (i > 0) {
      EXPECT_LT(map.Entries()[i - 1].first - name, 0);
    }
    EXPECT_EQ(map.Words()[i], WordOfName(name));
  }
}

TEST(MapValue, HeaderExamples) {
  CMapValue m;
  m[_T("h")] = 2.5;
  EXPECT_EQ(Listed(m), "H:2.5;");
  EXPECT_EQ(Listed(CMapValue()), "");
  EXPECT_EQ(StrValueToMap(_T("a:1;b;c:2:3;"), m), 1);
  EXPECT_EQ(Listed(m), "A:1;");
}

TEST(MapValue, NamesAreCutAtTwentyUnits) {
  CMapValue m;
  m[CString(_T('a'), 20)] = 1;
  m[CString(_T('a'), 25)] = 2;
  EXPECT_EQ(m.size(), 1U);
  EXPECT_EQ(m[CString(_T('A'), 20)], 2);
  m[static_cast<LPCTSTR>(nullptr)] = 3;
  EXPECT_EQ(m[_T("")], 3);
}

TEST(MapValue, InsertKeepsWhatIsThere) {
  CMapValue m;
  EXPECT_TRUE(m.insert({CStrCmp(_T("h")), 1}).second);
  const auto again = m.insert({CStrCmp(_T("H")), 2});
  EXPECT_FALSE(again.second);
  EXPECT_EQ(again.first->second, 1);
  EXPECT_EQ(m.size(), 1U);
  // Stored as it stands, so it has no word; found by either spelling.
  EXPECT_EQ(m.Words().at(0), 0U);
  EXPECT_EQ(m.count(CStrCmp(_T("H"))), 1U);
  EXPECT_EQ(m.erase(CStrCmp(_T("H"))), 1U);
  EXPECT_EQ(m.erase(CStrCmp(_T("H"))), 0U);
  EXPECT_TRUE(m.empty());
}

TEST(MapValue, TheLayoutIsThatOfItsNames) {
  CMapValue m;
  m[_T("A")] = 1;
  EXPECT_EQ(m.KnownLayout(), 0U);
  const std::uint64_t first = m.Layout();
  EXPECT_NE(first, 0U);
  m[_T("A")] = 2;
  EXPECT_EQ(m.Layout(), first);
  m[_T("B")] = 3;
  const std::uint64_t second = m.Layout();
  EXPECT_NE(second, first);
  m.erase(CStrCmp(_T("B")));
  EXPECT_NE(m.Layout(), second);
  const CMapValue copy(m);
  EXPECT_EQ(copy.Layout(), m.Layout());
  CMapValue other;
  other[_T("A")] = 1;
  EXPECT_NE(other.Layout(), m.Layout());
}

TEST(MapValue, AMapThatWasMovedFromIsAnother) {
  CMapValue m;
  m[_T("A")] = 1;
  const std::uint64_t layout = m.Layout();
  CMapValue target(std::move(m));
  EXPECT_EQ(target.Layout(), layout);
  EXPECT_TRUE(m.empty());  // NOLINT(bugprone-use-after-move): that is the promise
  m[_T("B")] = 1;
  EXPECT_NE(m.Layout(), layout);
  CMapValue& same = target;
  target = std::move(same);
  EXPECT_EQ(Listed(target), "A:1;");
}

TEST(MapValue, OddNamesAreThoseThatATextCouldHold) {
  const struct {
    LPCTSTR name;
    bool odd;
  } kRows[] = {{_T("A"), false},        {_T("ABCDEFGH"), false}, {_T("ABCDEFGHI"), false}, {_T("1A"), true},
               {_T("_A"), true},        {_T("A+B"), true},       {_T("墙"), false},        {_T("A墙"), false},
               {_T("ABCDEFG+H"), true}, {_T(""), false}};
  for (const auto& row : kRows) {
    CMapValue m;
    m[row.name] = 1;
    EXPECT_EQ(m.HasOddNames(), row.odd) << Utf8(row.name);
    m.erase(CStrCmp(row.name));
    EXPECT_FALSE(m.HasOddNames()) << Utf8(row.name);
  }
}

// Random names, with and without words, beside a plain map of capital texts.
TEST(MapValue, BehavesAsAPlainMap) {
  static constexpr LPCTSTR kNames[] = {_T("A"),  _T("a"),        _T("B1"),         _T("b1"),
                                       _T("AB"), _T("ABCDEFGH"), _T("_X"),         _T("墙"),
                                       _T("9"),  _T("C_"),       _T("abcdefghij"), _T("")};
  std::mt19937 random(51);
  for (int round = 0; round < 500; ++round) {
    CMapValue map;
    std::map<std::string, double> model;
    // Without the odd ones most maps have words throughout, which is the short way.
    const std::size_t names = round % 2 == 0 ? 6 : std::size(kNames);
    for (int step = 0; step < 30; ++step) {
      const LPCTSTR name = kNames[random() % names];
      CString capitals(name);
      const std::string key = Utf8(capitals.MakeUpper());
      switch (random() % 4) {
        case 0:
          ASSERT_EQ(map.erase(CStrCmp(name)), model.erase(key));
          break;
        case 1:
          ASSERT_EQ(map.count(CStrCmp(name)), model.count(key));
          break;
        default:
          map[name] = step;
          model[key] = step;
      }
      ASSERT_EQ(map.size(), model.size());
      ExpectWhole(map);
      for (const auto& [known, value] : map) ASSERT_EQ(model.at(Utf8(static_cast<LPCTSTR>(known))), value);
    }
  }
}

TEST(MapValue, TextsGoThereAndBack) {
  std::mt19937 random(52);
  for (int round = 0; round < 500; ++round) {
    CMapValue map;
    for (int i = 0; i < 5; ++i) {
      CString name;
      name.Format(_T("N%d"), static_cast<int>(random() % 9));
      // Five decimals at most are kept.
      map[name] = static_cast<int>(random() % 2000001 - 1000000) / 100000.0;
    }
    CMapValue back;
    ASSERT_EQ(StrValueToMap(MapValueToStr(map), back), static_cast<int>(map.size()));
    ASSERT_TRUE(std::equal(map.begin(), map.end(), back.begin(), back.end(),
                           [](const auto& a, const auto& b) {
                             return a.first - b.first == 0 && std::abs(a.second - b.second) < 1e-9;
                           }))
        << Listed(map);
  }
}

}  // namespace
}  // namespace lorv
