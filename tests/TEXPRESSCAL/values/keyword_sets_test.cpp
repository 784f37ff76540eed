// The names a formula may use: a calculator's own set, and the sets kept per class id.

#include <gtest/gtest.h>

#include "tests/TEXPRESSCAL/calculator/calculator_engines.h"

namespace lorv::test {
namespace {

const CStringArray kNone;

CStringArray Names(const std::vector<CString>& names) {
  return StringArray(names);
}

std::string Listed(const TDefsetVars& set) {
  std::string out;
  for (const CStrCmp& name : set) out += Utf8(static_cast<LPCTSTR>(name)) + ",";
  return out;
}

// The sets outlive each test: every test starts from none.
class KeywordSets : public testing::Test {
 protected:
  void SetUp() override { calculator_.ClearStaticKeyWord(); }
  void TearDown() override { calculator_.ClearStaticKeyWord(); }

  CAdExpCalculate calculator_;
};

TEST_F(KeywordSets, NewCalculatorHasNone) {
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "");
}

TEST_F(KeywordSets, OwnSetDropsDuplicatesInAnyCaseAndIsUpperCase) {
  EXPECT_EQ(calculator_.SetKeyWord(Names({_T("a"), _T("A"), _T("b")})), 2);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "A,B,");
  EXPECT_EQ(calculator_.SetKeyWord(Names({_T("z"), _T("_x"), _T("墙高"), _T("9")})), 4);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "9,_X,Z,墙高,");
  EXPECT_EQ(calculator_.SetKeyWord(kNone), 0);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "");
}

TEST_F(KeywordSets, LongNameIsCutToTwentyUnits) {
  EXPECT_EQ(calculator_.SetKeyWord(Names(
                {_T("abcdefghijklmnopqrstuvwxy"), _T("ABCDEFGHIJKLMNOPQRST"), _T("abcdefghijklmnopqrsTX")})),
            1);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "ABCDEFGHIJKLMNOPQRST,");
}

TEST_F(KeywordSets, EmptyClassIdGivesNothing) {
  calculator_.SetKeyWord(Names({_T("K")}));
  EXPECT_EQ(calculator_.GetSetKeyWord(CString(), Names({_T("A")}), kNone), nullptr);
  EXPECT_EQ(calculator_.SetKeyWord(CString(), Names({_T("A")}), kNone), 0);
  EXPECT_EQ(calculator_.AppendKeyWord(CString(), Names({_T("A")}), kNone), 0);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "K,");
}

TEST_F(KeywordSets, FirstListOfTheFirstCallStaysAndSecondListsAdd) {
  TDefsetVars* set = calculator_.GetSetKeyWord(_T("wall"), Names({_T("a"), _T("b")}), Names({_T("c")}));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(Listed(*set), "A,B,C,");
  const CAdExpCalculate other;
  EXPECT_EQ(other.GetSetKeyWord(_T("wall"), Names({_T("x")}), Names({_T("d"), _T("A")})), set);
  EXPECT_EQ(Listed(*set), "A,B,C,D,");
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "");
}

TEST_F(KeywordSets, ClassIdsAreExact) {
  calculator_.GetSetKeyWord(_T("wall"), Names({_T("a")}), kNone);
  EXPECT_EQ(Listed(*calculator_.GetSetKeyWord(_T("Wall"), Names({_T("b")}), kNone)), "B,");
  EXPECT_EQ(Listed(*calculator_.GetSetKeyWord(_T("wall"), Names({_T("b")}), kNone)), "A,");
}

TEST_F(KeywordSets, SetOfAClassReplacesTheCalculators) {
  calculator_.SetKeyWord(Names({_T("Z")}));
  const CAdExpCalculate& constant = calculator_;
  EXPECT_EQ(constant.SetKeyWord(_T("beam"), Names({_T("a"), _T("b")}), Names({_T("c")})), 3);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "A,B,C,");
}

TEST_F(KeywordSets, AppendAddsToTheCalculatorsAndCountsTheClass) {
  const CAdExpCalculate& constant = calculator_;
  EXPECT_EQ(constant.AppendKeyWord(_T("beam"), Names({_T("a")}), Names({_T("b")})), 2);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "A,B,");
  calculator_.SetKeyWord(Names({_T("Z"), _T("B"), _T("M")}));
  EXPECT_EQ(constant.AppendKeyWord(_T("beam"), kNone, kNone), 2);
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "A,B,M,Z,");
}

TEST_F(KeywordSets, CopiedSetDoesNotGrowWithTheClass) {
  calculator_.SetKeyWord(_T("beam"), Names({_T("a")}), kNone);
  CAdExpCalculate().GetSetKeyWord(_T("beam"), kNone, Names({_T("b")}));
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "A,");
}

TEST_F(KeywordSets, ClearingForgetsAllClassesAndOneCalculator) {
  CAdExpCalculate other;
  other.SetKeyWord(_T("wall"), Names({_T("a")}), kNone);
  calculator_.SetKeyWord(_T("wall"), kNone, kNone);
  calculator_.ClearStaticKeyWord();
  EXPECT_EQ(Listed(calculator_.GetKeywords()), "");
  EXPECT_EQ(Listed(other.GetKeywords()), "A,");
  EXPECT_EQ(Listed(*calculator_.GetSetKeyWord(_T("wall"), Names({_T("q")}), kNone)), "Q,");
}

TEST_F(KeywordSets, KeywordsAreFoundInAnyCase) {
  calculator_.SetKeyWord(Names({_T("height")}));
  calculator_.SetExpr(_T("Height+HEIGHT+height"));
  std::vector<CStrCmp> names(2);
  EXPECT_EQ(calculator_.SplitExprVars(names), 3);
  EXPECT_EQ(names.size(), 3u);
}

TEST_F(KeywordSets, ChineseKeywordIsNeverListed) {
  calculator_.SetKeyWord(Names({_T("墙"), _T("A")}));
  calculator_.SetExpr(_T("A+墙"));
  std::vector<CStrCmp> names;
  EXPECT_EQ(calculator_.SplitExprVars(names), 0);
}

TEST_F(KeywordSets, SearchMissesAmongNamesSetInAnyOrder) {
  std::vector<CString> names;
  for (int i = 0; i < 60; ++i) {
    CString name;
    name.Format(_T("N%d"), (i * 37) % 60);
    names.push_back(name);
  }
  EXPECT_EQ(calculator_.SetKeyWord(Names(names)), 60);
  for (const CString& name : names) {
    calculator_.SetExpr(name + _T("+1"));
    int error = -1;
    EXPECT_EQ(calculator_.Calculate(error), 1) << Utf8(name);
    calculator_.SetExpr(name + _T("X+1"));
    calculator_.Calculate(error);
    EXPECT_EQ(error, name.GetLength() + 1) << Utf8(name);
  }
}

}  // namespace
}  // namespace lorv::test
