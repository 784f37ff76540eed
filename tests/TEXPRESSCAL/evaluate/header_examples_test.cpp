#include <gtest/gtest.h>

#include "TEXPRESSCAL/express.h"
#include "tests/support/print.h"

namespace {

using lorv::test::Utf8;

// Room for every rewriting of these tests.
struct Buffer {
  explicit Buffer(LPCTSTR text) { CString(text).View().copy(units, 255); }
  TCHAR units[256] = {};
};

TEST(HeaderExamples, Expression) {
  CExpression e;
  double v = 0;
  EXPECT_EQ(e.ChangeExpression(_T("1+2*3")), -1);
  EXPECT_EQ(e.Value(v), 0);
  EXPECT_EQ(v, 7);
}

TEST(HeaderExamples, ReplaceStr) {
  Buffer b(_T("aXa"));
  EXPECT_EQ(ReplaceStr(b.units, _T("a"), _T("bb"), true), 2);
  EXPECT_EQ(Utf8(b.units), "bbXbb");
}

TEST(HeaderExamples, Calculator) {
  CAdExpCalculate c(_T("a+b"));
  EXPECT_EQ(c.SetVarValue(_T("A:2;b:3")), 2);
  EXPECT_EQ(c.Calculate(), 5);
}

// A calculator that evaluates a text of its own.
class OwnText : public CAdExpCalculate {
 public:
  void Write(LPTSTR text) const { ReplExprWithVal2(text); }
};

TEST(HeaderExamples, DerivedCalculatorWritesValuesIntoItsOwnText) {
  OwnText c;
  c.SetVarValue(_T("A:2;AB:3;墙高:2.8"));
  Buffer b(_T("AB*墙高+a+A"));
  c.Write(b.units);
  EXPECT_EQ(Utf8(b.units), "3*2.8+a+2");
}

TEST(HeaderExamples, KeywordSet) {
  TDefsetVars v;
  v.AddSorted(_T("H"));
  EXPECT_EQ(v.FindKey(_T("h")), 0);
}

TEST(HeaderExamples, MapValue) {
  CMapValue m;
  m[_T("h")] = 2.5;
  EXPECT_EQ(Utf8(MapValueToStr(m)), "H:2.5;");
  EXPECT_EQ(StrValueToMap(_T("a:1;b;c:2:3;"), m), 1);
  EXPECT_EQ(Utf8(MapValueToStr(m)), "A:1;");
}

TEST(HeaderExamples, ReplExprWithValue) {
  Buffer b(_T("a.b+a"));
  EXPECT_EQ(ReplExprWithValue(b.units, _T("a"), _T("3"), true), 1);
  EXPECT_EQ(Utf8(b.units), "a.b+3");
}

TEST(HeaderExamples, ReplExprWithOneValue) {
  Buffer b(_T("2a"));
  ReplExprWithOneValue(b.units, _T("a"), 3.0);
  EXPECT_EQ(Utf8(b.units), "2*3");
  Buffer shifted(_T("abc+abc"));
  ReplExprWithOneValue(shifted.units, _T("abc"), 1.0);
  EXPECT_EQ(Utf8(shifted.units), "1+abc");
}

TEST(HeaderExamples, ReplaceExprWithExpr) {
  CString text(_T("2*a"));
  EXPECT_TRUE(ReplaceExprWithExpr(text, _T("a:b+c"), true, false));
  EXPECT_EQ(Utf8(text), "2*(b+c)");
}

TEST(HeaderExamples, SplitMidBracketKey) {
  CString text(_T("2*abc[1]"));
  CStringArray names;
  std::vector<CTwoStrValue> pairs;
  EXPECT_TRUE(SplitMidBracketKey(text, names, pairs));
  EXPECT_EQ(Utf8(text), "2*abc");
  ASSERT_EQ(pairs.size(), 1U);
  EXPECT_EQ(Utf8(pairs[0].strFirst), "abc");
  EXPECT_EQ(Utf8(pairs[0].strSecond), "1");
}

// One header is enough for all of the engine.
TEST(HeaderExamples, ChiefHeaderHasThemAll) {
  const double lengths[] = {1, 2, 3};
  double results[3] = {};
  const lorv::ValueColumn columns[] = {{_T("L"), lengths}};
  lorv::CalculateRows(CAdExpCalculate(CString(_T("L*2"))), columns, 3, results, nullptr);
  EXPECT_EQ(results[2], 6);
  CString text = _T("a*0+b");
  COptimizeExpression simplifier;
  EXPECT_TRUE(simplifier.OptimizateExper(text, COptimizeExpression::kZeroRules));
  EXPECT_EQ(Utf8(text), "b");
  EXPECT_EQ(Utf8(lorv::SimplifySafely(_T("1*A"))), "A");
}

TEST(HeaderExamples, SimplifierNamesItsConstants) {
  EXPECT_EQ(Utf8(s_strFuncName[0] + s_strFuncName[1] + s_strFuncName[2]), "maxminiif");
  EXPECT_EQ(Utf8(s_strOperator), "+-*/,");
}

}  // namespace
