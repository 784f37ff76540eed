#include "TEXPRESSCAL/formula_words.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "TEXPRESSCAL/function_table.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// The names as "name@place,".
std::string Words(LPCTSTR formula) {
  std::string all;
  for (const FormulaWord& word : NamesOf(formula))
    all += Utf8(word.name) + "@" + std::to_string(word.position) + ",";
  return all;
}

TEST(FormulaWords, HeaderExample) {
  EXPECT_EQ(Words(_T("2*墙长+max(B,1)")), "墙长@2,B@9,");
}

TEST(FormulaWords, FunctionsAndPiAreNoNames) {
  EXPECT_EQ(Words(_T("sin(A)+PI+pi*Max(b,2)")), "A@4,b@17,");
  EXPECT_EQ(Words(_T("sinus+pip")), "sinus@0,pip@6,");
  for (const CDtaFunction& function : Functions()) {
    EXPECT_FALSE(IsName(function.pszName)) << Utf8(function.pszName);
    EXPECT_TRUE(IsName((CString(function.pszName) + _T("_")).View())) << Utf8(function.pszName);
  }
}

TEST(FormulaWords, WordsOfJoiningAreOnesBetweenBlanksOnly) {
  EXPECT_EQ(Words(_T("A and B")), "A@0,B@6,");
  EXPECT_EQ(Words(_T("A OR B")), "A@0,B@5,");
  EXPECT_EQ(Words(_T("and+1")), "and@0,");
  EXPECT_EQ(Words(_T("(and )")), "and@1,");
  EXPECT_TRUE(IsName(_T("AND")));
}

TEST(FormulaWords, QuotesHideWhatIsInThem) {
  EXPECT_EQ(Words(_T("FIND(CLMC,'砖A')+H")), "CLMC@5,H@16,");
  EXPECT_EQ(Words(_T("'A")), "");
  EXPECT_EQ(Words(_T("''B")), "B@2,");
}

TEST(FormulaWords, DigitsInFrontAreAFactor) {
  EXPECT_EQ(Words(_T("2H+3.5墙")), "H@1,墙@6,");
  EXPECT_EQ(Words(_T("H2")), "H2@0,");
  EXPECT_FALSE(IsName(_T("2H")));
  EXPECT_FALSE(IsName(_T("")));
  EXPECT_FALSE(IsName(_T("A B")));
  EXPECT_FALSE(IsName(_T("A+")));
  EXPECT_TRUE(IsName(_T("_x9")));
  EXPECT_TRUE(IsName(_T("墙长")));
}

TEST(FormulaWords, SignsOfOtherScriptsAreNoLetters) {
  for (const LPCTSTR sign :
       {_T("×"), _T("÷"), _T("≤"), _T("（"), _T("，"), _T("。"), _T("　"), _T("“"), _T("＋"), _T("＝")}) {
    EXPECT_FALSE(IsName(sign)) << Utf8(sign);
    EXPECT_EQ(Words(CString(_T("A")) + sign + _T("B")), "A@0,B@2,") << Utf8(sign);
  }
  for (const LPCTSTR letter : {_T("é"), _T("ж"), _T("梁"), _T("あ"), _T("Ａ")})
    EXPECT_TRUE(IsName(letter)) << Utf8(letter);
}

TEST(FormulaWords, KeysAreInCapitalsOfAscii) {
  EXPECT_EQ(Utf8(NameKey(_T("aB_é梁"))), "AB_é梁");
}

// Whatever the text: the words stand where they say, in order, apart from each other, and each is a name.
TEST(FormulaWords, EveryWordStandsWhereItSays) {
  std::mt19937 random(71);
  static constexpr TextView kUnits = _T("aB9_墙.+('), ×");
  for (int round = 0; round < 5000; ++round) {
    CString formula;
    const int length = static_cast<int>(random() % 20);
    for (int i = 0; i < length; ++i) formula.AppendChar(kUnits[random() % kUnits.size()]);
    int behind = 0;
    for (const FormulaWord& word : NamesOf(formula.View())) {
      ASSERT_GE(word.position, behind) << Utf8(formula);
      ASSERT_GT(word.length, 0);
      ASSERT_EQ(formula.Mid(word.position, word.length), word.name) << Utf8(formula);
      ASSERT_TRUE(IsName(word.name.View())) << Utf8(word.name);
      behind = word.position + word.length;
    }
  }
}

}  // namespace
}  // namespace lorv
