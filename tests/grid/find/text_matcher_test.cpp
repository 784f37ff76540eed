#include "grid/find/text_matcher.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using lorv::TextMatcher;

namespace {

CString Replaced(const TextMatcher& matcher, LPCTSTR text, LPCTSTR by) {
  int count = 0;
  return matcher.Replaced(lorv::TextView(text), by, count);
}

// The same by the standard library's search, one step after the other.
std::string Plain(const std::string& text, const std::string& wanted, const std::string& by, int& count) {
  std::string result;
  std::size_t from = 0;
  count = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, from)) {
    result += text.substr(from, at - from) + by;
    from = at + wanted.size();
    ++count;
  }
  return result + text.substr(from);
}

}  // namespace

TEST(TextMatcher, HeaderExample) {
  int count = 0;
  EXPECT_EQ(TextMatcher(_T("c3"), false, false).Replaced(_T("C30c3"), _T("C4"), count), CString(_T("C40C4")));
  EXPECT_EQ(count, 2);
}

TEST(TextMatcher, CaseFoldsForLettersOfAsciiAlone) {
  const TextMatcher any(_T("Beam梁Ä"), false, false);
  EXPECT_TRUE(any.Matches(_T("a BEAM梁Ä b")));
  EXPECT_FALSE(any.Matches(_T("beam梁ä")));
  EXPECT_FALSE(TextMatcher(_T("[a]"), false, false).Matches(_T("{a}")));
  const TextMatcher exact(_T("Beam"), true, false);
  EXPECT_TRUE(exact.Matches(_T("MainBeam")));
  EXPECT_FALSE(exact.Matches(_T("Mainbeam")));
}

TEST(TextMatcher, WholeTextsOrParts) {
  const TextMatcher whole(_T("C30"), false, true);
  EXPECT_TRUE(whole.Matches(_T("c30")));
  EXPECT_FALSE(whole.Matches(_T("C30 ")));
  EXPECT_FALSE(whole.Matches(_T("C3")));
  EXPECT_EQ(Replaced(whole, _T("C30"), _T("")), CString());
  EXPECT_EQ(Replaced(whole, _T("C300"), _T("x")), CString(_T("C300")));
}

TEST(TextMatcher, AnEmptyTextIsNowhere) {
  const TextMatcher empty(_T(""), false, false);
  EXPECT_FALSE(empty.Matches(_T("")));
  EXPECT_FALSE(empty.Matches(_T("a")));
  EXPECT_FALSE(TextMatcher(_T(""), false, true).Matches(_T("")));
  EXPECT_EQ(Replaced(empty, _T("abc"), _T("x")), CString(_T("abc")));
}

TEST(TextMatcher, OccurrencesDoNotOverlapAndAreNotReplacedAgain) {
  const TextMatcher twice(_T("aa"), true, false);
  EXPECT_EQ(Replaced(twice, _T("aaaaa"), _T("aab")), CString(_T("aabaaba")));
}

TEST(TextMatcher, UnitsOfAnyKind) {
  // Half a pair, and a zero within the text.
  const TCHAR half[] = {0xD842, 0};
  const CString text(lorv::TextView(_T("a\0b"), 3));
  EXPECT_TRUE(TextMatcher(half, false, false).Matches(_T("𠮷")));
  EXPECT_TRUE(TextMatcher(_T("b"), false, false).Matches(text.View()));
}

TEST(TextMatcher, RandomTextsAsByThePlainSearch) {
  std::mt19937 random(5);
  const auto word = [&](unsigned most) {
    std::string text;
    for (auto left = static_cast<unsigned>(random()) % (most + 1); left > 0; --left)
      text += static_cast<char>('a' + random() % 2);
    return text;
  };
  for (int round = 0; round < 4000; ++round) {
    const std::string text = word(12);
    const std::string wanted = "a" + word(3);
    const std::string by = word(3);
    int expected = 0;
    int count = 0;
    const std::string plain = Plain(text, wanted, by, expected);
    const TextMatcher matcher(CString::FromUtf8(wanted.c_str()), true, false);
    const CString from = CString::FromUtf8(text.c_str());
    EXPECT_EQ(matcher.Replaced(from.View(), CString::FromUtf8(by.c_str()), count).ToUtf8(), plain)
        << text << ' ' << wanted << ' ' << by;
    EXPECT_EQ(count, expected);
    EXPECT_EQ(matcher.Matches(from.View()), expected > 0);
  }
}

TEST(TextMatcher, PatternsAreReplacedFromTheLeft) {
  const auto replaced = [](LPCTSTR pattern, LPCTSTR text, LPCTSTR by, bool whole = false) {
    return Replaced(TextMatcher::ForPattern(pattern, true, whole), text, by);
  };
  EXPECT_EQ(replaced(_T("C(\\d+)"), _T("C30C35"), _T("<$1>")), CString(_T("<30><35>")));
  EXPECT_EQ(replaced(_T("x*"), _T("axb"), _T("-")), CString(_T("-a--b-")));
  EXPECT_EQ(replaced(_T("x*"), _T("\U00020BB7"), _T("-")), CString(_T("-\U00020BB7-")));
  EXPECT_EQ(replaced(_T("a|ab"), _T("ab"), _T("x"), true), CString(_T("x")));
  EXPECT_EQ(replaced(_T("a)|(b"), _T("b"), _T("x"), true), CString(_T("b")));
  EXPECT_FALSE(TextMatcher::ForPattern(_T("a"), true, true).Matches(lorv::TextView(_T("aa"))));
  EXPECT_TRUE(TextMatcher::ForPattern(_T("A"), false, false).Matches(lorv::TextView(_T("xa"))));
}
