#include "TEXPRESSCAL/optimize_expression.h"

#include <gtest/gtest.h>

#include "framework/objects/exceptions.h"
#include "tests/TEXPRESSCAL/simplify/legacy/simplifier_rules.h"

namespace lorv {
namespace {

using test::Utf8;

CStringArray List(std::initializer_list<LPCTSTR> texts) {
  CStringArray list;
  for (LPCTSTR text : texts) list.Add(text);
  return list;
}

std::string Joined(const CStringArray& list) {
  std::string joined;
  for (const CString& text : list) joined += Utf8(text) + "|";
  return joined;
}

// The text that comes out and, where the answer is false, "!" before it.
std::string Simplified(LPCTSTR formula, int flags) {
  COptimizeExpression simplifier;
  CString text(formula);
  const bool fine = simplifier.OptimizateExper(text, flags);
  return (fine ? "" : "!") + Utf8(text);
}

bool RaisesInvalidArgument(LPCTSTR formula, int flags) {
  try {
    Simplified(formula, flags);
  } catch (CException* e) {
    const bool invalid = e->IsKindOf(RUNTIME_CLASS(CInvalidArgException)) != FALSE;
    e->Delete();
    return invalid;
  }
  return false;
}

CString Repeated(LPCTSTR piece, int count) {
  CString text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(OptimizeExpression, FlagsOutsideTheRulesLeaveTheTextAlone) {
  for (const int flags : {0, 16, -1, 17, 1000}) {
    EXPECT_EQ(Simplified(_T("MAX(1,2)+0"), flags), "MAX(1,2)+0") << flags;
    EXPECT_EQ(Simplified(_T(""), flags), "") << flags;
  }
}

TEST(OptimizeExpression, ZeroRules) {
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T("a*0+b"), "b"},     {_T("0*a-b"), "-b"},
      {_T("A+0"), "a"},       {_T("5*0.0"), "0"},
      {_T("5*0.5"), "5*0.5"}, {_T("2*(a+0)"), "2*(a)"},
      {_T("a/0.5"), "a/0.5"}, {_T("a/0.5+b/0"), "a/0.5+b/0"},
      {_T("a*-b"), "-a*b"},   {_T("c+a*-b"), "c-a*b"},
      {_T("a--b"), "a+b"},    {_T("(3)+a"), "3+a"},
      {_T("(-3)+a"), "-3+a"}, {_T("()"), "0"},
      {_T("(a+b)"), "a+b"},   {_T("(a)+(b)"), "(a)+(b)"},
      {_T("0+0"), "0"},       {_T("sin(a*0)"), "s0)"},
      {_T("x0*y"), "0"},      {_T("(1)+(2)+(3)"), "1+2+3"},
      {_T("墙*0+柱"), "柱"},
  };
  for (const auto& c : cases) EXPECT_EQ(Simplified(c.text, 1), c.after) << Utf8(c.text);
}

TEST(OptimizeExpression, FalseForNothingAndForADivisionByZero) {
  EXPECT_EQ(Simplified(_T(""), 1), "!");
  EXPECT_EQ(Simplified(_T(""), 2), "!");
  EXPECT_EQ(Simplified(_T("A/0"), 1), "!A/0");  // found before anything is lowered
  EXPECT_EQ(Simplified(_T("A/0"), 8), "!A/0");
  EXPECT_EQ(Simplified(_T("(3)+A/(0)"), 1), "!3+a/0");  // lowered and cut until then
  EXPECT_EQ(Simplified(_T("MAX(1,2)/(0)"), 3), "!2/0");
}

TEST(OptimizeExpression, FoldsMaxAndMin) {
  EXPECT_EQ(Simplified(_T("max(1,2)+3"), 2), "2+3");
  EXPECT_EQ(Simplified(_T("min(1,2)+3"), 4), "1+3");
  EXPECT_EQ(Simplified(_T("max(1,2)+min(1,2)"), 6), "2+1");
  EXPECT_EQ(Simplified(_T("min(1,2)"), 2), "min(1,2)");
  EXPECT_EQ(Simplified(_T("MAX(1,3,2)"), 2), "3");
  EXPECT_EQ(Simplified(_T("max(2,1+1)"), 2),
            "1+1");  // a tie goes to the last; its brackets are the outermost
  EXPECT_EQ(Simplified(_T("5*max(2,1+1)"), 2), "5*(1+1)");
  EXPECT_EQ(Simplified(_T("max(2,2)"), 2), "2");
  EXPECT_EQ(Simplified(_T("max(1,2,3,4)"), 2), "1");  // a third comma ends the scan
  EXPECT_EQ(Simplified(_T("max(5)"), 2), "0");        // one argument counts as an empty one
  EXPECT_EQ(Simplified(_T("max(a,b)"), 2), "b");      // what cannot be calculated counts as 0
  EXPECT_EQ(Simplified(_T("max(a,-1)"), 2), "a");
  EXPECT_EQ(Simplified(_T("max(1,max(2,3))"), 2), "3");
  EXPECT_EQ(Simplified(_T("max(1,(2))"), 2), "2");
  EXPECT_EQ(Simplified(_T("maxa+1"), 2), "0+1");
  EXPECT_EQ(Simplified(_T("climax(1,2)"), 2), "cli2");
  EXPECT_EQ(Simplified(_T("max"), 2), "0");
}

TEST(OptimizeExpression, FoldsIif) {
  EXPECT_EQ(Simplified(_T("iif(1,2,3)"), 8), "2");
  EXPECT_EQ(Simplified(_T("iif(0,2,3)"), 8), "3");
  EXPECT_EQ(Simplified(_T("iif(1,2)"), 8), "iif(1,2)");
  EXPECT_EQ(Simplified(_T("IIF(1,2,3,4)"), 8), "iif(1,2,3,4)");
  EXPECT_EQ(Simplified(_T("iif(-1,2,3)"), 8), "3");
  EXPECT_EQ(Simplified(_T("2*iif(1>0,a+1,b)"), 8), "2*(a+1)");
  EXPECT_EQ(Simplified(_T("2*iif(a,b,c)"), 8), "2*c");
  EXPECT_EQ(Simplified(_T("iif(max(0,1),4,5)"), 8), "4");
}

TEST(OptimizeExpression, PassesRunInTheOrderMaxMinIifZero) {
  EXPECT_EQ(Simplified(_T("iif(max(1,2)>min(1,2),a+0,b)"), 15), "a");
  EXPECT_EQ(Simplified(_T("max(1,0*a)+0"), 3), "1");
  EXPECT_EQ(Simplified(_T("iif(1,max(1,2),3)+0"), 9), "max(1,2)");  // max is not asked for
}

TEST(OptimizeExpression, UnbalancedCallsStay) {
  EXPECT_EQ(Simplified(_T("Max(1,2"), 2), "max(1,2");
  EXPECT_EQ(Simplified(_T("min(1,2)+max(1,2"), 6), "1+max(1,2");
  EXPECT_EQ(Simplified(_T("iif(1,2,3"), 8), "iif(1,2,3");
}

TEST(OptimizeExpression, EndlessFoldingLeavesTheWholeTextAsItWas) {
  EXPECT_EQ(Simplified(_T("MAX(0,min(IIF(1,2,3),4))"), 2), "MAX(0,min(IIF(1,2,3),4))");
  EXPECT_EQ(Simplified(_T("(3)+MAX(1,min(2,IIF(1,2,3)))"), 2), "(3)+MAX(1,min(2,IIF(1,2,3)))");
  EXPECT_EQ(Simplified(_T("(3)+IIF(max(1,min(2,3)),4,5)"), 9), "(3)+IIF(max(1,min(2,3)),4,5)");
  EXPECT_EQ(Simplified(_T("max(1,min(2)"), 2), "max(1,min(2)");  // does not close: nothing is folded
}

TEST(OptimizeExpression, CallsMayStandInsideOneAnotherUpToALimit) {
  const auto nested = [](int depth) {
    return Repeated(_T("max(1,"), depth) + _T("2") + Repeated(_T(")"), depth);
  };
  for (const int depth : {kMaxSimplifierDepth - 1, kMaxSimplifierDepth}) {
    // Each level of the best argument is folded inside the one before; the outermost is the pass's own.
    SimplifierRules direct;
    CString text = nested(depth);
    EXPECT_EQ(Utf8(direct.OptimizateAll(text)), "2") << depth;
  }
  COptimizeExpression simplifier;
  CString text = _T("iif(") + nested(kMaxSimplifierDepth + 1) + _T(",4,5)");
  const CString before = text;
  EXPECT_TRUE(simplifier.OptimizateExper(text, 8));
  EXPECT_EQ(text, before);
}

TEST(OptimizeExpression, NestedIifWithoutThreeArgumentsRaises) {
  EXPECT_EQ(Simplified(_T("max(1,iif(1,2))"), 2), "1");  // never folded: it loses
  EXPECT_EQ(Simplified(_T("iif(iif(1,2),3,4)"), 8),
            "iif(iif(1,2),3,4)");  // the inner one comes first, and stays
  EXPECT_TRUE(RaisesInvalidArgument(_T("max(-1,iif(1,2))"), 2));
  EXPECT_TRUE(RaisesInvalidArgument(_T("max(-1,iif())"), 2));
  EXPECT_FALSE(RaisesInvalidArgument(_T("iif(1,2)"), 8));
}

TEST(OptimizeExpression, KnownValuesNeedNamesWithoutLatinLetters) {
  COptimizeExpression simplifier;
  EXPECT_TRUE(simplifier.SetKeyValue(_T("a"), 9));
  EXPECT_TRUE(simplifier.SetKeyValue(_T("墙高"), 3));
  CString text(_T("max(墙高,2)"));
  simplifier.OptimizateExper(text, 2);
  EXPECT_EQ(Utf8(text), "墙高");
  text = _T("max(a,2)");
  simplifier.OptimizateExper(text, 2);
  EXPECT_EQ(Utf8(text), "2");
  EXPECT_TRUE(simplifier.ClearMap());
  text = _T("max(墙高,2)");
  simplifier.OptimizateExper(text, 2);
  EXPECT_EQ(Utf8(text), "2");
}

TEST(OptimizeExpression, KeysAreCapitalsOfTwentyUnits) {
  SimplifierRules held;
  EXPECT_EQ(held.Function(), -1);
  held.simplifier.SetKeyValue(_T("abcdefghijklmnopqrstuvwxyz"), 1);
  ASSERT_EQ(held.Values().size(), 1U);
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(held.Values().begin()->first)), "ABCDEFGHIJKLMNOPQRST");
  const COptimizeExpression copy(held.simplifier);
  COptimizeExpression assigned;
  assigned = copy;
  SimplifierRules opened{assigned};
  EXPECT_EQ(opened.Values().size(), 1U);
}

TEST(OptimizeExpression, ArgumentsAreListedFromTheLast) {
  const struct {
    LPCTSTR call;
    int function;
    const char* list;
  } cases[] = {
      {_T("max(1,2)"), 0, "2|1|"},
      {_T("min(a,b+c)"), 1, "b+c|a|"},
      {_T("max(1,2,3)"), 0, "3|2|1|"},
      {_T("max(1)"), 0, "|"},
      {_T("max()"), 0, "|"},
      {_T("max(1,2,3,4)"), 0, "1|"},
      {_T("max(1,2,3,4,5)"), 0, "1|"},
      {_T("iif(1,2,3)"), 2, "3|2|1|"},
      {_T("iif(1,2)"), 2, ""},
      {_T("iif(1,2,3,4)"), 2, ""},
      {_T("iif()"), 2, ""},
      {_T("max(f(1,2),(3,4))"), 0, "(3,4)|f(1,2)|"},
      {_T("max(,)"), 0, "||"},
      {_T("maxa"), 0, "|"},
  };
  for (const auto& c : cases) {
    CStringArray list;
    rules.IdentityFuncElement(c.call, list, c.function);
    EXPECT_EQ(Joined(list), c.list) << Utf8(c.call);
  }
}

TEST(OptimizeExpression, TheBestArgumentIsTheFirstStrictlyBetterOfTheList) {
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("2"), _T("3"), _T("1")}), true)), "3");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("2"), _T("3"), _T("1")}), false)), "1");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("1+1"), _T("2")}), true)), "(1+1)");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("0-2147483647")}), true)), "0");  // not above the start
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("2147483647")}), false)), "0");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("2147483646")}), false)), "2147483646");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({}), true)), "0");
  EXPECT_EQ(Utf8(rules.GetMaxOrMinValue(List({_T("a+0+b")}), true)), "a+b");
}

TEST(OptimizeExpression, SubsectionOptimizeFoldsByTheFunctionOfThePass) {
  SimplifierRules pass;
  pass.SetFunction(0);
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T(""))), "");
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T("max(1,2)"))), "2");
  pass.SetFunction(1);
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T("min(1,2)"))), "1");
  pass.SetFunction(2);
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T("iif(1,2)"))), "iif(1,2)");
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T("iif(0*a+1,b+2,c)"))), "(b+2)");
  EXPECT_EQ(Utf8(pass.SubsectionOptimize(_T("iif(0.0,b+2,c)"))), "c");
}

TEST(OptimizeExpression, ValuesOfTextsIgnoreEveryError) {
  SimplifierRules known;
  known.simplifier.SetKeyValue(_T("高"), 2.5);
  known.simplifier.SetKeyValue(_T("H"), 7);
  EXPECT_EQ(known.ValStrChangDouble(_T("1+2")), 3);
  EXPECT_EQ(known.ValStrChangDouble(_T("高*2")), 5);
  EXPECT_EQ(known.ValStrChangDouble(_T("h*2")), 0);
  EXPECT_EQ(known.ValStrChangDouble(_T("H*2")), 14);  // the text comes lowered, but nothing here asks for it
  EXPECT_EQ(known.ValStrChangDouble(_T("")), 0);
  EXPECT_EQ(known.ValStrChangDouble(_T("1/0")), -1000);
}

TEST(OptimizeExpression, OptimizateAllFoldsWhatAnArgumentHolds) {
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T(""), "0"},
      {_T("a*0+b"), "b"},
      {_T("max(1,2)"), "2"},
      {_T("max(1,2)+min(3,4)+iif(1,5,6)"), "2+3+5"},
      {_T("iif(1,a+1,2)*3"), "a+1*3"},  // iif brings no brackets here
      {_T("max(1,a+1)*3"), "1*3"},
      {_T("max(max(1,2),max(3,4))"), "4"},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    const CString result = rules.OptimizateAll(text);
    EXPECT_EQ(Utf8(text), c.after) << Utf8(c.text);
    EXPECT_EQ(result, text);
  }
}

TEST(OptimizeExpression, CallsWithOneKindOfNameAreFolded) {
  EXPECT_EQ(rules.InclusiveFunc(_T("max(1,2)")), 2);
  EXPECT_EQ(rules.InclusiveFunc(_T("max(1,min(2,3))")), 1);
  EXPECT_EQ(rules.InclusiveFunc(_T("max(1,min(2,iif(3,4,5)))")), 0);
  EXPECT_EQ(rules.InclusiveFunc(_T("a+b")), 3);
  EXPECT_EQ(Utf8(rules.OptimizateMaxMin(_T("max(1,2)"), 0)), "2");
  EXPECT_EQ(Utf8(rules.OptimizateMaxMin(_T("min(1,2)"), 1)), "1");
  EXPECT_EQ(Utf8(rules.OptimizateMaxMin(_T("max(1,2,3)"), 2)),
            "3");  // any other index: the first of the list
  EXPECT_EQ(Utf8(rules.OptimizateMaxMin(_T("iif(1,2)"), 2)), "iif(1,2)");
  EXPECT_EQ(Utf8(rules.OptimizateIIF(_T("iif(1,a+2,3)"), 2)), "a+2");
  EXPECT_EQ(Utf8(rules.OptimizateIIF(_T("iif(0,a+2,3)"), 2)), "3");
  EXPECT_EQ(Utf8(rules.OptimizateIIF(_T("max(1,2)"), 0)), "2");
}

TEST(OptimizeExpression, OnePassLowersAndUnwraps) {
  SimplifierRules pass;
  const auto run = [&pass](CString& text) { return pass.SExperOptimizate(text); };
  pass.SetFunction(0);
  EXPECT_EQ(SimplifierRules::After(_T("(A+B)"), run), "a+b 1");
  EXPECT_EQ(SimplifierRules::After(_T("(1)+(2)+A"), run), "1+2+a 1");
  EXPECT_EQ(SimplifierRules::After(_T("A+0"), run), "a+0 1");
  pass.SetFunction(-1);
  EXPECT_EQ(SimplifierRules::After(_T("A+0"), run), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T(""), run), " 0");
}

TEST(OptimizeExpression, HostileTextsEnd) {
  for (LPCTSTR piece : {_T("("), _T(")"), _T("0*"), _T("*-"), _T("+0"), _T("/-"), _T("max("), _T("iif"),
                        _T("-"), _T("()"), _T("0"), _T("min(,"), _T("(0)-"), _T("\xD83D")}) {
    for (const int flags : {1, 2, 4, 8, 15}) {
      COptimizeExpression simplifier;
      CString text = Repeated(piece, 300);
      const int length = text.GetLength();
      try {
        simplifier.OptimizateExper(text, flags);
      } catch (CException* e) {
        e->Delete();
      }
      EXPECT_LE(text.GetLength(), length + 2) << Utf8(piece) << " " << flags;
    }
  }
}

TEST(OptimizeExpression, HeaderExamples) {
  EXPECT_EQ(Simplified(_T("a*0+b"), COptimizeExpression::kZeroRules), "b");
  EXPECT_EQ(Simplified(_T("max(1,2)+3"), COptimizeExpression::kFoldMax), "2+3");
  EXPECT_EQ(Simplified(_T("a/0"), 1), "!a/0");
}

}  // namespace
}  // namespace lorv
