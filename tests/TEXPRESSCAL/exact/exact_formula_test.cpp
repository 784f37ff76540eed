#include "TEXPRESSCAL/exact_formula.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "TEXPRESSCAL/express.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::vector<ExactName> Names(const std::map<std::string, double>& values) {
  std::vector<ExactName> names;
  for (const auto& [name, value] : values) names.push_back({CString::FromUtf8(name)});
  return names;
}

// The number, or not a number for a formula with a fault.
double Evaluated(const char* formula, const std::map<std::string, double>& values, int& code) {
  ExactFormula exact(CString::FromUtf8(formula), Names(values));
  std::vector<double> numbers;
  for (const auto& [name, value] : values) numbers.push_back(value);
  const double result = exact.Evaluate(numbers.data(), code);
  return exact.Fault().fault == FormulaFault::kNone ? result : std::nan("");
}

double Evaluated(const char* formula, const std::map<std::string, double>& values = {}) {
  int code = 0;
  return Evaluated(formula, values, code);
}

TEST(ExactFormula, HeaderExamples) {
  const ExactName names[] = {{_T("A")}, {_T("L")}};
  ExactFormula f(_T("A*L"), names);
  const double values[] = {0.0004, 1000};
  int code = -7;
  EXPECT_EQ(f.Evaluate(values, code), 0.4);
  EXPECT_EQ(code, 0);
  const double a[] = {0.0004};
  double r[1] = {};
  const ValueColumn columns[] = {{_T("A"), a}};
  EXPECT_TRUE(CalculateExactRows(_T("A*1000"), columns, 1, r, nullptr));
  EXPECT_EQ(r[0], 0.4);
}

TEST(ExactFormula, ValuesKeepAllTheirDigits) {
  EXPECT_EQ(Evaluated("W", {{"W", 0.334}}), 0.334);
  EXPECT_EQ(Evaluated("W*3", {{"W", 1.0 / 3}}), 1.0);
  EXPECT_EQ(Evaluated("A-0.0001", {{"A", 0.00010000001}}), 0.00010000001 - 0.0001);
  EXPECT_EQ(Evaluated("A", {{"A", 1e300}}), 1e300);
  EXPECT_EQ(Evaluated("A^2", {{"A", -3}}), 9);
  EXPECT_EQ(Evaluated("2-A", {{"A", -3}}), 5);
}

TEST(ExactFormula, NamesAreWholeWordsOfAnyLength) {
  EXPECT_EQ(Evaluated("墙长*墙", {{"墙", 2}, {"墙长", 5}}), 10);
  EXPECT_EQ(Evaluated("a_very_long_name_of_a_column_1-a_very_long_name_of_a_column_2",
                      {{"A_VERY_LONG_NAME_OF_A_COLUMN_1", 7}, {"a_very_long_name_of_a_column_2", 2}}),
            5);
  EXPECT_EQ(Evaluated("A+A+ABC+ABC", {{"A", 1}, {"ABC", 10}}), 22);
  EXPECT_EQ(Evaluated("2A", {{"A", 3}}), 6);
  EXPECT_EQ(Evaluated("FIND('A','A')*A", {{"A", 3}}), 3);
}

// A chain is taken apart over a value as over a literal.
TEST(ExactFormula, ChainsOfComparisonsHoldOverNames) {
  EXPECT_EQ(Evaluated("1000<H<=2000", {{"H", 1500}}), 1);
  EXPECT_EQ(Evaluated("1000<H<=2000", {{"H", 3000}}), 0);
  EXPECT_EQ(Evaluated("0<H-1<3", {{"H", 2}}), 1);
  EXPECT_EQ(Evaluated("0<5-H<3", {{"H", 4}}), 1);
  EXPECT_EQ(Evaluated("0<5-H<3", {{"H", 1}}), 0);
  EXPECT_EQ(Evaluated("0<5-H<3", {{"H", 6}}), 0);
  EXPECT_EQ(Evaluated("1<H-L-1<3", {{"H", 5}, {"L", 2}}), 1);
}

// Whatever numbers a formula holds, none of them is taken for a name's.
TEST(ExactFormula, LongNumbersOfTheFormulaStayNumbers) {
  EXPECT_EQ(Evaluated("100000000000000+A", {{"A", 1}}), 100000000000001);
  EXPECT_EQ(Evaluated("100000000000000+200000000000000+A", {{"A", 1}}), 300000000000001);
  EXPECT_EQ(Evaluated("0.700000000000000+A", {{"A", 1}}), 1.7);
}

TEST(ExactFormula, FaultsStandInTheFormulaAsTyped) {
  const struct {
    const char* formula;
    FormulaFault fault;
    int position;
    int length;
  } rows[] = {
      {"墙长*+Z", FormulaFault::kUnknownName, 4, 1},   {"L*墙高", FormulaFault::kUnknownName, 2, 2},
      {"(墙长+1", FormulaFault::kOpenBracket, 0, 1},   {"", FormulaFault::kUnfinished, 0, 0},
      {"墙长.5", FormulaFault::kStrayCharacter, 2, 1}, {"2.墙长", FormulaFault::kStrayCharacter, 1, 1},
      {"墙长 L", FormulaFault::kNoOperator, 3, 1},     {"-", FormulaFault::kUnfinished, 1, 0},
      {"墙长<=2 &&", FormulaFault::kUnfinished, 8, 0}};
  for (const auto& row : rows) {
    const ExactFormula exact(CString::FromUtf8(row.formula), Names({{"L", 1}, {"墙长", 1}}));
    EXPECT_EQ(exact.Fault().fault, row.fault) << row.formula;
    EXPECT_EQ(exact.Fault().position, row.position) << row.formula;
    EXPECT_EQ(exact.Fault().length, row.length) << row.formula;
    EXPECT_FALSE(exact.Fault().chinese.IsEmpty()) << row.formula;
  }
  ExactFormula none(_T("L+"), Names({{"L", 1}}));
  int code = 0;
  const double one = 1;
  EXPECT_EQ(none.Evaluate(&one, code), 0);
  EXPECT_EQ(code, ExactFormula::kNoFormula);
}

// Functions of other languages are answered by how they are written here.
TEST(ExactFormula, ForeignFunctionsAreAnswered) {
  const char* const rows[][2] = {{"ln(2)", "LOG"},
                                 {"IF(L,1,2)", "IIF"},
                                 {"sqr(2)", "SQRT"},
                                 {"pow(2,3)", "A^B"},
                                 {"log10(2)", "LOG(X)/LOG(10)"}};
  for (const auto& row : rows) {
    const ExactFormula exact(CString::FromUtf8(row[0]), Names({{"L", 1}}));
    EXPECT_EQ(exact.Fault().fault, FormulaFault::kUnknownName) << row[0];
    EXPECT_EQ(Utf8(exact.Fault().suggestion), row[1]) << row[0];
  }
}

TEST(ExactFormula, CodesAreExplainedAtTheirPlace) {
  ExactFormula exact(CString::FromUtf8("3/(墙长-L)+1"), Names({{"L", 1}, {"墙长", 1}}));
  int code = 0;
  const double equal[] = {0.0004, 0.0004}, different[] = {0.0003, 0.0004};
  exact.Evaluate(equal, code);
  EXPECT_EQ(code, 1);
  EXPECT_EQ(exact.Explain().fault, FormulaFault::kDivisionByZero);
  EXPECT_EQ(exact.Explain().position, 2);
  EXPECT_EQ(exact.Explain().length, 6);
  exact.Evaluate(different, code);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(exact.Explain().fault, FormulaFault::kNone);
  ExactFormula root(_T("1+SQRT(L)"), Names({{"L", 1}}));
  const double negative = -1;
  EXPECT_EQ(root.Evaluate(&negative, code), 1);
  EXPECT_EQ(code, 4);
  EXPECT_EQ(root.Explain().position, 2);
}

struct DoubtRow {
  const char* formula;
  FormulaFault doubt;
  int position;
  int length;
};

const DoubtRow kDoubtful[] = {{"1+ROUND(墙长,2)", FormulaFault::kSurplusArgument, 10, 2},
                              {"SIN(1,2,3)", FormulaFault::kSurplusArgument, 5, 4},
                              {"1+3.4.5", FormulaFault::kSecondPoint, 2, 5},
                              {"1+LEN(墙长)", FormulaFault::kLengthIsZero, 2, 7},
                              {"'a'+'b'", FormulaFault::kTextResult, 0, 7},
                              {"2*'abc'", FormulaFault::kTextAsNumber, 2, 5},
                              {"IIF(L>1,'a',2)", FormulaFault::kTextAsNumber, 8, 3},
                              {"L='a'", FormulaFault::kTextAsNumber, 2, 3},
                              {"5!3", FormulaFault::kDroppedOperand, 1, 1},
                              {"1+(墙长) ! L", FormulaFault::kDroppedOperand, 7, 1},
                              {"|L|!3", FormulaFault::kDroppedOperand, 3, 1},
                              {"L||墙长&&1", FormulaFault::kMixedJoins, 5, 2},
                              {"L>1 or (墙长=2) and 1", FormulaFault::kMixedJoins, 13, 5},
                              {"L&&1||墙长||0&&1", FormulaFault::kMixedJoins, 11, 2},
                              {"IIF(FIND('(','a')>0||L&&1,1,2)", FormulaFault::kMixedJoins, 22, 2},
                              {"1<L+1<5", FormulaFault::kComparedTruth, 5, 1},
                              {"2*((L)=(墙长)==(1))", FormulaFault::kComparedTruth, 11, 2},
                              {"L>=(2)!=1", FormulaFault::kComparedTruth, 6, 2},
                              {"1+2.5PI", FormulaFault::kDroppedFactor, 2, 3},
                              {"墙长*2sin(L)", FormulaFault::kDroppedFactor, 3, 1},
                              {"1+FIND(墙长,'a')", FormulaFault::kNumberSearched, 2, 12},
                              {"FIND('a',3)>0", FormulaFault::kNumberSearched, 0, 11},
                              {"FIND(IIF(L,'a','b'),'a')", FormulaFault::kNumberSearched, 0, 24}};

const char* const kUndoubted[] = {"MAX(1,2,3)",
                                  "FIND('ab','b')>0",
                                  "'a'='b'",
                                  "'a'+'b'='ab'",
                                  "3.4+.0",
                                  "IIF(L,1,2)",
                                  "ROUND(L*100)/100",
                                  "FIND('3.4.5','4')",
                                  "2L",
                                  "2墙长",
                                  "2*PI",
                                  "FIND('2PI','P')",
                                  "!L",
                                  "1+!L",
                                  "|!L|",
                                  "(!L)*2",
                                  "L&&1||墙长",
                                  "(L||墙长)&&1",
                                  "L&&(1||墙长)",
                                  "((L||1))&&(1)",
                                  "L||1||墙长",
                                  "L&&1&&墙长",
                                  "(1<L)=1",
                                  "1<L&&L<5",
                                  "1=(L<5)",
                                  "1<L<5",
                                  "1<=L<=墙长",
                                  "MAX(L||1,0)&&1",
                                  "(1<FIND(')','a'))<1"};

TEST(ExactFormula, DoubtsAreNamedWithTheirPlace) {
  for (const DoubtRow& row : kDoubtful) {
    const ExactFormula exact(CString::FromUtf8(row.formula), Names({{"L", 1}, {"墙长", 1}}));
    ASSERT_FALSE(exact.Doubts().empty()) << row.formula;
    EXPECT_EQ(exact.Doubts()[0].fault, row.doubt) << row.formula;
    EXPECT_EQ(exact.Doubts()[0].position, row.position) << row.formula;
    EXPECT_EQ(exact.Doubts()[0].length, row.length) << row.formula;
    EXPECT_FALSE(exact.Doubts()[0].stops);
  }
}

TEST(ExactFormula, WhatMeansWhatItSaysIsNotDoubted) {
  for (const char* formula : kUndoubted)
    EXPECT_TRUE(ExactFormula(CString::FromUtf8(formula), Names({{"L", 1}})).Doubts().empty()) << formula;
}

TEST(ExactFormula, NumbersBeyond32BitsAreDoubtful) {
  ExactFormula exact(_T("1+IIF(L>0,ROUND(L),0)"), Names({{"L", 1}}));
  int code = 0;
  for (const double fine : {1.0, 2147483646.0, -3e9}) {
    exact.Evaluate(&fine, code);
    EXPECT_EQ(code, 0) << fine;
  }
  const double huge = 3e9;
  EXPECT_EQ(exact.Evaluate(&huge, code), 1 - 2147483648.0);
  EXPECT_EQ(code, kDoubtfulNumber);
  EXPECT_EQ(exact.Explain().fault, FormulaFault::kBeyond32Bits);
  EXPECT_EQ(exact.Explain().position, 10);
  EXPECT_EQ(exact.Explain().length, 8);
  ExactFormula lowest(_T("FLOOR(L)"), Names({{"L", 1}}));
  const double end = -2147483647.5;
  EXPECT_EQ(lowest.Evaluate(&end, code), -2147483648.0);
  EXPECT_EQ(code, 0);
}

TEST(ExactFormula, TextsStandForWords) {
  const ExactName names[] = {{_T("CLMC"), true}, {_T("L")}};
  ExactFormula exact(CString::FromUtf8("IIF(FIND(CLMC,'砖>=1')>0,L,0)"), names);
  ASSERT_EQ(exact.Fault().fault, FormulaFault::kNone);
  const double values[] = {0, 2.5};
  int code = 0;
  exact.SetText(0, CString::FromUtf8("红砖>=1墙").View());
  EXPECT_EQ(exact.Evaluate(values, code), 2.5);
  exact.SetText(0, CString::FromUtf8("石").View());
  EXPECT_EQ(exact.Evaluate(values, code), 0);
  double result = 0;
  const double* columns[] = {values, values};
  EXPECT_FALSE(exact.EvaluateRows(columns, 1, &result, nullptr));
}

// Rows are a second way: every formula, value and error must come out as one by one.
TEST(ExactFormula, RowsGiveWhatOneByOneGives) {
  std::mt19937_64 random(11);
  const char* const formulas[] = {"L*B*H-2L",
                                  "IIF(L>B,SQRT(L-B),LOG(B))/(H-1)",
                                  "0<L<B && H>=1 || B=2",
                                  "MAX(L,B,H)^2+MIN(L,2)",
                                  "ROUND(L*1000)/1000+INT(B)+FLOOR(H)-CEIL(L*B)",
                                  "IIF(H>0,ROUND(L*4e9),1)",
                                  "|L-B|*SINA(H)",
                                  "3.5",
                                  "SIN()+L",
                                  "IIF(ASIN(L)>0,B,H)",
                                  "MAX(L^B,H)+1/EXP(L)",
                                  "ROUND(B^0.5)+IIF(L>0,CTG(H)>1,2)"};
  const auto value = [&]() -> double {
    switch (random() % 8) {
      case 0:
        return 0;
      case 1:
        return 1.0 / 3;
      case 2:
        return static_cast<double>(random() % 5);
      case 3:
        return -std::ldexp(1.0, static_cast<int>(random() % 70));
      case 4:
        return std::ldexp(1.0, static_cast<int>(random() % 70));
      case 5:
        return 2147483648.0 - static_cast<double>(random() % 3);
      default:
        return static_cast<double>(random() % 100000) / 10000 - 5;
    }
  };
  for (const char* formula : formulas) {
    for (const std::size_t rows : {0U, 1U, 7U, 8U, 255U, 256U, 257U, 1001U}) {
      std::vector<std::vector<double>> values(3, std::vector<double>(rows));
      for (auto& column : values) std::generate(column.begin(), column.end(), value);
      ExactFormula exact(CString::FromUtf8(formula), Names({{"L", 0}, {"B", 0}, {"H", 0}}));
      if (exact.Fault().fault != FormulaFault::kNone) continue;
      const double* const columns[] = {values[0].data(), values[1].data(), values[2].data()};
      std::vector<double> results(rows + 1, 77);
      std::vector<int> codes(rows + 1, 77);
      ASSERT_TRUE(exact.EvaluateRows(columns, rows, results.data(), codes.data())) << formula;
      for (std::size_t row = 0; row < rows; ++row) {
        const double one[] = {values[0][row], values[1][row], values[2][row]};
        int code = 0;
        const double alone = exact.Evaluate(one, code);
        EXPECT_TRUE(alone == results[row] || (std::isnan(alone) && std::isnan(results[row])))
            << formula << " row " << row << ": " << alone << " and " << results[row];
        EXPECT_EQ(code, codes[row]) << formula << " row " << row << " " << one[0] << " " << one[1] << " "
                                    << one[2];
      }
      EXPECT_EQ(results[rows], 77) << formula;
      EXPECT_EQ(codes[rows], 77) << formula;
    }
  }
}

// Where values have three decimals, are no thirds and names stand apart, both ways of putting them in agree.
TEST(ExactFormula, AgreesWithTheCalculatorOnShortValues) {
  std::mt19937 random(5);
  const char* const formulas[] = {"L*B-2*H", "IIF(L > B, L, H) / B", "MAX(L,B)*SINA(H)", "1 < L && B >= H",
                                  "( L+B )^2-|H-1|"};
  for (const char* formula : formulas) {
    for (int i = 0; i < 500; ++i) {
      std::map<std::string, double> values;
      for (const char* name : {"L", "B", "H"}) values[name] = static_cast<double>(random() % 90 + 1) / 8;
      CAdExpCalculate suite(CString::FromUtf8(formula));
      for (const auto& [name, value] : values) suite.SetVarValue(CString::FromUtf8(name), value, false);
      int error = 0, code = 0;
      const double expected = suite.Calculate(error);
      EXPECT_EQ(Evaluated(formula, values, code), expected) << formula;
      EXPECT_EQ(code, error) << formula;
    }
  }
}

}  // namespace
}  // namespace lorv
