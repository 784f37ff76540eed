// How texts become trees: binding, rewriting, blanks, names, and where a broken text fails.

#include <cmath>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "tests/TEXPRESSCAL/formula_engines.h"

namespace lorv::test {
namespace {

template <class Engine>
class Parser : public testing::Test {};
TYPED_TEST_SUITE(Parser, BothEngines);

constexpr double kPlaceholder = 1000000;

TYPED_TEST(Parser, OperatorsBindByLevelAndToTheLeft) {
  const GoodFormula kTable[] = {
      {"1+2*3", 7},  {"(1+2)*3", 9}, {"2^3^2", 64},  {"-2^2", 4},      {"2*-3", -6},   {"2^-1", 0.5},
      {"10-4-3", 3}, {"24/4/3", 2},  {"2*3^2", 18},  {"8/2*4", 16},    {"2-3+4", 3},   {"1+1=2", 1},
      {"1=2-1", 1},  {"2+3>4", 1},   {"0-2^2", -4},  {"1 - -2^2", -3}, {"2^0!0", 2},   {"-0!0", 1},
      {"1!2!0", 1},  {"5!0*3", 3},   {"2=2=1", 0},   {"(2=2)=1", 1},   {"3-2>0.5", 1}, {"0!1", 0},
      {"0!0", 1},    {"7!0", 1},     {"(1>0)*5", 5}, {"(0>1)*5", 0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, JoinsShareOneLevel) {
  const GoodFormula kTable[] = {
      {"1 OR 1 AND 0", 0}, {"0 AND 0 OR 1", 1}, {"1||0&&0", 0},       {"1 OR (1 AND 0)", 1},
      {"5 AND 1", 0},      {"1 AND 1", 1},      {"0 OR 1", 1},        {"1 and 1", 1},
      {"0 or 0", 0},       {"1  AND  1", 1},    {"1=1 AND 2>1", 1},   {"1=1&&2<1", 0},
      {"1>2 OR 2>1", 1},   {"2 OR 0", 0},       {"1 AND 1 AND 1", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, EveryComparisonHasItsSpellings) {
  const GoodFormula kTable[] = {
      {"2>=2", 1}, {"2=>2", 1}, {"1>=2", 0},   {"1=>2", 0},  {"2<=2", 1}, {"2=<2", 1},
      {"3<=2", 0}, {"3=<2", 0}, {"1!=2", 1},   {"1<>2", 1},  {"2!=2", 0}, {"2<>2", 0},
      {"2==2", 1}, {"2=2", 1},  {"2==3", 0},   {"2=3", 0},   {"1<2", 1},  {"2<1", 0},
      {"2>1", 1},  {"1>2", 0},  {"1 <= 2", 1}, {"1 > 2", 0}, {"1 =2", 0}, {"1 != 2", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, ControlCharactersAreTheOperatorsTheyStandFor) {
  const GoodFormula kTable[] = {
      {"2\x04"
       "2",
       1},
      {"2\x05"
       "1",
       0},
      {"2\x06"
       "1",
       1},
      {"2\x07"
       "2",
       1},
      {"1\x08"
       "1",
       1},
      {"1\x08"
       "5",
       0},
      {"1\x09"
       "0",
       1},
      {"0\t0", 0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, ChainedComparisonWithLiteralMiddleBecomesTwo) {
  const GoodFormula kTable[] = {
      {"1<2<3", 1},
      {"3<2<5", 0},
      {"1000<5<=2000", 0},
      {"1000<1500<=2000", 1},
      {"3>2>1", 1},
      {"3>-2>1", 0},
      {"3>2=1", 0},
      {"1<2>0", 1},
      {"1<=2<=3", 1},
      {"1<=2<=1", 0},
      {"1=1=1", 1},
      {"5>=4>=3", 1},
      {"0.5<1.5<2.5", 1},
      {"1<2.5<2", 0},
      // Blanks make the middle no literal: evaluated from left to right.
      {"3> 2>1", 0},
      {"3>2 >1", 0},
      // Only the first of each operator is looked at.
      {"1<2<3<3", 1},
      // A middle in brackets is no literal.
      {"3>(2)>1", 0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, ChainOfNamesStaysAsItIs) {
  EXPECT_EQ(TypeParam::Evaluate(_T("1<X<3"), "X"), (Evaluated{-1, 0, 1, ",X"}));
  EXPECT_EQ(TypeParam::Evaluate(_T("3>X>1"), "X"), (Evaluated{-1, 0, 0, ",X"}));
  EXPECT_EQ(TypeParam::Evaluate(_T("1<2<X"), "X"), (Evaluated{-1, 0, 1, ",X"}));
  EXPECT_EQ(TypeParam::Evaluate(_T("2<1<X"), "X"), (Evaluated{-1, 0, 0, ",X"}));
}

TYPED_TEST(Parser, SignsStackAsDescribedAndNoFurther) {
  const GoodFormula kGood[] = {
      {"--3", 3},   {"-+3", -3}, {"---3", -3}, {"+3", 3},      {"1++1", 2},
      {"1--1", 2},  {"1-+1", 0}, {"+ 3", 3},   {"- 3", -3},    {"- - 3", 3},
      {"2^+1", 2},  {"2*+3", 6}, {"-(1)", -1}, {"--(1+1)", 2}, {"-PI", -3.1415926536},
      {"-|-2|", -2}};
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
  const BadFormula kBad[] = {{"+-3", 1}, {"++3", 1}, {"1+++1", 3}, {"-", 1}, {"+", 1}, {"1-+-1", 3}};
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
}

TYPED_TEST(Parser, FormulaMayNotBeginWithNot) {
  const BadFormula kBad[] = {{"!1", 0}, {"!", 0}, {"1!", 2}, {"1+!2", 2}, {"!=1", 0}, {"1!!0", 2}};
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
}

TYPED_TEST(Parser, NumbersRunOverDigitsAndPoints) {
  const GoodFormula kGood[] = {{"1.2.3", 1.2},
                               {"1.", 1},
                               {"1..2", 1},
                               {"12.50", 12.5},
                               {"007", 7},
                               {"0.1", 0.1},
                               {"1.2.3+1", 2.2},
                               {"1.+1", 2},
                               {"0.30000000000000004", 0.30000000000000004},
                               {"123456789012345678901234567890", 123456789012345678901234567890.0},
                               {"4503599627370497.5", 4503599627370497.5},
                               {"2.2250738585072011", 2.2250738585072011}};
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
  const BadFormula kBad[] = {{".5", 0}, {"1 2", 2}, {"1+.5", 2}, {".", 0}, {"1 .5", 2}};
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
}

TYPED_TEST(Parser, BlanksAreSkippedExceptBehindBars) {
  const GoodFormula kGood[] = {{" 1 + 2 ", 3},      {"( 1 ) + 2", 3},      {"'A' = 'A'", 1},
                               {"SIN (0)", 0},      {"SIN( 0 ) + 1", 1},   {"|-3|+1", 4},
                               {"| -3 |+1", 4},     {"2 ^ 2", 4},          {"|1|*|2|", 2},
                               {"MAX( 1 , 2 )", 2}, {" PI ", 3.1415926536}};
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
  // Only code 32 is a blank; a tab is the character that stands for OR.
  const BadFormula kBad[] = {{"|-3| +1", 4}, {"|1| ", 3}, {"(|1| )", 4},
                             {"1\n", 1},     {"\t1", 0},  {"1+\t2", 2}};
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
  EXPECT_EQ(TypeParam::Evaluate(CString::FromUtf8("1\xE3\x80\x80+1"), nullptr), (Evaluated{1, -1, 0, ""}));
}

TYPED_TEST(Parser, BrokenTextFailsWhereTheLevelStopped) {
  const BadFormula kBad[] = {
      {"1#2", 1},         {"1+", 2},      {"(1", 2},    {"(1)2", 3},    {"()", 1},     {")", 0},
      {"(1))", 3},        {"|1", 2},      {"|1|2", 3},  {"||1||", 0},   {"'a", 2},     {"'", 1},
      {"'A''B'", 3},      {"'A' 'B'", 4}, {"2@3", 1},   {"@", 0},       {"1,2", 1},    {",", 0},
      {"(1,2)", 2},       {"1=", 2},      {"=1", 0},    {"1*/2", 2},    {"((1)", 4},   {"1^", 2},
      {"^1", 0},          {"| |1| |", 5}, {"{1}", 0},   {"[1]", 0},     {"1;2", 1},    {"\"A\"", 0},
      {"1&1", 1},         {"a.b", 1},     {"1%", 1},    {"_A", 0},      {"2_A", 1},    {"   ", 3},
      {"1+(", 3},         {"1+(2", 4},    {"(1+2*", 5}, {"IIF(1,2", 7}, {"1<2<", 6},   {"1<=", 2},
      {"1>=1 AND 2#", 5}, {"1 AND ", 2},  {"1&&", 2},   {" OR ", 0},    {"1AND 1", 5}, {"1 AND1", 2},
      {"(1)AND(1)", 3},   {"1 | 1", 2},
  };
  for (const BadFormula& row : kBad) {
    if (std::string(row.formula) == "a.b") {
      EXPECT_EQ(TypeParam::Evaluate(_T("a.b"), "A,B"), (Evaluated{1, -1, 0, ",A"}));
      continue;
    }
    ExpectBad<TypeParam>(row);
  }
}

TYPED_TEST(Parser, TextHasNoEscapeAndIsUpperCased) {
  const GoodFormula kGood[] = {
      {"'abc'='ABC'", 1},
      {"'A'+'B'='AB'", 1},
      {"''=''", 1},
      {"''", 0},
      {"'a b'='A B'", 1},
      {"'a=b'='A=B'", 1},
      {"'('=')'", 0},
      {"FIND('砖墙','墙')", 2},
      {"'#@'='#@'", 1},
      {"FIND('a<=b','\x05')", 2},
      {"FIND('A AND B','\x08')", 2},
  };
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Parser, NamesWithoutResolver) {
  const GoodFormula kGood[] = {{"2PI", 3.1415926536},  {"2ABC", 2}, {"PI", 3.1415926536},
                               {"pi*2", 6.2831853072}, {"1E3", 1},  {"2SIN(0)", 0},
                               {"2ABC +1", 3},         {"2A_9", 2}, {"3X1+4Y", 7}};
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
  const BadFormula kBad[] = {{"ABC", 3},  {"PIX", 3},  {"1+A", 3}, {"A1_", 3},
                             {"2SIN", 4}, {"2A B", 3}, {"A +1", 1}};
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
}

struct ResolvedFormula {
  const char* formula;
  const char* names;
  Evaluated expected;
};

TYPED_TEST(Parser, NamesWithResolver) {
  const ResolvedFormula kTable[] = {
      {"A+B*A", "A,B", {-1, 0, kPlaceholder + kPlaceholder * kPlaceholder, ",A,B,A"}},
      {"a+b", "A,B", {-1, 0, 2 * kPlaceholder, ",A,B"}},
      {"2A", "A", {-1, 0, kPlaceholder, ",A"}},
      {"1E3", "E3", {-1, 0, kPlaceholder, ",E3"}},
      {"1E3", "", {3, -1, 0, "E3"}},
      {"A_1+A1", "A_1,A1", {-1, 0, 2 * kPlaceholder, ",A_1,A1"}},
      {"PI+A", "PI,A", {-1, 0, 3.1415926536 + kPlaceholder, ",A"}},
      {"SIN(A)*0", "A", {-1, 0, arithmetic::Sine(kPlaceholder) * 0, ",A"}},
      {"A", "", {1, -1, 0, "A"}},
      {"A +1", "", {1, -1, 0, "A"}},
      {"2ABC", "", {4, -1, 0, "ABC"}},
      {"B+A", "B", {3, -1, 0, "A"}},
      {"A+B+", "A,B", {4, -1, 0, ",A,B"}},
      {"SIN(X)", "A", {5, -1, 0, "X"}},
      {"SIN", "SIN", {3, -1, 0, ""}},
      {"A.B", "A,B,A.B", {1, -1, 0, ",A"}},
      {"墙", "墙", {0, -1, 0, ""}},
      {"A墙", "A墙,A", {1, -1, 0, ",A"}},
      {"A A", "A", {2, -1, 0, ",A"}},
      {"1+2", "A", {-1, 0, 3, ""}},
      {"A(1)", "A", {1, -1, 0, ",A"}},
  };
  for (const ResolvedFormula& row : kTable) {
    EXPECT_EQ(TypeParam::Evaluate(CString::FromUtf8(row.formula), row.names), row.expected) << row.formula;
  }
}

TYPED_TEST(Parser, CallsCheckTheirListsAsDescribed) {
  const GoodFormula kGood[] = {
      {"SIN()", 0, 10},
      {"SIN(,1)", 0, 10},
      {"SIN(1,1/0)", arithmetic::Sine(1.0)},
      {"IIF(,1,2)", 2, 10},
      {"MAX()", 0, 10},
      {"FIND(,'A')", 0, 10},
      {"LEN()", 0},
      {"COS()", 1, 10},
      {"MAX(,1)", 1, 10},
      {"ABS(-1,2,3,4)", 1},
      {"sin(0)", 0},
      {"Abs(-1)", 1},
      {"MAX(MIN(1,2),MAX(0,3))", 3},
  };
  for (const GoodFormula& row : kGood) ExpectGood<TypeParam>(row);
  const BadFormula kBad[] = {
      {"SIN", 3},      {"SIN 1", 4},        {"SIN(", 4},      {"SIN(1", 5},         {"SIN(1,)", 6},
      {"SIN(1 2)", 6}, {"IIF(1,2)", 8},     {"IIF()", 5},     {"IIF(1,2,3,4)", 12}, {"FIND('A')", 9},
      {"FIND()", 6},   {"FIND(1,2,3)", 11}, {"MAX(1,,2)", 6}, {"MAX(,)", 5},        {"SIN(X)", 5},
      {"SIN(1)2", 6},  {"SIN(+)", 5},       {"MAX(1;2)", 5},
  };
  for (const BadFormula& row : kBad) ExpectBad<TypeParam>(row);
}

// The rewriting changes at most a hundred of a kind; what is left is no operator.
TYPED_TEST(Parser, HundredAndFirstLongOperatorStays) {
  CString formula = _T("1");
  for (int i = 0; i < 100; ++i) formula += _T("&&1");
  EXPECT_EQ(TypeParam::Evaluate(formula, nullptr), (Evaluated{-1, 0, 1, ""}));
  formula += _T("&&1");
  EXPECT_EQ(TypeParam::Evaluate(formula, nullptr), (Evaluated{201, -1, 0, ""}));
  // A hundred "==" each, and the single "=" has its own hundred.
  CString equal = _T("1");
  for (int i = 0; i < 101; ++i) equal += _T("==1");
  EXPECT_EQ(TypeParam::Evaluate(equal, nullptr), (Evaluated{202, -1, 0, ""}));
}

TEST(ParserState, EmptyTextGivesZeroAndKeepsTheTree) {
  CExpression expression;
  double value = 1;
  EXPECT_EQ(expression.Value(value), -1);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(expression.ChangeExpression(_T("")), 0);
  EXPECT_EQ(expression.Value(value), -1);
  EXPECT_EQ(expression.ChangeExpression(_T("1+2")), -1);
  EXPECT_EQ(expression.ChangeExpression(_T("")), 0);
  EXPECT_EQ(expression.Value(value), 0);
  EXPECT_EQ(value, 3);
}

TEST(ParserState, NewTextReplacesTheTree) {
  CExpression expression;
  double value = 0;
  EXPECT_EQ(expression.ChangeExpression(_T("1+2")), -1);
  EXPECT_EQ(expression.ChangeExpression(_T("2*3")), -1);
  EXPECT_EQ(expression.Value(value), 0);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(expression.Value(value), 0);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(expression.ChangeExpression(_T("1+")), 2);
  EXPECT_EQ(expression.Value(value), -1);
  EXPECT_EQ(value, 0);
}

TEST(ParserState, ListOfNamesOutlivesAParseWithoutNames) {
  ListResolver resolver("A,B");
  CExpression expression;
  expression.m_pValidParameter = &resolver;
  EXPECT_EQ(expression.ChangeExpression(_T("A+B*A")), -1);
  EXPECT_EQ(Utf8(expression.m_szVarList), ",A,B,A");
  EXPECT_EQ(expression.ChangeExpression(_T("1+2")), -1);
  EXPECT_EQ(Utf8(expression.m_szVarList), ",A,B,A");
}

TEST(ParserState, CodeBelongsToTheLastValue) {
  CExpression expression;
  double value = 0;
  expression.ChangeExpression(_T("1/0"));
  EXPECT_EQ(expression.Value(value), 1);
  expression.ChangeExpression(_T("1"));
  EXPECT_EQ(expression.Value(value), 0);
}

TEST(ParserState, AssignmentGivesATreeOfItsOwn) {
  double value = 0;
  CExpression target;
  {
    CExpression source;
    source.ChangeExpression(_T("FIND('AB'+'C','C')"));
    target.ChangeExpression(_T("7"));
    target = source;
    EXPECT_EQ(source.Value(value), 0);
    EXPECT_EQ(value, 3);
  }
  EXPECT_EQ(target.Value(value), 0);
  EXPECT_EQ(value, 3);
  CExpression copy(target);
  EXPECT_EQ(target.ChangeExpression(_T("1")), -1);
  EXPECT_EQ(copy.Value(value), 0);
  EXPECT_EQ(value, 3);
}

TEST(ParserState, SelfAssignmentKeepsTheTree) {
  CExpression expression;
  expression.ChangeExpression(_T("'A'='A'"));
  CExpression& same = expression;
  expression = same;
  double value = 0;
  EXPECT_EQ(expression.Value(value), 0);
  EXPECT_EQ(value, 1);
}

}  // namespace
}  // namespace lorv::test
