#include "containers/str_cmp.h"

#include <gtest/gtest.h>

namespace {

const CString kTwenty(_T("ABCDEFGHIJKLMNOPQRST"));

TEST(StrCmp, KeepsTwentyUnitsAndCutsTwentyOne) {
  EXPECT_EQ(CString(CStrCmp(kTwenty.Left(19))), kTwenty.Left(19));
  EXPECT_EQ(CString(CStrCmp(kTwenty)), kTwenty);
  EXPECT_EQ(CString(CStrCmp(kTwenty + _T("U"))), kTwenty);
  EXPECT_EQ(CString(CStrCmp((kTwenty + _T("U")).GetString())), kTwenty);
}

TEST(StrCmp, EmptyAndNullAreTheEmptyName) {
  EXPECT_EQ(CString(CStrCmp()), CString());
  EXPECT_EQ(CString(CStrCmp(static_cast<LPCTSTR>(nullptr))), CString());
}

TEST(StrCmp, ComparesWithoutCase) {
  EXPECT_EQ(CStrCmp(_T("abc")) - CStrCmp(_T("ABC")), 0);
  EXPECT_TRUE(CStrCmp(_T("beam")) < CStrCmp(_T("WALL")));
  EXPECT_TRUE(CStrCmp()(CStrCmp(_T("a")), CStrCmp(_T("B"))));
  EXPECT_LT(CStrCmp(_T("_")) - CStrCmp(_T("A")), 0);
}

TEST(StrCmp, IsOneBlockOfTwentyOneUnits) {
  EXPECT_EQ(sizeof(CStrCmp), 21 * sizeof(TCHAR));
}

TEST(TStrCmp, MissingTexts) {
  for (bool ignore_case : {false, true}) {
    EXPECT_EQ(TStrCmp(nullptr, nullptr, ignore_case), 0);
    EXPECT_EQ(TStrCmp(nullptr, _T("a"), ignore_case), -1);
    EXPECT_EQ(TStrCmp(_T("a"), nullptr, ignore_case), 1);
  }
}

TEST(TStrCmp, ComparesTheSecondWithTheFirst) {
  EXPECT_GT(TStrCmp(_T("a"), _T("b"), false), 0);
  EXPECT_LT(TStrCmp(_T("b"), _T("a"), false), 0);
  EXPECT_EQ(TStrCmp(_T("a"), _T("A"), true), 0);
  EXPECT_LT(TStrCmp(_T("a"), _T("A"), false), 0);
}

}  // namespace
