// The built-in functions and their table.

#include <cmath>
#include <string>
#include <vector>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "tests/TEXPRESSCAL/formula_engines.h"

namespace lorv::test {
namespace {

template <class Engine>
class Functions : public testing::Test {};
TYPED_TEST_SUITE(Functions, BothEngines);

constexpr double kPi = 3.1415926536;

TYPED_TEST(Functions, AnglesInRadians) {
  const GoodFormula kTable[] = {
      {"SIN(1.5)", arithmetic::Sine(1.5)},        {"COS(1.5)", arithmetic::Cosine(1.5)},
      {"TG(1.5)", arithmetic::Tangent(1.5)},      {"TAN(1.5)", arithmetic::Tangent(1.5)},
      {"CTG(1.5)", 1 / arithmetic::Tangent(1.5)}, {"ASIN(0.5)", arithmetic::ArcSine(0.5)},
      {"ACOS(0.5)", arithmetic::ArcCosine(0.5)},  {"ATG(0.5)", arithmetic::ArcTangent(0.5)},
      {"ATAN(0.5)", arithmetic::ArcTangent(0.5)}, {"SIN(30/180*PI)", arithmetic::Sine(30.0 / 180 * kPi)},
      {"CTG(0)", 1 / arithmetic::Tangent(0.0)},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, AnglesInDegreesUseTheShortConstant) {
  const GoodFormula kTable[] = {
      {"SINA(30)", arithmetic::Sine((30.0 / 180) * kPi)},
      {"COSA(60)", arithmetic::Cosine((60.0 / 180) * kPi)},
      {"TANA(45)", arithmetic::Tangent((45.0 / 180) * kPi)},
      {"CTGA(45)", 1 / arithmetic::Tangent((45.0 / 180) * kPi)},
      {"DTOR(180)", kPi},
      {"DTOR(7)", (7.0 / 180) * kPi},
      {"RTOD(1)", 180 / kPi},
      {"RTOD(0.1)", (0.1 * 180) / kPi},
      {"SINA(7.3)", arithmetic::Sine((7.3 / 180) * kPi)},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
  EXPECT_NEAR(TypeParam::Evaluate(_T("SINA(30)"), nullptr).value, 0.50000000000147, 1e-14);
  EXPECT_NEAR(TypeParam::Evaluate(_T("SIN(30/180*PI)"), nullptr).value, 0.50000000000147, 1e-14);
}

TYPED_TEST(Functions, InverseFunctionsOutsideTheirRangeReportNothing) {
  for (const char* formula : {"ASIN(2)", "ACOS(-1.5)"}) {
    const Evaluated evaluated = TypeParam::Evaluate(CString::FromUtf8(formula), nullptr);
    EXPECT_EQ(evaluated.changed, -1) << formula;
    EXPECT_EQ(evaluated.code, 0) << formula;
    EXPECT_TRUE(std::isnan(evaluated.value)) << formula;
  }
}

TYPED_TEST(Functions, RootAndLogarithmKnowTheirDomain) {
  const GoodFormula kTable[] = {
      {"SQRT(-1)", 0, 4},
      {"SQRT(0)", 0},
      {"SQRT(2)", std::sqrt(2.0)},
      {"LOG(0)", 0, 4},
      {"LOG(-1)", 0, 4},
      {"LOG(10)", arithmetic::Logarithm(10.0)},
      {"EXP(1)", arithmetic::Exponential(1.0)},
      {"LOG(EXP(1))", arithmetic::Logarithm(arithmetic::Exponential(1.0))},
      {"SQRT(-0)", -0.0},
      {"EXP(0)", 1},
      {"SQRT(-0.0000001)", 0, 4},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, RoundingCarriesItsNudges) {
  const GoodFormula kTable[] = {
      {"FLOOR(-0.5)", -1},
      {"CEIL(-0.5)", 0},
      {"INT(-0.5)", 0},
      {"ROUND(-0.5)", -1},
      {"ROUND(0.5)", 1},
      {"ROUND(2.4)", 2},
      {"ROUND(-2.4)", -2},
      {"ROUND(-2.5)", -3},
      {"INT(2.9)", 2},
      {"INT(-2.9)", -2},
      {"FLOOR(2.9999999999999)", 3},
      {"CEIL(3.0000000000001)", 3},
      {"FLOOR(2.999999999)", 2},
      {"CEIL(3.000000001)", 4},
      {"FLOOR(2)", 2},
      {"CEIL(2)", 2},
      {"FLOOR(2.7)", 2},
      {"CEIL(2.1)", 3},
      {"INT(2.9999999999999)", 2},
      {"ROUND(0.4999999999999999)", 1},
      {"ROUND(0.499999999999)", 0},
      {"ROUND(0)", 0},
      {"FLOOR(-0.00000000001)", 0},
      {"CEIL(0.00000000001)", 0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, WholeNumbersBeyond32BitsAreTheSmallestOne) {
  constexpr double kEnd = -2147483648.0;
  const GoodFormula kTable[] = {
      {"FLOOR(3000000000)", kEnd},       {"CEIL(3000000000)", kEnd}, {"ROUND(3000000000)", kEnd},
      {"INT(3000000000)", kEnd},         {"INT(-3000000000)", kEnd}, {"INT(2147483647)", 2147483647},
      {"INT(2147483647.9)", 2147483647}, {"INT(2147483648)", kEnd},  {"INT(-2147483648.9)", kEnd},
      {"ROUND(2147483647.5)", kEnd},     {"FLOOR(EXP(1000))", kEnd}, {"CEIL(2147483646.5)", 2147483647},
      {"CEIL(2147483647.5)", kEnd},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, LargestAndSmallest) {
  const GoodFormula kTable[] = {
      {"MAX(1,5,3)", 5},     {"MIN(4,2,9)", 2},   {"MAX(2)", 2},    {"MIN(2)", 2},
      {"MAX(7)", 7},         {"MAX(-1,-5)", -1},  {"MIN(1,1)", 1},  {"MAX(0,-0)", -0.0},
      {"MAX(-0,0)", 0},      {"MIN(0,-0)", -0.0}, {"MIN(-0,0)", 0}, {"MAX(1,2,3,4,5,6,7,8,9,10)", 10},
      {"MIN(5,4,3,2,1)", 1}, {"MAX(1<2,0)", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

// A comparison with what is no number fails, so its place in the list decides.
TYPED_TEST(Functions, NoNumberInAListCountsByItsPlace) {
  const std::string nan = "(EXP(1000)-EXP(1000))";
  for (const auto& [formula, expected] :
       std::vector<std::pair<std::string, double>>{{"MAX(" + nan + ",1)", 1},
                                                   {"MIN(1," + nan + ",2)", 1},
                                                   {"MIN(3," + nan + ",2)", 3},
                                                   {"MAX(" + nan + ",3,2)", 3}}) {
    EXPECT_EQ(TypeParam::Evaluate(CString::FromUtf8(formula), nullptr).value, expected) << formula;
  }
  EXPECT_TRUE(std::isnan(TypeParam::Evaluate(CString::FromUtf8("MAX(1," + nan + ")"), nullptr).value));
  EXPECT_TRUE(std::isnan(TypeParam::Evaluate(CString::FromUtf8("MIN(" + nan + ",1)"), nullptr).value));
}

TYPED_TEST(Functions, ChoiceAsksForMoreThanZero) {
  const GoodFormula kTable[] = {
      {"IIF(0,1,2)", 2},          {"IIF(-1,1,2)", 2},      {"IIF(0.5,1,2)", 1},
      {"IIF(1,1,2)", 1},          {"IIF(2>1,10,20)", 10},  {"IIF(0.0000000000001,1,2)", 1},
      {"IIF(1,IIF(0,1,2),3)", 2}, {"IIF(1,'A','B')+1", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, LengthIsAlwaysZero) {
  const GoodFormula kTable[] = {
      {"LEN('ABC')", 0}, {"LEN(123)", 0}, {"LEN()", 0}, {"LEN('')", 0}, {"LEN(1/0)+1", 1}};
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, FindGivesThePlaceFromOne) {
  const GoodFormula kTable[] = {
      {"FIND('ABCD','CD')", 3},    {"FIND('ABCD','X')", 0},  {"FIND('ab','B')", 2},
      {"FIND(1,'A')", 0},          {"FIND('A',1)", 0},       {"FIND(1,2)", 0},
      {"FIND('ABC','')", 1},       {"FIND('','')", 1},       {"FIND('','A')", 0},
      {"FIND('砖墙240','墙')", 2}, {"FIND('AAB','AB')", 2},  {"find('clmc','MC')>0", 1},
      {"FIND('A','AB')", 0},       {"FIND('ABAB','AB')", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Functions, AbsoluteValue) {
  const GoodFormula kTable[] = {
      {"ABS(-1)", 1}, {"abs(-1)", 1}, {"ABS(2)", 2}, {"ABS(-0)", 0}, {"aBs(1-4)", 3}};
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

struct Row {
  int code;
  const char* name;
  const char* description;
};

TEST(FunctionTable, HoldsEveryFunctionInOrderOfName) {
  const Row kRows[] = {
      {169, "ABS", "取绝对值"},
      {158, "ACOS", "反余弦函数(返回弧度)"},
      {157, "ASIN", "反正弦函数(返回弧度)"},
      {173, "ATAN", "反正切函数(返回弧度)"},
      {159, "ATG", "反正切函数(返回弧度)"},
      {164, "CEIL", "向上取整"},
      {151, "COS", "余弦函数(弧度参数)"},
      {175, "COSA", "余弦函数(角度参数)"},
      {156, "CTG", "余切函数(弧度参数)"},
      {177, "CTGA", "余切函数(角度参数)"},
      {170, "DTOR", "将角度转换为弧度"},
      {152, "EXP", "指数函数,如:EXP(1)=2.71828"},
      {178, "FIND",
       "字符串查找,找到第二字符串的位置,为0是没有找到,如:find(CLMC,'砖')>0,如果CLMC中包含有‘砖’,"
       "则返回'真',否则返回'假'"},
      {161, "FLOOR", "向下取整"},
      {166, "IIF", "双if条件语句,如:iif(X=1,1,0),如果X=1,则返回值为1,否则为0"},
      {168, "INT", "向下取整"},
      {167, "LEN", "求字符长度"},
      {154, "LOG", "对数函数"},
      {162, "MAX", "取大值"},
      {163, "MIN", "取小值"},
      {165, "ROUND", "四舍五入"},
      {171, "RTOD", "将弧度转换为度"},
      {150, "SIN", "正弦函数(弧度参数),如:sin(30/180*PI)表示sin30度"},
      {174, "SINA", "正弦函数(角度参数)"},
      {153, "SQRT", "平方根函数"},
      {172, "TAN", "正切函数(弧度参数)"},
      {176, "TANA", "正切函数(角度参数)"},
      {155, "TG", "正切函数(弧度参数)"},
  };
  const CExpression expression;
  const CExpression::FunctionArray& table = expression.GetFuncDta();
  ASSERT_EQ(table.size(), std::size(kRows));
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(table[i].nCode, kRows[i].code);
    EXPECT_EQ(Utf8(table[i].pszName), kRows[i].name);
    EXPECT_EQ(Utf8(table[i].pszDesc), kRows[i].description);
    EXPECT_TRUE(reference::IsFunctionName(reference::Text(CString(table[i].pszName).View())));
  }
}

TEST(FunctionTable, IsFoundByNameInAnyCaseAndSharedByAll) {
  const CExpression one;
  const CExpression two;
  EXPECT_EQ(&one.GetFuncDta(), &two.GetFuncDta());
  CExpression::FunctionArray& table = const_cast<CExpression::FunctionArray&>(one.GetFuncDta());
  EXPECT_EQ(table[static_cast<std::size_t>(table.FindKey(_T("sqrt")))].nCode, 153);
  EXPECT_EQ(table.FindKey(_T("SQRTX")), -1);
  EXPECT_EQ(table.FindKey(_T("")), -1);
  EXPECT_EQ(table.FindKey(_T("A")), -1);
  EXPECT_EQ(table.FindKey(_T("TH")), -1);
}

}  // namespace
}  // namespace lorv::test
