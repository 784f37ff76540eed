#include "TEXPRESSCAL/exact/hidden_numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "TEXPRESSCAL/exact_formula.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

// What ends the work of a formula over L, and the stretch of it that is named.
struct Found {
  int code = 0;
  double result = 0;
  FormulaDiagnosis what;
};

Found FoundIn(const char* text, double value) {
  const ExactName names[] = {{_T("L")}};
  ExactFormula formula(CString::FromUtf8(text), names);
  EXPECT_EQ(formula.Fault().fault, FormulaFault::kNone) << text;
  Found found;
  found.result = formula.Evaluate(&value, found.code);
  found.what = formula.Explain();
  return found;
}

// The evaluator's rules make an ordinary number of each of these, as the suite does.
TEST(HiddenNumbers, AreNamedWhereTheyComeUp) {
  const struct {
    const char* formula;
    double result;
    int position;
    int length;
  } rows[] = {
      {"IIF(ASIN(L)>0,1,2)", 2, 4, 7},
      {"MAX(ASIN(L),1)", 1, 4, 7},
      {"MIN(5,3,acos( L ),4)", 3, 8, 9},
      {"ASIN(L)>0", 0, 0, 7},
      {"L>1 AND 1+ASIN(L)>0", 0, 10, 7},
      {"L<1 OR ACOS(L)=1", 0, 7, 7},
      {"0!(ASIN(L))", 0, 3, 7},
      {"1/EXP(L*400)", 0, 2, 10},
      {"1/(0^(0-L))", 0, 4, 6},
      {"1/CTG(0*L)", 0, 2, 8},
      {"IIF(10 ^ (L*200)>1,7,8)", 7, 7, 9},
      {"ROUND((0-8)^(1/3))", -2147483648.0, 11, 6},
      {"INT(2*ASIN(L))", -2147483648.0, 6, 7},
      {"ASIN(L)^0", 1, 0, 7},
      {"EXP(0-0^(0-1))", 0, 7, 6},
      {"ATAN(0^(0-1))", 1.5707963267948966, 6, 6},
  };
  for (const auto& row : rows) {
    const Found found = FoundIn(row.formula, 2);
    EXPECT_EQ(found.code, kHiddenNoNumber) << row.formula;
    EXPECT_EQ(found.result, row.result) << row.formula << ": the evaluator's own number";
    EXPECT_EQ(found.what.fault, FormulaFault::kNoNumber) << row.formula;
    EXPECT_EQ(found.what.position, row.position) << row.formula;
    EXPECT_EQ(found.what.length, row.length) << row.formula;
    EXPECT_TRUE(found.what.stops) << row.formula;
    EXPECT_FALSE(found.what.chinese.IsEmpty() || found.what.english.IsEmpty()) << row.formula;
  }
}

// Of operators the sign and what stands behind it are named, in the text as typed.
TEST(HiddenNumbers, MessagesQuoteTheFormulaAsTyped) {
  const Found found = FoundIn("IIF(10 ^ (l*200)>1,7,8)", 2);
  EXPECT_EQ(test::Utf8(found.what.english),
            "'^ (l*200)' is no number, or too large for one, and the result would hide it");
}

TEST(HiddenNumbers, OrdinaryPartsAreNotDoubted) {
  for (const char* formula : {"IIF(ASIN(L/4)>0,1,2)", "MAX(L^2,EXP(L),CTG(1))", "IIF(L>1,5,1/CTG(0*L))",
                              "IIF(L<1,MAX(1,ASIN(L)),3)", "L>1 OR ASIN(L)>0", "L<1 AND ASIN(L)>0", "1/L^2",
                              "LEN(ASIN(L))+1", "SIN(1,ASIN(L)>0)", "L*B", "FIND('a',ASIN(L))"}) {
    const ExactName names[] = {{_T("L")}, {_T("B")}};
    ExactFormula exact(CString::FromUtf8(formula), names);
    const double values[] = {2, 3};
    int code = -1;
    exact.Evaluate(values, code);
    EXPECT_EQ(code, 0) << formula;
    EXPECT_EQ(exact.Explain().fault, FormulaFault::kNone) << formula;
  }
}

// A result that is itself no number needs no search: who asks sees it.
TEST(HiddenNumbers, AResultThatShowsItIsLeftAlone) {
  const Found found = FoundIn("2*ASIN(L)-1", 2);
  EXPECT_EQ(found.code, 0);
  EXPECT_TRUE(std::isnan(found.result));
}

// Errors of the evaluator go first.
TEST(HiddenNumbers, ErrorsOfTheEvaluatorCount) {
  EXPECT_EQ(FoundIn("MAX(ASIN(L),1)/(L-2)", 2).code, 1);
  EXPECT_EQ(FoundIn("MAX(ASIN(L),SQRT(0-L))", 2).code, 4);
}

TEST(HiddenNumbers, OnlyFormulasThatMayHideAreSearched) {
  ExprNode value{};
  value.kind = kNumber;
  ExprNode power{};
  power.kind = kPower;
  power.left = power.right = &value;
  ExprNode greater{};
  greater.kind = kGreater;
  greater.left = &power;
  greater.right = &value;
  // The comparison hides the power, and the power both of its sides, which are plain numbers.
  EXPECT_EQ(PartsThatMayHide(&greater), std::vector<const ExprNode*>{&power});
  EXPECT_TRUE(PartsThatMayHide(&power).empty());
  EXPECT_TRUE(PartsThatMayHide(&value).empty());
  value.value = 10;
  EXPECT_EQ(HiddenPart(&greater), nullptr);
  value.value = 1000;
  EXPECT_EQ(HiddenPart(&greater), &power);
  value.value = std::numeric_limits<double>::infinity();
  EXPECT_EQ(HiddenPart(&greater), &value);
}

// Long chains of operators and deep brackets are looked through as well.
TEST(HiddenNumbers, LongFormulasEnd) {
  std::string chain = "IIF(1>0";
  while (chain.size() < 900) chain += "+2^L";
  EXPECT_EQ(FoundIn((chain + ",1,2)").c_str(), 2).code, 0);
  EXPECT_EQ(FoundIn((chain + "+ASIN(L)>0,1,2)").c_str(), 2).code, kHiddenNoNumber);
  const std::string deep = std::string(400, '(') + "ASIN(L)" + std::string(400, ')') + ">0";
  EXPECT_EQ(FoundIn(deep.c_str(), 2).code, kHiddenNoNumber);
}

TEST(HiddenNumbers, RowsInDoubtGoToTheTree) {
  const ExactName names[] = {{_T("L")}};
  const ExactFormula formula(_T("IIF(ASIN(L)>0,1,2)"), names);
  std::vector<double> column;
  for (int i = 0; i < 1000; ++i) column.push_back(i % 10 == 7 ? 3 : 0.5);
  const double* const columns[] = {column.data()};
  std::vector<double> results(column.size());
  std::vector<int> codes(column.size());
  ASSERT_TRUE(formula.EvaluateRows(columns, column.size(), results.data(), codes.data()));
  for (std::size_t i = 0; i < column.size(); ++i) {
    EXPECT_EQ(codes[i], column[i] > 1 ? kHiddenNoNumber : 0) << i;
    EXPECT_EQ(results[i], column[i] > 1 ? 2 : 1) << i;
  }
}

}  // namespace
}  // namespace lorv
