#include <gtest/gtest.h>

#include <initializer_list>

#include "comm/AdLorvComm.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

CStringArray Names(std::initializer_list<LPCTSTR> texts) {
  CStringArray names;
  for (LPCTSTR text : texts) names.Add(text);
  return names;
}

std::string FreeName(LPCTSTR head, std::initializer_list<LPCTSTR> texts, bool always_number = false) {
  CString result(_T("old"));
  EXPECT_TRUE(CAdLorvComm::GetValidNewNamebyHead(head, Names(texts), result, always_number));
  return Utf8(result);
}

TEST(NameRules, IsValidStrNamesWhatComesFirst) {
  const struct {
    LPCTSTR text;
    int limit;
    bool blanks;
    int result;
  } cases[] = {
      {nullptr, 10, false, 1},
      {_T(""), 10, false, 1},
      {_T(""), 0, false, 3},  // a length of the limit is too long, even none at all
      {_T(""), -1, false, 3},
      {_T("abcdefghi"), 10, false, 1},
      {_T("abcdefghij"), 10, false, 3},
      {_T("abcdefghijk"), 10, false, 3},
      {_T("'bcdefghij"), 10, false, 3},  // too long counts before what it holds
      {_T("ab c"), 10, true, 1},
      {_T("ab c"), 10, false, 4},
      {_T("a'b c"), 10, false, 2},
      {_T("a b'c"), 10, false, 4},
      {_T("a b'c"), 10, true, 2},
      {_T("a\\b"), 10, false, 2},
      {_T("a\"b"), 10, false, 2},
      {_T("a%b"), 10, false, 2},
      {_T("a/b"), 10, false, 1},   // a slash is only cleaned away
      {_T("a\tb"), 10, false, 1},  // the blank is the space alone
      {_T("墙柱"), 10, false, 1},
      {_T("墙　柱"), 10, false, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CAdLorvComm::IsValidStr(c.text, c.limit, c.blanks), c.result) << Utf8(c.text) << " " << c.limit;
  }
}

TEST(NameRules, GetErrorInfoHasATextForEachFinding) {
  using Error = CAdLorvComm::emStrError;
  EXPECT_EQ(Utf8(CAdLorvComm::GetErrorInfo(static_cast<Error>(1))), "正确表达式");
  EXPECT_EQ(Utf8(CAdLorvComm::GetErrorInfo(static_cast<Error>(2))), "包含非法字符");
  EXPECT_EQ(Utf8(CAdLorvComm::GetErrorInfo(static_cast<Error>(3))), "表达式太长");
  EXPECT_EQ(Utf8(CAdLorvComm::GetErrorInfo(static_cast<Error>(4))), "包含空格");
  for (const int other : {0, 5, -1, 1000}) {
    EXPECT_EQ(Utf8(CAdLorvComm::GetErrorInfo(static_cast<Error>(other))), "") << other;
  }
}

TEST(NameRules, RemoveInvaildCharKeepsBlanks) {
  const struct {
    LPCTSTR text;
    LPCTSTR left;
    bool found;
  } cases[] = {
      {_T(""), _T(""), false},         {_T("abc"), _T("abc"), false},  {_T("a b"), _T("a b"), true},
      {_T("a b'c"), _T("a bc"), true}, {_T("a'b'c"), _T("abc"), true}, {_T("\\\\a\\"), _T("a"), true},
      {_T("\"a\"\""), _T("a"), true},  {_T("%a%"), _T("a"), true},     {_T("/a/b"), _T("ab"), true},
      {_T("\\ '\"%/"), _T(" "), true}, {_T("墙'1'"), _T("墙1"), true},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    EXPECT_EQ(CAdLorvComm::RemoveInvaildChar(text), c.found) << Utf8(c.text);
    EXPECT_EQ(Utf8(text), Utf8(c.left)) << Utf8(c.text);
  }
}

TEST(NameRules, FreeNameWithoutNamesIsTheHead) {
  EXPECT_EQ(FreeName(_T("KL"), {}), "KL");
  EXPECT_EQ(FreeName(_T("KL"), {}, true), "KL1");
  EXPECT_EQ(FreeName(_T("KL"), {_T("LL1")}), "KL");
  EXPECT_EQ(FreeName(_T("KL"), {_T("LL1")}, true), "KL1");
  EXPECT_EQ(FreeName(nullptr, {}), "");
  EXPECT_EQ(FreeName(_T("KL"), {_T("")}), "KL");
}

TEST(NameRules, FreeNameFollowsTheRunOfUsedNumbers) {
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL"), _T("KL1"), _T("KL2")}), "KL3");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL"), _T("KL2")}), "KL1");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL2")}), "KL1");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL1"), _T("KL3")}), "KL2");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL2"), _T("KL1"), _T("KL1")}), "KL3");  // any order, repeats count once
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL10"), _T("KL1"), _T("KL2"), _T("KL9")}), "KL3");  // numbers, not texts
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL")}, true), "KL1");
  EXPECT_EQ(FreeName(_T("墙"), {_T("墙1")}), "墙2");
}

TEST(NameRules, FreeNameIgnoresLetterCaseAndWhatHasAnotherHead) {
  EXPECT_EQ(FreeName(_T("KL"), {_T("kl1"), _T("Kl2"), _T("WKL3"), _T("KLA3")}), "KL3");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL1(2)")}), "KL2");
}

TEST(NameRules, FreeNameReadsZerosInFront) {
  EXPECT_EQ(
      FreeName(_T("KL"), {_T("KL007"), _T("KL1"), _T("KL2"), _T("KL3"), _T("KL4"), _T("KL5"), _T("KL6")}),
      "KL8");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL000")}), "KL1");
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL0"), _T("KL1")}), "KL2");
}

TEST(NameRules, FreeNameTakesNumbersBeyond32BitsForTheGreatest) {
  EXPECT_EQ(FreeName(_T("KL"), {_T("KL99999999999"), _T("KL1")}), "KL2");
}

TEST(NameRules, FreeNameMayReplaceItsOwnHead) {
  CString text(_T("KL"));
  CAdLorvComm::GetValidNewNamebyHead(text, Names({_T("KL1")}), text, false);
  EXPECT_EQ(Utf8(text), "KL2");
}

TEST(NameRules, LengthWinsInOneDirectionOnly) {
  const struct {
    LPCTSTR a;
    LPCTSTR b;
    bool less;
  } cases[] = {
      {_T("abc"), _T("z"), true},   // the longer one
      {_T("b"), _T("ab"), true},    // shorter, but it sorts above
      {_T("ab"), _T("b"), true},    // and the other way round
      {_T("a"), _T("ab"), false},   // shorter, and sorts below
      {_T("b"), _T("a"), true},     //
      {_T("a"), _T("b"), false},    //
      {_T("a"), _T("A"), true},     // by code, with letter case
      {_T("ab"), _T("ab"), false},  // equal
      {_T(""), _T(""), false},     {_T("墙"), _T("zz"), true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CAdLorvComm::LessTStringByLenth(c.a, c.b), c.less) << Utf8(c.a) << " " << Utf8(c.b);
    EXPECT_EQ(CAdLorvComm::MoreTStringByLenth(c.a, c.b), !c.less) << Utf8(c.a) << " " << Utf8(c.b);
  }
}

}  // namespace
}  // namespace lorv
