// Where an operand ends, and the brackets around it.

#include <gtest/gtest.h>

#include "tests/TEXPRESSCAL/simplify/legacy/simplifier_rules.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(SimplifierEdges, EstimateOptCaseStopsAtDigitsOperatorsAndTheLimit) {
  const struct {
    LPCTSTR text;
    int start;
    int limit;
    bool front;
    int result;
  } cases[] = {
      {_T("(0"), 0, 0, true, 1},    // a bracket is a boundary at once
      {_T(")0"), 0, 0, true, 1},    //
      {_T("0("), 1, 1, false, 0},   //
      {_T("0)1"), 1, 2, false, 0},  //
      {_T("0001"), 0, 3, false, -1}, {_T("9000"), 3, 0, true, -1},
      {_T("0000"), 0, 3, false, 3},                               // "0" never stops the scan
      {_T("0000"), 3, 0, true, 0},   {_T("+00"), 2, 0, true, 1},  // one step back towards the start
      {_T("00-"), 0, 2, false, 1},   {_T("00*"), 0, 2, false, 1},
      {_T("00/"), 0, 2, false, 1},   {_T("00,"), 0, 2, false, 1},
      {_T("+"), 0, 0, true, 1},      {_T("+"), 0, 0, false, -1},
      {_T("x.0"), 2, 0, true, 0},                                   // letters and points are stepped over
      {_T("0.x墙"), 0, 3, false, 3}, {_T("0(1"), 0, 2, false, -1},  // a bracket counts at the start only
      {_T("1000"), 3, 1, true, 1},                                  // nothing is looked at beyond the limit
  };
  for (const auto& c : cases) {
    EXPECT_EQ(rules.EstimateOptCase(c.text, c.start, c.limit, c.front), c.result)
        << Utf8(c.text) << " " << c.start << " " << c.limit << " " << c.front;
  }
}

TEST(SimplifierEdges, EstimateOptCaseFrontBeginsBeforeThePosition) {
  EXPECT_EQ(rules.EstimateOptCase_front(_T("0*a"), 0), 0);
  EXPECT_EQ(rules.EstimateOptCase_front(_T("10*a"), 1), -1);
  EXPECT_EQ(rules.EstimateOptCase_front(_T("00*a"), 1), 0);
  EXPECT_EQ(rules.EstimateOptCase_front(_T("b+0*a"), 2), 2);
  EXPECT_EQ(rules.EstimateOptCase_front(_T("(0*a"), 1), 1);
  EXPECT_EQ(rules.EstimateOptCase_front(_T("x0*a"), 1), 0);
}

TEST(SimplifierEdges, EstimateOptCaseBackBeginsBehindTheToken) {
  EXPECT_EQ(rules.EstimateOptCase_back(_T("a*0"), 1, _T("*0")), 2);
  EXPECT_EQ(rules.EstimateOptCase_back(_T("a*0+b"), 1, _T("*0")), 2);
  EXPECT_EQ(rules.EstimateOptCase_back(_T("a*0.0+b"), 1, _T("*0")), 4);
  EXPECT_EQ(rules.EstimateOptCase_back(_T("a*0.5"), 1, _T("*0")), -1);
  EXPECT_EQ(rules.EstimateOptCase_back(_T("(a*0)"), 2, _T("*0")), 3);
  EXPECT_EQ(rules.EstimateOptCase_back(_T("a*00"), 1, _T("*0")), 3);
}

TEST(SimplifierEdges, BracketMatchWalksToTheFarEdgeOfAnOperand) {
  const struct {
    LPCTSTR text;
    int start;
    int limit;
    LPCTSTR direction;
    int result;
  } cases[] = {
      {_T("ab+c"), 0, 3, _T("++"), 1},     {_T("(a+b)*c"), 0, 6, _T("++"), 4},
      {_T("abc"), 0, 2, _T("++"), 2},      {_T("abc"), 0, 1, _T("++"), 1},
      {_T("a,b"), 0, 2, _T("++"), 0},      {_T("a)b"), 0, 2, _T("++"), 0},  // an unmatched bracket
      {_T("f(a,b)-1"), 0, 7, _T("++"), 5}, {_T("((a"), 0, 2, _T("++"), 2},
      {_T("+a"), 0, 1, _T("++"), -1},      {_T("a+bc"), 3, 0, _T("--"), 2},
      {_T("a*(b+c)"), 6, 0, _T("--"), 2},  {_T("abc"), 2, 0, _T("--"), 0},
      {_T("(abc"), 3, 0, _T("--"), 1},     {_T("max(a"), 4, 0, _T("--"), 4},
      {_T("1+max(a)"), 7, 0, _T("--"), 2}, {_T("a))"), 2, 0, _T("--"), 0},
      {_T("a+"), 1, 0, _T("--"), 2},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(rules.BracketMatch(c.text, c.start, c.limit, c.direction), c.result)
        << Utf8(c.text) << " " << c.start << " " << Utf8(c.direction);
  }
}

TEST(SimplifierEdges, BracketToFrontMatchGivesTheStartOfTheOperandBefore) {
  EXPECT_EQ(rules.BracketToFrontMatch(_T("+*0"), 1), 0);  // too near the front to be looked at
  EXPECT_EQ(rules.BracketToFrontMatch(_T("*0"), 0), 0);
  EXPECT_EQ(rules.BracketToFrontMatch(_T("-a*0"), 2), 1);
  EXPECT_EQ(rules.BracketToFrontMatch(_T("a+(b-c)*0"), 7), 2);
}

TEST(SimplifierEdges, BracketToBackMatchGivesTheEndOfTheOperandBehind) {
  EXPECT_EQ(rules.BracketToBackMatch(_T("0*ab+c"), 0, _T("0*")), 3);
  EXPECT_EQ(rules.BracketToBackMatch(_T("0*a"), 0, _T("0*")), 2);
  EXPECT_EQ(rules.BracketToBackMatch(_T("0*"), 0, _T("0*")), 1);
  EXPECT_EQ(rules.BracketToBackMatch(_T("0*+1"), 0, _T("0*")), 1);
  EXPECT_EQ(rules.BracketToBackMatch(_T("0*+"), 0, _T("0*")), 2);  // the last character is not looked at
}

TEST(SimplifierEdges, FuncBracketMatchFindsTheClosingBracket) {
  const struct {
    LPCTSTR text;
    int start;
    int end;
    int result;
  } cases[] = {
      {_T("(a)"), 0, 3, 2}, {_T("((a)b)c"), 0, 7, 5}, {_T("(a"), 0, 2, -1},
      {_T("((a"), 0, 3, 3}, {_T("a(b)"), 0, 4, 0},    {_T(")(x"), 0, 3, 1},
      {_T(")x"), 0, 2, 2},  {_T("(a)"), 3, 3, 3},     {_T("(a)b)"), 0, 2, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(rules.FuncBracketMatch(c.text, c.start, c.end), c.result) << Utf8(c.text);
  }
}

TEST(SimplifierEdges, SearchesForTokens) {
  EXPECT_EQ(rules.ReverseFindSubstring(_T("max+max+1"), _T("max")), 4);
  EXPECT_EQ(rules.ReverseFindSubstring(_T("aaa"), _T("aa")), 1);
  EXPECT_EQ(rules.ReverseFindSubstring(_T("abc"), _T("max")), -1);
  EXPECT_EQ(rules.FindStep(_T("*0*0"), _T("*0"), 0), 2);
  EXPECT_EQ(rules.FindStep(_T("*0*0"), _T("*0"), 2), -1);
  EXPECT_EQ(rules.FindStep(_T("000"), _T("00"), 0), 1);
}

TEST(SimplifierEdges, ReplaceSingleObjectPutsATextInPlaceOfALength) {
  const auto replace = [](int position, int length, LPCTSTR fresh) {
    return [=](CString& text) { return rules.ReplaceSingleObject(text, position, length, fresh); };
  };
  EXPECT_EQ(SimplifierRules::After(_T("a+bc+d"), replace(2, 2, _T("xyz"))), "a+xyz+d 1");
  EXPECT_EQ(SimplifierRules::After(_T("ab"), replace(1, 0, _T("-"))), "a-b 1");
  EXPECT_EQ(SimplifierRules::After(_T("ab"), replace(0, 9, _T(""))), " 1");
}

TEST(SimplifierEdges, AddBracketWrapsWhatBeginsOrEndsInADigit) {
  const auto add = [](CString& text) { return rules.AddBracket(text); };
  EXPECT_EQ(SimplifierRules::After(_T(""), add), " 0");
  EXPECT_EQ(SimplifierRules::After(_T("5"), add), "5 1");
  EXPECT_EQ(SimplifierRules::After(_T("5.25"), add), "5.25 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+1"), add), "(a+1) 1");
  EXPECT_EQ(SimplifierRules::After(_T("1+a"), add), "(1+a) 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+b"), add), "a+b 0");
  EXPECT_EQ(SimplifierRules::After(_T("-5"), add), "-5 1");
  EXPECT_EQ(SimplifierRules::After(_T("墙"), add), "墙 0");
}

TEST(SimplifierEdges, ClearNosenseBracketCutsOnePairAroundANumber) {
  const auto clear = [](CString& text) { return rules.ClearNosenseBracket(text); };
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T(""), " 0"},
      {_T("("), "( 0"},
      {_T("(3)"), "3 2"},
      {_T("(-3)"), "-3 3"},
      {_T("(3.5)+(4)"), "3.5+(4) 4"},
      {_T("a+(3)"), "a+3 4"},
      {_T("a-(3)"), "a-3 4"},
      {_T("a*(3)"), "a*3 4"},
      {_T("a/(3)"), "a/3 4"},
      {_T("f(3)"), "f(3) 0"},              // behind anything else they stay
      {_T("max(1,(2))"), "max(1,(2)) 0"},  // behind a comma too
      {_T("((3))"), "((3)) 0"},            // and behind a bracket
      {_T("(a)"), "(a) 0"},
      {_T("(3"), "(3 0"},
      {_T("(--3)"), "(--3) 0"},
      {_T("(-)"), "- 2"},
      {_T("(.)"), ". 2"},
      {_T("()"), "0 1"},
      {_T("()+f()"), "0+f0 1"},  // every empty pair goes with the first
      {_T("f()"), "f() 0"},
      {_T("(a)+(3)"), "(a)+3 6"},
  };
  for (const auto& c : cases) EXPECT_EQ(SimplifierRules::After(c.text, clear), c.after) << Utf8(c.text);
}

TEST(SimplifierEdges, ClearFurthestBracketNeedsAnInsideWithoutClosingBrackets) {
  const auto clear = [](CString& text) { return rules.ClearFurthestBracket(text); };
  EXPECT_EQ(SimplifierRules::After(_T("(a+b)"), clear), "a+b 1");
  EXPECT_EQ(SimplifierRules::After(_T("(a+(b))"), clear), "(a+(b)) 0");
  EXPECT_EQ(SimplifierRules::After(_T("(a)+(b)"), clear), "(a)+(b) 0");
  EXPECT_EQ(SimplifierRules::After(_T("((a)"), clear), "(a 1");
  EXPECT_EQ(SimplifierRules::After(_T("((a"), clear), "((a 0");
  EXPECT_EQ(SimplifierRules::After(_T("((a+b)"), clear), "(a+b 1");
  EXPECT_EQ(SimplifierRules::After(_T("()"), clear), " 1");
  EXPECT_EQ(SimplifierRules::After(_T("(("), clear), "(( 0");
  EXPECT_EQ(SimplifierRules::After(_T("a+b)"), clear), "a+b) 0");
  EXPECT_EQ(SimplifierRules::After(_T(""), clear), " 0");
  EXPECT_EQ(SimplifierRules::After(_T("("), clear), "( 0");
}

}  // namespace
}  // namespace lorv
