#include "platform/models/kept_texts.h"

#include <gtest/gtest.h>

#include "framework/text/cstring.h"

namespace {

using Kept = lorv::KeptTexts<int>;

CString Numbered(int number) {
  CString text;
  text.Format(_T("%d"), number);
  return text;
}

}  // namespace

TEST(KeptTexts, MakesAValueOnce) {
  Kept kept;
  int made = 0;
  const auto make = [&] { return ++made; };
  EXPECT_EQ(*kept.Of(1, _T("a"), make), 1);
  EXPECT_EQ(*kept.Of(1, _T("a"), make), 1);
  EXPECT_EQ(*kept.Of(2, _T("a"), make), 2);
  EXPECT_EQ(*kept.Of(1, _T("b"), make), 3);
  EXPECT_EQ(kept.Count(), 3U);
}

TEST(KeptTexts, KeepsTextsUpToTheLongest) {
  Kept kept;
  const lorv::TextView::value_type unit = _T('x');
  const std::basic_string<TCHAR> longest(Kept::kLongestText, unit);
  const std::basic_string<TCHAR> longer(Kept::kLongestText + 1, unit);
  EXPECT_NE(kept.Of(1, longest, [] { return 5; }), nullptr);
  EXPECT_EQ(kept.Of(1, longer, [] { return 5; }), nullptr);
}

TEST(KeptTexts, KeepsWhatWasAskedForLast) {
  Kept kept;
  constexpr int kMany = 3 * static_cast<int>(Kept::kMaxTexts);
  for (int i = 0; i < kMany; ++i) {
    kept.Of(1, Numbered(i).View(), [i] { return i; });
    // Asked for again and again, it stays.
    EXPECT_EQ(*kept.Of(1, _T("0"), [] { return -1; }), 0);
    ASSERT_LE(kept.Count(), 2 * Kept::kMaxTexts);
  }
  EXPECT_EQ(*kept.Of(1, Numbered(kMany - 1).View(), [] { return -1; }), kMany - 1);
  EXPECT_EQ(*kept.Of(1, _T("1"), [] { return -1; }), -1);
}
