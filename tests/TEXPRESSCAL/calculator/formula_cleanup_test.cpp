#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TEXPRESSCAL/calculator.h"
#include "tests/support/print.h"

// Opens the private clean-up rule to the tests under its own name.
struct CleanupRules {
  static std::string MoveConnSymbol(LPCTSTR formula) {
    CString text(formula);
    EXPECT_TRUE(CAdExpCalculate().MoveConnSymbol(text));
    return lorv::test::Utf8(text);
  }
};

namespace lorv {
namespace {

using test::Utf8;

std::string Numeric(LPCTSTR formula) {
  const TextView text(formula);
  // One unit too many on both sides shows a write outside.
  std::vector<TCHAR> buffer(text.size() + 3, TCHAR{'#'});
  std::copy(text.begin(), text.end(), buffer.begin() + 1);
  buffer[text.size() + 1] = 0;
  EXPECT_TRUE(CAdExpCalculate().OptimizeNumExpr(buffer.data() + 1));
  EXPECT_EQ(buffer.front(), TCHAR{'#'});
  EXPECT_EQ(buffer.back(), TCHAR{'#'});
  return Utf8(LPCTSTR(buffer.data() + 1));
}

std::string Optimized(LPCTSTR formula) {
  CString text(formula);
  EXPECT_TRUE(CAdExpCalculate().OptimizeExpr(text));
  return Utf8(text);
}

struct Case {
  LPCTSTR text;
  const char* after;
};

TEST(FormulaCleanup, OptimizeNumExprCutsZerosInABuffer) {
  const Case cases[] = {
      {_T(""), ""},
      {_T("a+0+b"), "a+b"},
      {_T("a+0+0+b"), "a+b"},
      {_T("a+0"), "a"},
      {_T("a-0.0+b"), "a+b"},  // the second zero reaches back to the sign
      {_T("a+0.5"), "a+0.5"},
      {_T("a+00+b"), "a+b"},
      {_T("a+05"), "a"},  // the digit stands last and goes along
      {_T("a+05+b"), "a5+b"},
      {_T("a+0*b"), "a*b"},
      {_T("a+0)"), "a+0)"},  // neither digit nor sign behind it
      {_T("(a+0)"), "(a+0)"},
      {_T("a\\0\\b"), "a\\b"},
      {_T("a/0-b"), "a-b"},
      {_T("a*0+b"), "a*0+b"},  // reaches back over "*" to the start
      {_T("ab*0+c"), "ab+c"},  // behind a name the factor sign goes too
      {_T("xab0+c"), "xab+c"},
      {_T("x_0+c"), "x_+c"},
      {_T("xa10+c"), "xa10+c"},  // a digit before it
      {_T("0+a"), "0+a"},        // at the start
      {_T("00+a"), "00+a"},
      {_T("a0+b"), "a0+b"},  // reaches back to index 0
      {_T("0"), "0"},
      {_T("000"), "000"},
      {_T("+0"), "+0"},
      {_T("墙+0+柱"), "墙+柱"},
      {_T("墙墙0+柱"), "墙墙0+柱"},  // no name in this sense
      {_T("a+0+"), "a"},             // what stands last goes along
      {_T("ab+0*0+c"), "ab+c"},
  };
  for (const Case& c : cases) EXPECT_EQ(Numeric(c.text), c.after) << Utf8(c.text);
  EXPECT_TRUE(CAdExpCalculate().OptimizeNumExpr(nullptr));
}

TEST(FormulaCleanup, OptimizeNumExprClearsTheFreedEnd) {
  TCHAR text[] = _T("a+0+b");
  CAdExpCalculate().OptimizeNumExpr(text);
  EXPECT_EQ(text[3], 0);
  EXPECT_EQ(text[4], 0);
}

TEST(FormulaCleanup, OptimizeExprCutsZerosByOtherRules) {
  const Case cases[] = {
      {_T(""), ""},
      {_T("10+a"), "1+a"},  // a digit on the left does not protect the zero
      {_T("a*0+b"), "a+b"},
      {_T("a+0+b"), "a+b"},
      {_T("a-0*3"), "a"},
      {_T("a-0*3.5+b"), "a+b"},
      {_T("a-0*b"), "ab"},  // only digits count as the factor
      {_T("0*5+a"), "+a"},  // the leading sign stays
      {_T("0"), "0"},
      {_T("0.0"), "0"},
      {_T("0.5"), "0.5"},
      {_T("a+05"), "a+05"},
      {_T("a0+b"), "a0+b"},  // behind a name
      {_T("_0+b"), "_0+b"},
      {_T("墙0+b"), "墙+b"},  // no name in this sense
      {_T("a\\0+b"), "a+b"},
      {_T("a/0"), "a"},
      {_T("(0)"), ""},  // brackets left empty go, and nothing comes for them
      {_T("a+(0+b)"), "a+(b)"},
      {_T("a+0+0"), "a+0"},  // the walk goes on behind where it stood
      {_T("5.0"), "5."},
      {_T("a+0.0+b"), "a+b"},
      {_T("100"), "1"},
  };
  for (const Case& c : cases) EXPECT_EQ(Optimized(c.text), c.after) << Utf8(c.text);
}

TEST(FormulaCleanup, MoveConnSymbolClearsUpSigns) {
  const Case cases[] = {
      {_T(""), ""},
      {_T("+"), "+"},
      {_T("a*+b"), "a+b"},
      {_T("a++b"), "a+b"},
      {_T("a+-b"), "a-b"},
      {_T("a+*b"), "a*b"},
      {_T("a+/b"), "a/b"},
      {_T("a+\\b"), "a\\b"},
      {_T("(a+)"), "(a)"},
      {_T("a+(b)"), "a+(b)"},
      {_T("(a)+b"), "(a)+b"},  // a closing bracket before it
                               // is no sign
      {_T("a/+b"), "a+b"},
      {_T("(+b)"), "(b)"},
      {_T("+a"), "+a"},      // doubled, and taken away again
      {_T("+()a"), "+()a"},  // what stands at index 1 is not looked at
      {_T("+(+a)"), "+a)"},
      {_T("++a"), "+a"},
      {_T("+-a"), "-a"},
      {_T("a()b"), "ab"},
      {_T("a(())b"), "ab"},
      {_T("(*b)"), "(b)"},
      {_T("(/b)"), "(b)"},
      {_T("(\\b)"), "(b)"},
      {_T("(-b)"), "(-b)"},
      {_T("((b))"), "((b))"},
      {_T("a--b"), "a--b"},
      {_T("a*-b"), "a*-b"},
      {_T("a+"), "a+"},
  };
  for (const Case& c : cases) EXPECT_EQ(CleanupRules::MoveConnSymbol(c.text), c.after) << Utf8(c.text);
}

std::string Prepared(LPCTSTR parameters, LPCTSTR values = _T("")) {
  CAdExpCalculate calculator;
  calculator.SetVarValue(CString(values));
  CString text(parameters);
  EXPECT_EQ(calculator.PrepareParamsValue(text), *parameters != 0);
  return Utf8(text);
}

TEST(FormulaCleanup, PrepareParamsValueWorksEachFormula) {
  EXPECT_EQ(Prepared(_T("")), "");
  EXPECT_EQ(Prepared(_T("a:1+1;b")), "a:2");
  EXPECT_EQ(Prepared(_T("a:1+1;b:3*4")), "a:2;b:12");
  EXPECT_EQ(Prepared(_T("a:1+1;;b:3*4;")), "a:2;b:12");  // an empty piece vanishes
  EXPECT_EQ(Prepared(_T("a:1:2;b:")), "");               // so does any other shape
  EXPECT_EQ(Prepared(_T("a:1/0;b:2")), "a:0;b:2");       // a failure counts 0, and the rest goes on
  EXPECT_EQ(Prepared(_T("a:1+;b:2")), "a:0;b:2");
  EXPECT_EQ(Prepared(_T("a:nothing;b:2")), "a:0;b:2");
  EXPECT_EQ(Prepared(_T("a:1/3")), "a:0.33333");         // five decimals
  EXPECT_EQ(Prepared(_T("a:x*2"), _T("X:2.5")), "a:5");  // in capitals
  EXPECT_EQ(Prepared(_T("a:墙高*2"), _T("墙高:3")), "a:6");
  EXPECT_EQ(Prepared(_T("a:sqrt(16)")), "a:4");
  EXPECT_EQ(Prepared(_T(":1+1")), ":2");
  EXPECT_EQ(Prepared(_T(";")), "");
}

TEST(FormulaCleanup, PrepareParamsValueCountsKeywordsWithoutAValueAsZero) {
  CAdExpCalculate calculator;
  CStringArray names;
  names.Add(_T("H"));
  calculator.SetKeyWord(names);
  CString text(_T("a:h+1"));
  EXPECT_TRUE(calculator.PrepareParamsValue(text));
  EXPECT_EQ(Utf8(text), "a:1");
}

TEST(FormulaCleanup, PrepareParamsValueHolds1023UnitsOfAFormula) {
  for (const int length : {1022, 1023, 1024}) {
    // Ones in a row of sums; behind the limit the last "+1" is cut.
    CString formula = length % 2 == 0 ? _T("11") : _T("1");
    while (formula.GetLength() < length) formula += _T("+1");
    CString text = _T("a:") + formula;
    EXPECT_TRUE(CAdExpCalculate().PrepareParamsValue(text));
    EXPECT_EQ(Utf8(text), length == 1022 ? "a:521" : length == 1023 ? "a:512" : "a:0") << length;
  }
}

TEST(FormulaCleanup, PrepareParamsValueLeavesTheCalculatorAlone) {
  CAdExpCalculate calculator(_T("A+1"));
  calculator.SetVarValue(_T("A:2"));
  EXPECT_EQ(calculator.Calculate(), 3);
  CString text(_T("x:A*10"));
  calculator.PrepareParamsValue(text);
  EXPECT_EQ(Utf8(text), "x:20");
  EXPECT_EQ(Utf8(calculator.GetExpr()), "A+1");
  EXPECT_EQ(Utf8(calculator.GetCalcedExpr()), "2+1");
}

}  // namespace
}  // namespace lorv
