#include "TEXPRESSCAL/diagnose.h"

#include <gtest/gtest.h>

#include <random>

#include "TEXPRESSCAL/diagnose/diagnose_text.h"
#include "TEXPRESSCAL/express.h"
#include "tests/TEXPRESSCAL/diagnose/broken_formulas.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

class Diagnose : public testing::Test {
 protected:
  Diagnose() {
    for (const auto& [name, value] : {std::pair(_T("L"), 12.5),
                                      {_T("B"), 0.24},
                                      {_T("H"), 3.0},
                                      {_T("Z"), 0.0},
                                      {_T("墙高"), 2.8},
                                      {_T("LENGTH"), 6.0}}) {
      values_[name] = value;
    }
    keywords_.AddSorted(_T("N"));
    keywords_.AddSorted(_T("WIDTH"));
  }

  FormulaDiagnosis Of(const CString& formula) { return DiagnoseFormula(formula, values_, keywords_); }

  CMapValue values_;
  TDefsetVars keywords_;
};

TEST_F(Diagnose, NamesPlaceAndMessageOfEachBrokenFormula) {
  for (const auto& row : test::kBrokenFormulas) {
    const FormulaDiagnosis found = Of(CString::FromUtf8(row.formula));
    EXPECT_EQ(found.fault, row.fault) << row.formula;
    EXPECT_EQ(found.position, row.position) << row.formula;
    EXPECT_EQ(found.length, row.length) << row.formula;
    EXPECT_EQ(Utf8(found.suggestion), row.suggestion) << row.formula;
    EXPECT_EQ(Utf8(found.english), row.message) << row.formula;
    EXPECT_EQ(found.chinese.IsEmpty(), row.fault == FormulaFault::kNone) << row.formula;
  }
}

TEST_F(Diagnose, HeaderExample) {
  const FormulaDiagnosis found = Of(_T("(L+B*2"));
  EXPECT_EQ(found.fault, FormulaFault::kOpenBracket);
  EXPECT_EQ(found.position, 0);
  EXPECT_EQ(found.length, 1);
}

TEST_F(Diagnose, ChineseMessageHoldsTheStretchAsTyped) {
  EXPECT_EQ(Utf8(Of(_T("墙高*lenght")).chinese), "变量“lenght”没有定义");
  EXPECT_EQ(Utf8(Of(_T("length/(b-B)")).chinese), "除数为零:“(b-B)”");
}

TEST_F(Diagnose, FollowsValuesChainsAndShortenedOperators) {
  // Every rewriting before the fault changes the length of the text.
  EXPECT_EQ(Of(_T("length*墙高 and 1<=2<=H && l<>b || Q")).position, 33);
  EXPECT_EQ(Of(_T("1<2<3<X")).position, 6);
  EXPECT_EQ(Of(_T("2length + 墙高*X")).position, 13);
}

TEST_F(Diagnose, KeywordWithoutValueCountsZero) {
  EXPECT_EQ(Of(_T("L+N")).fault, FormulaFault::kNone);
  const FormulaDiagnosis found = Of(_T("L/WIDTH"));
  EXPECT_EQ(found.fault, FormulaFault::kDivisionByZero);
  EXPECT_EQ(found.position, 2);
  EXPECT_EQ(found.length, 5);
}

TEST_F(Diagnose, LastErrorOfTheValuesIsTheOneReported) {
  EXPECT_EQ(Of(_T("1/0+SQRT(-1)")).fault, FormulaFault::kOutsideDomain);
  EXPECT_EQ(Of(_T("SQRT(-1)+1/0")).fault, FormulaFault::kDivisionByZero);
  EXPECT_EQ(Of(_T("1/0+2/(B-B)")).position, 6);
}

TEST_F(Diagnose, LengthLimitIsTheCalculators) {
  const CString longest(CString('1', kMaxFormulaText));
  EXPECT_EQ(Of(longest).fault, FormulaFault::kNone);
  const FormulaDiagnosis found = Of(longest + _T("2"));
  EXPECT_EQ(found.fault, FormulaFault::kTooLong);
  EXPECT_EQ(found.position, kMaxFormulaText);
  EXPECT_EQ(found.length, 1);
  EXPECT_FALSE(found.stops);
}

TEST_F(Diagnose, EmptyAndNullHaveNoFault) {
  EXPECT_EQ(Of(_T("")).fault, FormulaFault::kNone);
  EXPECT_EQ(DiagnoseFormula(nullptr, values_, keywords_).fault, FormulaFault::kNone);
}

TEST_F(Diagnose, EveryFaultHasBothMessages) {
  for (int i = 1; i <= static_cast<int>(FormulaFault::kMalformedArguments); ++i) {
    const FaultText& text = TextOfFault(static_cast<FormulaFault>(i));
    EXPECT_EQ(static_cast<int>(text.fault), i);
    EXPECT_NE(*text.chinese, 0);
    EXPECT_NE(*text.english, 0);
  }
}

// What Calculate says and what the diagnosis says must agree, and the place lies in the text.
TEST_F(Diagnose, AgreesWithTheCalculator) {
  std::mt19937 random(11);
  const char* pieces[] = {"L", "B",   "墙高", "N",  "X",    "1",    "2.5",   "0", "+",  "-",
                          "*", "/",   "(",    ")",  "SIN(", "IIF(", ",",     "<", ">=", " AND ",
                          "|", "'A'", " ",    "，", "^",    "!",    "SQRT(", "Z"};
  for (int round = 0; round < 60000; ++round) {
    std::string text;
    for (std::size_t n = 1 + random() % 9; n > 0; --n) text += pieces[random() % std::size(pieces)];
    const CString formula = CString::FromUtf8(text);
    CAdExpCalculate calculator;
    calculator.SetVarValue(values_);
    for (const auto& [name, value] : values_) calculator.SetVarValue(name, value, true);
    for (const CStrCmp& name : keywords_) calculator.SetVarValue(name, 0.0, true);
    calculator.SetExpr(formula);
    int error = 0;
    calculator.Calculate(error);
    CMapValue all = values_;
    for (const CStrCmp& name : keywords_) all[name] = 0.0;
    const FormulaDiagnosis found = DiagnoseFormula(formula, all, keywords_);
    if (error != 0) {
      ASSERT_NE(found.fault, FormulaFault::kNone) << text;
      ASSERT_TRUE(found.stops) << text;
    }
    const bool goes_on = found.fault == FormulaFault::kNone || !found.stops;
    ASSERT_TRUE(!goes_on || error == 0) << text;
    ASSERT_GE(found.position, 0) << text;
    ASSERT_LE(found.position + found.length, formula.GetLength()) << text;
  }
}

}  // namespace
}  // namespace lorv
