// Texts made to break the engine: deep, long, cut in the middle of a character, full of control characters.
// Every one ends in a value or an error as described; the build with sanitizers watches the memory.

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "TEXPRESSCAL/express.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

CString Times(const CString& piece, int count) {
  std::basic_string<TCHAR> text;
  for (int i = 0; i < count; ++i) text += piece.View();
  return CString(TextView(text));
}

struct Outcome {
  int changed;
  int code;
  double value;
};

Outcome Evaluate(const CString& formula) {
  CExpression expression;
  Outcome outcome{};
  outcome.changed = expression.ChangeExpression(formula);
  outcome.code = expression.Value(outcome.value);
  return outcome;
}

CString Nested(const CString& open, const CString& close, int depth) {
  return Times(open, depth) + _T("1") + Times(close, depth);
}

TEST(HostileFormula, NestingIsBoundedAndFailsAsSyntax) {
  for (const int depth : {kMaxNesting - 1, kMaxNesting}) {
    const Outcome good = Evaluate(Nested(_T("("), _T(")"), depth));
    EXPECT_EQ(good.changed, -1) << depth;
    EXPECT_EQ(good.value, 1) << depth;
  }
  for (const int depth : {kMaxNesting + 1, kMaxNesting + 2, 100000, 1000000}) {
    const Outcome bad = Evaluate(Nested(_T("("), _T(")"), depth));
    EXPECT_EQ(bad.changed, kMaxNesting) << depth;
    EXPECT_EQ(bad.code, -1) << depth;
  }
}

TEST(HostileFormula, EveryKindOfNestingIsBounded) {
  const struct {
    const TCHAR* open;
    const TCHAR* close;
  } kKinds[] = {{_T("("), _T(")")},        {_T("ABS("), _T(")")},   {_T("MAX(1,"), _T(")")},
                {_T("|+"), _T("|*1")},     {_T("-("), _T(")")},     {_T("1+("), _T(")")},
                {_T("IIF(1,"), _T(",2)")}, {_T("1^("), _T(")")},    {_T("IIF("), _T(",2,3)")},
                {_T("2!("), _T(")")},      {_T("(-"), _T(")")},     {_T("MAX(MIN("), _T("))")},
                {_T("1<("), _T(")")},      {_T("1 AND ("), _T(")")}};
  for (const auto& kind : kKinds) {
    for (const int depth : {400, 100000}) {
      const Outcome outcome = Evaluate(Nested(kind.open, kind.close, depth));
      EXPECT_EQ(outcome.changed == -1, depth == 400 && CString(kind.open) != _T("1 AND ("))
          << Utf8(kind.open) << depth;
      if (depth != 400) {
        EXPECT_GT(outcome.changed, 0) << Utf8(kind.open);
      }
    }
    // Never closed.
    EXPECT_GE(Evaluate(Times(kind.open, 100000)).changed, 0) << Utf8(kind.open);
  }
}

// Any formula that a calculator holds is short enough for every bracket and sign in it.
TEST(HostileFormula, CalculatorsNestAsDeepAsTheirTextAllows) {
  int error = -1;
  CAdExpCalculate brackets(Nested(_T("("), _T(")"), 511));
  EXPECT_EQ(brackets.Calculate(error), 1);
  EXPECT_EQ(error, 0);
  CAdExpCalculate signs(Times(_T("-"), 1022) + _T("1"));
  EXPECT_EQ(signs.Calculate(error), 1);
  EXPECT_EQ(error, 0);
  CAdExpCalculate both(Times(_T("-("), 340) + _T("1") + Times(_T(")"), 340));
  EXPECT_EQ(both.Calculate(error), 1);
  EXPECT_EQ(error, 0);
}

TEST(HostileFormula, LongChainOfSignsIsNoDepth) {
  const Outcome outcome = Evaluate(Times(_T("-"), 1000000) + _T("1"));
  if (outcome.changed == -1) {
    EXPECT_EQ(outcome.value, 1);
  } else {
    EXPECT_GE(outcome.changed, kMaxNesting);
  }
}

double Seconds(const CString& formula, double expected) {
  const auto start = std::chrono::steady_clock::now();
  const Outcome outcome = Evaluate(formula);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(outcome.changed, -1);
  EXPECT_EQ(outcome.value, expected);
  return taken.count();
}

// Ten times the text takes about ten times as long: thirty is far from a hundred.
void ExpectLinear(const TCHAR* first, const TCHAR* piece, const TCHAR* last, double small, double large) {
  const CString small_text = first + Times(piece, 100000) + last;
  const CString large_text = first + Times(piece, 1000000) + last;
  double best = 1e9;
  for (int i = 0; i < 3; ++i) best = std::min(best, Seconds(small_text, small));
  EXPECT_LT(Seconds(large_text, large), 30 * best + 0.5) << Utf8(piece);
}

TEST(HostileFormula, MillionTermsTakeLinearTime) {
  ExpectLinear(_T("1"), _T("+1"), _T(""), 100001, 1000001);
  ExpectLinear(_T("1"), _T("*1"), _T(""), 1, 1);
  ExpectLinear(_T("1"), _T("^1"), _T(""), 1, 1);
  ExpectLinear(_T("0"), _T("!0"), _T(""), 1, 1);
  ExpectLinear(_T("0"), _T("<1"), _T(""), 0, 0);
  ExpectLinear(_T("0"), _T("+(1)"), _T(""), 100000, 1000000);
  ExpectLinear(_T("0"), _T("+|1|"), _T(""), 100000, 1000000);
  ExpectLinear(_T("0"), _T("+ABS(1)"), _T(""), 100000, 1000000);
  ExpectLinear(_T("MAX(0"), _T(",1"), _T(")"), 1, 1);
  ExpectLinear(_T("MIN(0"), _T(",1"), _T(")"), 0, 0);
  ExpectLinear(_T("0"), _T(" "), _T(""), 0, 0);
  ExpectLinear(_T("FIND('B','"), _T("A"), _T("')"), 0, 0);
  ExpectLinear(_T("0*(0"), _T("*PI"), _T(")"), 0, 0);
}

TEST(HostileFormula, JoiningManyTextsEnds) {
  const Outcome outcome = Evaluate(_T("FIND('A'") + Times(_T("+'A'"), 3000) + _T(",'B')"));
  EXPECT_EQ(outcome.changed, -1);
  EXPECT_EQ(outcome.value, 0);
}

TEST(HostileFormula, LongNumbersAndNames) {
  EXPECT_EQ(Evaluate(Times(_T("0"), 300) + _T("7")).value, 7);
  EXPECT_EQ(Evaluate(_T("1.") + Times(_T("0"), 1000000)).value, 1);
  EXPECT_EQ(Evaluate(_T("0.") + Times(_T("3"), 300)).value, 1.0 / 3);
  EXPECT_EQ(Evaluate(Times(_T("A"), 300)).changed, 300);
  EXPECT_EQ(Evaluate(Times(_T("A"), 1000000)).changed, 1000000);
  EXPECT_EQ(Evaluate(_T("2") + Times(_T("A"), 300)).value, 2);
  EXPECT_EQ(Evaluate(Times(_T("SIN"), 100)).changed, 300);
  EXPECT_EQ(Evaluate(Times(_T("1."), 1000000)).value, 1.1);
  for (const int digits : {253, 254, 255, 256, 257, 1022}) {
    EXPECT_EQ(Evaluate(_T("1.") + Times(_T("0"), digits)).value, 1) << digits;
    EXPECT_EQ(Evaluate(Times(_T("1"), digits) + _T("#")).changed, digits) << digits;
  }
}

class AcceptsAll final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR) const override { return 1; }
};

TEST(HostileFormula, ListOfNamesNeverOutgrowsItsField) {
  AcceptsAll resolver;
  for (const int length : {1, 100, 252, 253, 254, 255, 256, 300, 1000, 100000}) {
    CExpression expression;
    expression.m_pValidParameter = &resolver;
    EXPECT_EQ(expression.ChangeExpression(Times(_T("A"), length)), -1) << length;
    EXPECT_LE(TextLength(expression.m_szVarList), 254u) << length;
    EXPECT_EQ(expression.ChangeExpression(Times(_T("B+"), length) + _T("B")), -1) << length;
    EXPECT_LE(TextLength(expression.m_szVarList), 254u) << length;
    double value = 0;
    EXPECT_EQ(expression.Value(value), 0);
    EXPECT_EQ(value, 1e6 * (length + 1));
  }
}

TEST(HostileFormula, RefusedLongNameNeverOutgrowsItsField) {
  class RefusesAll final : public CValidParameter {
   public:
    int ValidParameter(LPCTSTR) const override { return 0; }
  };
  RefusesAll resolver;
  for (const int length : {1, 253, 254, 255, 256, 300, 100000}) {
    CExpression expression;
    expression.m_pValidParameter = &resolver;
    EXPECT_EQ(expression.ChangeExpression(Times(_T("A"), length)), length);
    const CString list(expression.m_szVarList);
    EXPECT_EQ(Utf8(list), Utf8(Times(_T("A"), length < 254 ? length : 254)));
  }
}

TEST(HostileFormula, MillionUnitsOfEveryKindEnd) {
  for (const TCHAR* piece :
       {_T("("),    _T(")"),  _T("|"), _T("'"),  _T("<"),      _T("="),    _T("&&"),   _T(" AND "), _T("1<2"),
        _T("!"),    _T(","),  _T("."), _T("墙"), _T("\xD800"), _T("\x04"), _T("\x09"), _T("SIN("),  _T("A1_"),
        _T("'A'="), _T("1+"), _T("-"), _T("+"),  _T("^"),      _T("[1]"),  _T("|1")}) {
    EXPECT_GE(Evaluate(Times(piece, 1000000 / CString(piece).GetLength())).changed, -1) << Utf8(piece);
  }
}

TEST(HostileFormula, HalvesOfSurrogatePairsAreUnitsLikeOthers) {
  EXPECT_EQ(Evaluate(CString(_T("1+\xD83D"))).changed, 2);
  EXPECT_EQ(Evaluate(CString(_T("'\xD83D'='\xDE00'"))).value, 0);
  EXPECT_EQ(Evaluate(CString(_T("FIND('\xD83D\xDE00','\xDE00')"))).value, 2);
  CAdExpCalculate calculator(CString(_T("\xD83D+1")));
  calculator.SetVarValue(_T("\xD83D"), 2, false);
  EXPECT_EQ(calculator.Calculate(), 3);
}

TEST(HostileFormula, CalculatorTakesAMillionUnitsAndCutsThem) {
  CAdExpCalculate calculator(Times(_T("A+"), 500000));
  calculator.SetVarValue(Times(_T("A"), 1000000), 1, false);
  calculator.SetVarValue(_T("A"), 1e300, false);
  int error = -1;
  calculator.Calculate(error);
  EXPECT_EQ(calculator.GetExpr().GetLength(), 1023);
  CString message;
  EXPECT_FALSE(calculator.ValidExp(message));
}

TEST(HostileFormula, SubstitutionMayOutgrowTheFormulaLimit) {
  CAdExpCalculate calculator(Times(_T("A+"), 500) + _T("A"));
  calculator.SetVarValue(_T("A"), 123456.789, false);
  int error = -1;
  // Five hundred names are looked at; the last one counts as the stand-in of a name.
  EXPECT_NEAR(calculator.Calculate(error), 500 * 123456.789 + 1000000, 1e-3);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(calculator.GetCalcedExpr().GetLength(), 500 * 11 + 1);
}

TEST(HostileFormula, RewritingOfLongTextsEnds) {
  CString text = Times(_T("a[1]+"), 200000);
  CStringArray names;
  std::vector<CTwoStrValue> pairs;
  EXPECT_TRUE(SplitMidBracketKey(text, names, pairs));
  EXPECT_EQ(text.GetLength(), 400000);
  CString open = Times(_T("["), 200000);
  EXPECT_TRUE(SplitMidBracketKey(open, names, pairs));
  EXPECT_EQ(open.GetLength(), 200000);
  for (const int length : {1022, 1023, 1024, 1025, 100000}) {
    CString formula = Times(_T("9"), length - 2) + _T("+a");
    const CString before = formula;
    EXPECT_FALSE(ReplaceExprWithExpr(formula, _T("a:1"), true, true)) << length;
    EXPECT_EQ(Utf8(formula), Utf8(before));
  }
  CMapValue map;
  EXPECT_EQ(StrValueToMap(Times(_T("a:1;"), 100000), map), 1);
  EXPECT_EQ(StrValueToMap(Times(_T(":"), 100000), map), 0);
  CString pairs_text = Times(_T("a:1;"), 100000);
  CString one = _T("a");
  EXPECT_TRUE(ReplaceExprWithExpr(one, pairs_text, true, true));
  EXPECT_EQ(Utf8(one), "1");
}

}  // namespace
}  // namespace lorv::test
