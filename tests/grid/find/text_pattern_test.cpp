#include "grid/find/text_pattern.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>

#include "grid/find/pattern_program.h"

using lorv::TextPattern;

namespace {

// The place of the first find, and its groups behind it; "bad" for what is no pattern.
std::string Found(const CString& pattern, const CString& text, bool match_case = true, std::size_t from = 0) {
  const TextPattern made(pattern.View(), match_case);
  if (!made.IsValid()) return "bad";
  TextPattern::Places places;
  if (!made.Find(text.View(), from, places)) return "none";
  std::string line;
  std::size_t last = 0;
  for (std::size_t i = 0; i < places.size(); ++i)
    if (places[i].from >= 0) last = i;
  for (std::size_t i = 0; i <= last; ++i)
    line += (i == 0 ? "" : " ") + std::to_string(places[i].from) + "-" + std::to_string(places[i].to);
  return line;
}

CString Many(LPCTSTR text, int count) {
  CString many;
  for (int i = 0; i < count; ++i) many += text;
  return many;
}

class RandomPattern {
 public:
  explicit RandomPattern(unsigned seed) : random_(seed) {}
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  std::string Text() {
    std::string text;
    for (int i = Below(10); i > 0; --i) text += "abc1 "[Below(5)];
    return text;
  }
  std::string Row(int depth) {
    static constexpr const char* kRepeats[] = {"",      "",      "",     "*",  "+",  "?",
                                               "{0,2}", "{1,2}", "{2,}", "*?", "+?", "??"};
    std::string row;
    for (int i = Below(3); i >= 0; --i) row += Atom(depth) + kRepeats[Below(12)];
    if (depth < 1 && Below(5) == 0) row += "|" + Row(depth + 1);
    return row;
  }

 private:
  // Never nothing at all: what a repeat of nothing finds differs between libraries.
  std::string Atom(int depth) {
    static constexpr const char* kAtoms[] = {"a", "b", "c", ".", "[ab]", "[^a]", "\\d", "\\w", "[a-c1]"};
    if (depth > 1 || Below(4) > 0) return kAtoms[Below(9)];
    const std::string inner = std::string(kAtoms[Below(9)]) + (Below(2) == 0 ? "|" : "") + kAtoms[Below(9)];
    return (Below(2) == 0 ? "(" : "(?:") + inner + ")";
  }

  std::mt19937 random_;
};

}  // namespace

TEST(TextPattern, HeaderExample) {
  EXPECT_EQ(Found(_T("C(\\d+)"), _T("fC30")), "1-4 2-4");
}

TEST(TextPattern, FindsWhatItsSignsSay) {
  const struct {
    LPCTSTR pattern;
    LPCTSTR text;
    const char* found;
  } cases[] = {
      {_T("b|ab"), _T("ab"), "0-2"},
      {_T("a*?b"), _T("aab"), "0-3"},
      {_T("a+?"), _T("aaa"), "0-1"},
      {_T("a{2}"), _T("aaa"), "0-2"},
      {_T("a{2,}"), _T("caaaa"), "1-5"},
      {_T("a{1,2}?"), _T("aa"), "0-1"},
      {_T("^b"), _T("ab"), "none"},
      {_T("b$"), _T("bab"), "2-3"},
      {_T("\\bb"), _T("ab b"), "3-4"},
      {_T("\\Bb"), _T("b ab"), "3-4"},
      {_T("[]"), _T("a"), "none"},
      {_T("[^]"), _T("a"), "0-1"},
      {_T("[a-]"), _T("-"), "0-1"},
      {_T("[\\]x]"), _T("]"), "0-1"},
      {_T("[\\d-]+"), _T("a1-2"), "1-4"},
      {_T("[\\D]"), _T("1a"), "1-2"},
      {_T("\\S\\s"), _T("  x\u3000"), "2-4"},
      {_T("."), _T("\n\r"), "none"},
      {_T("墙+"), _T("梁墙墙"), "1-3"},
      {_T("\\u5899"), _T("墙"), "0-1"},
      {_T("(a)|(b)"), _T("b"), "0-1 -1--1 0-1"},
      {_T(""), _T("ab"), "0-0"},
      {_T("a|"), _T("b"), "0-0"},
      {_T("(?:a(b))+"), _T("abab"), "0-4 3-4"},
      {_T("\\$\\(1\\)"), _T("$(1)"), "0-4"},
      {_T("a]}"), _T("a]}"), "0-3"},
      {_T("\\t"), _T("a\t"), "1-2"},
  };
  for (const auto& one : cases)
    EXPECT_EQ(Found(one.pattern, one.text), one.found) << CString(one.pattern).ToUtf8();
}

TEST(TextPattern, WhatIsNoneIsSaidSo) {
  for (const LPCTSTR bad : {_T("("),   _T(")"),       _T("a)"),    _T("["),      _T("[a"),     _T("[b-a]"),
                            _T("*"),   _T("a**"),     _T("a{"),    _T("a{2,1}"), _T("a{,2}"),  _T("a{1001}"),
                            _T("\\"),  _T("\\q"),     _T("\\u12"), _T("(?=a)"),  _T("(a)\\1"), _T("|+"),
                            _T("[\\"), _T("[a-\\d]"), _T("{"),     _T("?")})
    EXPECT_EQ(Found(bad, _T("a")), "bad") << CString(bad).ToUtf8();
}

TEST(TextPattern, LetterCaseIsThatOfAscii) {
  EXPECT_EQ(Found(_T("c[A-F]"), _T("Ce"), false), "0-2");
  EXPECT_EQ(Found(_T("[^a]"), _T("Ab"), false), "1-2");
  EXPECT_EQ(Found(_T("[^A-Z]"), _T("az1"), false), "2-3");
  EXPECT_EQ(Found(_T("É"), _T("é"), false), "none");
}

TEST(TextPattern, PairsAreOneCodeAndLoneHalvesThemselves) {
  EXPECT_EQ(Found(_T("."), _T("\U00020BB7")), "0-2");
  EXPECT_EQ(Found(_T("[\U00020BB0-\U00020BBF]x"), _T("\U00020BB7x")), "0-3");
  EXPECT_EQ(Found(_T("[^a]$"), _T("\U00020BB7")), "0-2");
  const TCHAR halves[] = {0xDC00, 0xD842, 0};
  EXPECT_EQ(Found(_T("\\uD842"), halves), "1-2");
  EXPECT_EQ(Found(_T("^..$"), halves), "0-2");
}

TEST(TextPattern, LimitsAreOneBelowAtAndOneAbove) {
  const auto most = static_cast<int>(lorv::kMostPatternUnits);
  EXPECT_NE(Found(Many(_T("a"), most - 1), _T("")), "bad");
  EXPECT_NE(Found(Many(_T("a"), most), _T("")), "bad");
  EXPECT_EQ(Found(Many(_T("a"), most + 1), _T("")), "bad");
  EXPECT_EQ(Found(_T("a{1000}b{1000}c{1000}d{999}"), _T("")), "none");
  EXPECT_EQ(Found(_T("a{1000}b{1000}c{1000}d{1000}"), _T("")), "none");
  EXPECT_EQ(Found(_T("a{1000}b{1000}c{1000}d{1000}e"), _T("")), "bad");
  EXPECT_EQ(Found(_T("((a{100}){100}){100}"), _T("")), "bad");
  const auto nested = [](int depth) { return Many(_T("("), depth) + _T("a") + Many(_T(")"), depth); };
  for (const int depth : {lorv::kMostPatternDepth - 1, lorv::kMostPatternDepth})
    EXPECT_NE(Found(nested(depth), _T("a")), "bad");
  EXPECT_EQ(Found(nested(lorv::kMostPatternDepth + 1), _T("a")), "bad");
  // The tenth group is not kept.
  EXPECT_EQ(Found(Many(_T("(a)"), 10), Many(_T("a"), 10)), "0-10 0-1 1-2 2-3 3-4 4-5 5-6 6-7 7-8 8-9");
}

TEST(TextPattern, NoPatternNeedsMoreThanItsLengthForACode) {
  const CString text = Many(_T("a"), 3000);
  EXPECT_EQ(Found(_T("(a*)*b"), text), "none");
  EXPECT_EQ(Found(_T("(a|a)*b"), text), "none");
  EXPECT_EQ(Found(_T("(a?){30}a{30}$"), text), "2940-3000 2969-2970");
  EXPECT_EQ(Found(_T("^(a+)+$"), text), "0-3000 0-3000");
  EXPECT_EQ(Found(_T("(.*)(.*)(.*)(.*)x"), text), "none");
}

TEST(TextPattern, ATextThatWouldCostTooMuchDoesNotMatch) {
  // A thousand steps for each of a hundred thousand codes.
  EXPECT_EQ(Found(_T("(a?){500}x|z$"), Many(_T("a"), 100000) + _T("z")), "none");
  EXPECT_EQ(Found(_T("z$"), Many(_T("a"), 100000) + _T("z")), "100000-100001");
}

TEST(TextPattern, RandomPatternsFindWhatTheStandardLibraryFinds) {
  RandomPattern random(11);
  for (int round = 0; round < 1500; ++round) {
    const std::string pattern = random.Row(0);
    const std::regex expected(pattern);
    for (int texts = 0; texts < 4; ++texts) {
      const std::string text = random.Text();
      std::smatch match;
      std::string wanted = "none";
      if (std::regex_search(text, match, expected))
        wanted = std::to_string(match.position()) + "-" + std::to_string(match.position() + match.length());
      const std::string found = Found(CString::FromUtf8(pattern), CString::FromUtf8(text));
      ASSERT_EQ(found.substr(0, found.find(' ')), wanted) << pattern << " in \"" << text << '"';
    }
  }
}

TEST(TextPattern, ReplacementsNameGroups) {
  TextPattern::Places places;
  const CString text(_T("C30墙"));
  ASSERT_TRUE(TextPattern(CString(_T("(C)(\\d+)")).View(), true).Find(text.View(), 0, places));
  EXPECT_EQ(TextPattern::Replacement(text.View(), places, _T("<$2|$1|$0|$&|$3|$$|$x|$")),
            CString(_T("<30|C|C30|C30||$|$x|$")));
}
