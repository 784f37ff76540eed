#include "comm/match_score.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <random>

#include "comm/AdLorvComm.h"
#include "platform/ports/platform.h"
#include "tests/comm/plain_match.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::PlainMatch;
using test::Utf8;

TEST(GetMaxMatch, ScoresTheLongestRunAndBothBonuses) {
  const struct {
    LPCTSTR a;
    LPCTSTR b;
    int sum;
    int score;
  } cases[] = {
      {_T("abc"), _T("abc"), 0, 8},
      {_T("ABC"), _T("abc"), 0, 8},
      {_T(""), _T("abc"), 0, 0},
      {_T("abc"), _T(""), 1, 0},
      {_T(""), _T(""), 0, 0},
      {nullptr, _T("abc"), 0, 0},
      {_T("abc"), nullptr, 0, 0},
      {_T("ab"), _T("abc"), 0, 5},  // the match covers one text
      {_T("abc"), _T("ab"), 0, 5},
      {_T("abx"), _T("aby"), 0, 4},  // and none
      {_T("x"), _T("y"), 0, 0},
      {_T("abc"), _T("abc"), 1, 14},  // 8 for abc, then 4 for bc and 2 for c
      {_T("abc"), _T("abc"), -1, 14},
      {_T("ba"), _T("ab"), 1, 2},  // the search goes on behind where the match began
      {_T("aa"), _T("aa"), 1, 8},  // 6 and, from the second place, 2
      {_T("墙"), _T("墙"), 0, 6},  // two bytes
      {_T("墙a"), _T("a墙"), 0, 4 + 0},
      {_T("墙柱"), _T("柱"), 0, 5},
      {_T("墙柱"), _T("墙柱"), 1, 14},  // 4*2+2, then 2*2 for the second character
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GetMaxMatch(c.a, c.b, c.sum), c.score) << Utf8(c.a) << "|" << Utf8(c.b) << " " << c.sum;
  }
}

TEST(GetMaxMatch, CommaComparedOnTheWayEndsTheSum) {
  EXPECT_EQ(GetMaxMatch(_T("ab"), _T("ab"), 1), 8);
  EXPECT_EQ(GetMaxMatch(_T("ab,"), _T("ab,"), 1), 8);    // met at once: the best piece
  EXPECT_EQ(GetMaxMatch(_T("ab"), _T("ab,cd"), 1), 7);   // never compared: the shorter text ends before it
  EXPECT_EQ(GetMaxMatch(_T("abx"), _T("ab,cd"), 1), 4);  // compared as the first that differs
  EXPECT_EQ(GetMaxMatch(_T("c"), _T("a,c"), 1), 3);      // passed over one by one
  EXPECT_EQ(GetMaxMatch(_T("ac,"), _T("ab"), 1), 2);     // behind the first difference: not compared
  EXPECT_EQ(GetMaxMatch(_T("墙墙"), _T(",墙墙"), 1), 9 + 4);  // of the other kind: passed over unseen
}

TEST(GetMaxMatch, BytesOfTheOtherKindArePassedOverOneByOne) {
  // The second byte of this character is 0x40 to 0x7E, so a letter can match inside it.
  const std::string narrow = PortsInForce().code_page->ToNarrow(_T("丂"));
  ASSERT_EQ(narrow.size(), 2U);
  ASSERT_LT(static_cast<unsigned char>(narrow[1]), 0x80);
  EXPECT_EQ(MatchScorer::ScoreBytes(std::string(1, narrow[1]), narrow, false), 3);
  EXPECT_EQ(GetMaxMatch(_T("@"), _T("丂"), 0), 3);
}

TEST(GetMaxMatch, HalfACharacterIsNoMatch) {
  EXPECT_EQ(MatchScorer::ScoreBytes("\xB0", "\xB0", false), 0);
  EXPECT_EQ(MatchScorer::ScoreBytes("\xB0\xA1", "\xB0\xA2", false), 0);
  EXPECT_EQ(MatchScorer::ScoreBytes("\xB0\xA1\xB0", "\xB0\xA1\xB0", false), 8);  // three bytes are a match
  EXPECT_EQ(MatchScorer::ScoreBytes("\xB0\x41", "\xB0\x61", false), 6);          // lowered like any byte
}

// What is drawn from: few characters, so that runs, repeats and half characters meet often.
std::string RandomBytes(std::mt19937& random, int kind) {
  static const char* const kPieces[][8] = {
      {"a", "b", "A", "c", ",", "a", "b", "B"},
      {"\xB0\xA1", "\xB0\x41", "\xB0\x61", "\xA1\xB0", "a", "A", ",", "\xB0\xA2"},
      {"\xB0", "\xA1", "a", "A", ",", "\xB0\xA1", "b", "\xFF"},
      {"\xC7\xBD", "\xD6\xF9", "1", "2", "K", "L", "(", "\xC1\xBA"},
  };
  std::string text;
  const auto length = random() % 14;
  for (unsigned i = 0; i < length; ++i) text += kPieces[kind][random() % 8];
  return text;
}

TEST(GetMaxMatch, IsThePlainAlgorithmOnRandomTexts) {
  std::mt19937 random(20240917);
  for (int i = 0; i < 400'000; ++i) {
    const int kind = i % 4;
    const std::string a = RandomBytes(random, kind);
    const std::string b = RandomBytes(random, kind);
    const bool sum = (i & 4) != 0;
    ASSERT_EQ(MatchScorer::ScoreBytes(a, b, sum), PlainMatch(a, b, sum))
        << testing::PrintToString(a) << " " << testing::PrintToString(b) << " " << sum;
  }
}

CString RandomName(std::mt19937& random, bool chinese) {
  CString name;
  for (int i = 0; i < 20; ++i) {
    name += static_cast<TCHAR>(chinese ? 0x4E00 + random() % 3000 : 'a' + random() % 26);
  }
  return name;
}

TEST(GetMaxMatch, IsThePlainAlgorithmOnNames) {
  std::mt19937 random(7);
  const CodePage& page = *PortsInForce().code_page;
  for (int i = 0; i < 2000; ++i) {
    const CString a = RandomName(random, (i & 1) != 0);
    CString b = RandomName(random, (i & 2) != 0);
    if (i % 3 == 0) b = b.Left(5) + a.Mid(3, 8) + b.Right(4);
    const bool sum = (i & 4) != 0;
    ASSERT_EQ(GetMaxMatch(a, b, sum ? 1 : 0),
              PlainMatch(page.ToNarrow(a.View()), page.ToNarrow(b.View()), sum))
        << Utf8(a) << "|" << Utf8(b);
  }
}

TEST(GetMaxMatch, SumStopsAtTheGreatestInt) {
  const std::string text(50'000, 'a');
  EXPECT_EQ(MatchScorer::ScoreBytes(text, text, true), std::numeric_limits<int>::max());
}

CStringArray Stored(std::initializer_list<LPCTSTR> texts) {
  CStringArray list;
  for (LPCTSTR text : texts) list.Add(text);
  return list;
}

std::string Ranking(LPCTSTR typed, const CStringArray& stored, int most) {
  std::string text;
  for (const RankedMatch& match : RankMatches(typed, stored, 0, most)) {
    text += std::to_string(match.index) + ":" + std::to_string(match.score) + " ";
  }
  return text;
}

TEST(RankMatches, BestFirstAndEqualOnesInTheirOrder) {
  const CStringArray stored = Stored({_T("LL1"), _T("kl2"), _T("板"), _T("KL"), _T("KL3")});
  EXPECT_EQ(Ranking(_T("KL"), stored, -1), "3:6 1:5 4:5 0:2 ");
  EXPECT_EQ(Ranking(_T("KL"), stored, 2), "3:6 1:5 ");
  EXPECT_EQ(Ranking(_T("KL"), stored, 0), "");
  EXPECT_EQ(Ranking(_T(""), stored, -1), "");
  EXPECT_EQ(Ranking(nullptr, stored, -1), "");
  EXPECT_EQ(Ranking(_T("KL"), CStringArray(), -1), "");
}

TEST(RankMatches, HeaderExample) {
  EXPECT_EQ(Ranking(_T("KL"), Stored({_T("LL1"), _T("kl2"), _T("板")}), 10), "1:5 0:2 ");
}

}  // namespace
}  // namespace lorv
