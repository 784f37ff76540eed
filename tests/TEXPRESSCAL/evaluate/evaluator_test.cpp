// What a tree is worth: texts, tolerances, the exact 1 of the joins, and which error wins.

#include <cmath>
#include <limits>
#include <string>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "tests/TEXPRESSCAL/formula_engines.h"

namespace lorv::test {
namespace {

template <class Engine>
class Evaluator : public testing::Test {};
TYPED_TEST_SUITE(Evaluator, BothEngines);

TYPED_TEST(Evaluator, DivisionByZeroGivesAThousandTimesTheNegativeAndTheCode) {
  const GoodFormula kTable[] = {
      {"1/0", -1000, 1},       {"-1/0", 1000, 1},   {"0/0", -0.0, 1},
      {"1/(2-2)", -1000, 1},   {"2.5/0", -2500, 1}, {"1/0+1", -999, 1},
      {"1/-0", -1000, 1},      {"0/5", 0},          {"1/0.0000001", 1 / 0.0000001},
      {"(1/0)/0", 1000000, 1}, {"4/2/0", -2000, 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, LastErrorWins) {
  const GoodFormula kTable[] = {
      {"1/0+SQRT(-1)", -1000, 4},
      {"SQRT(-1)+1/0", -1000, 1},
      {"SQRT(-1)-LEN()", 0, 4},
      {"SQRT(-1)*(1/0)", -0.0, 1},
      // The divisor is evaluated first, then the zero is noted, then the dividend.
      {"SQRT(-1)/0", -0.0, 4},
      {"(1/0)/SQRT(-1)", 1000000, 1},
      {"SIN()/SQRT(-1)", -0.0, 10},
      {"2/SQRT(-1)", -2000, 1},
      {"SQRT(-1)/(1/0)", 0 / -1000.0, 4},
      // So is the exponent.
      {"(1/0)^SQRT(-1)", 1, 1},
      {"SQRT(-1)^(1+SIN())", 0, 4},
      {"SQRT(-1)<1/0", 0, 1},
      {"1/0<SQRT(-1)", 1, 4},
      {"SQRT(-1)=1/0", 0, 1},
      {"MAX(SQRT(-1),1/0)", 0, 1},
      {"MAX(1/0,SQRT(-1))", 0, 4},
      {"MIN(1/0,SQRT(-1),2)", -1000, 4},
      {"IIF(1/0,1,2)", 2, 1},
      {"IIF(1/0,1,SQRT(-1))", 0, 4},
      {"FIND(SQRT(-1),1/0)", 0, 1},
      {"SQRT(1/0)", 0, 4},
      {"LOG(SIN())", 0, 4},
      {"1 AND SQRT(-1)", 0, 4},
      {"SQRT(-1) OR 1/0", 0, 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, WhatIsNotWorkedRaisesNoError) {
  const GoodFormula kTable[] = {
      {"1 OR 1/0", 1},     {"0 AND 1/0", 0},  {"5 AND 1/0", 0},   {"IIF(0,1/0,2)", 2},
      {"IIF(1,3,1/0)", 3}, {"SQRT(-1)!0", 1}, {"SIN(0,1/0)", 0},  {"LEN(1/0)", 0},
      {"(1/0)!5", 0},      {"2 OR 1", 1},     {"2 OR 1/0", 0, 1}, {"1 AND 1/0", 0, 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, JoinsAskForExactlyOne) {
  const GoodFormula kTable[] = {
      {"5 AND 1", 0},
      {"1 AND 5", 0},
      {"5 OR 5", 0},
      {"0 OR 1", 1},
      {"0.5+0.5 AND 3-2", 1},
      {"-1 OR -1", 0},
      {"1.0000000001 AND 1", 0},
      {"'A' AND 1", 0},
      {"1 OR 'A'", 1},
      {"0.1*10 AND 1", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, ToleranceBelongsToLessAndGreaterAlone) {
  const GoodFormula kTable[] = {
      {"1=1.0000000001", 0},  {"1<1.0000000001", 0},  {"1.0000000001>1", 0},  {"1!=1.0000000001", 1},
      {"1>=1.0000000001", 0}, {"1<=1.0000000001", 1}, {"1.0000000001<=1", 0}, {"1<1.00000001", 1},
      {"1.00000001>1", 1},    {"0.1+0.2=0.3", 0},     {"0.1+0.2>0.3", 0},     {"0.1+0.2>=0.3", 1},
      {"0<0.000000001", 1},   {"0<0.0000000009", 0},  {"0<0.0000000011", 1},  {"0>-0.0000000011", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, TextsCompareWithoutCaseAndJoin) {
  const GoodFormula kTable[] = {
      {"'B'>'A'", 1},           {"'A'<'B'", 1},   {"'A'>='A'", 1},          {"'A'<='B'", 1},
      {"'A'!='B'", 1},          {"'A'<>'A'", 0},  {"'A'='B'", 0},           {"'A'=='A'", 1},
      {"'A'<'AA'", 1},          {"''<'A'", 1},    {"'_'<'A'", 1},           {"'墙'>'Z'", 1},
      {"'墙'='墙'", 1},         {"'墙'='板'", 0}, {"'A'+'B'+'C'='ABC'", 1}, {"'A'+('B'+'C')='abc'", 1},
      {"FIND('A'+'B','B')", 2}, {"'A'>'A'", 0},   {"'9'<'A'", 1},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, TextCountsZeroAsANumber) {
  const GoodFormula kTable[] = {
      {"'A'", 0},         {"'A'+1", 1},         {"1+'A'", 1},        {"'A'*2", 0},
      {"'A'-1", -1},      {"1/'A'", -1000, 1},  {"-'A'", -0.0},      {"|'A'|", 0},
      {"'A'=0", 1},       {"'A'<1", 1},         {"0>='A'", 1},       {"SQRT('A')", 0},
      {"LOG('A')", 0, 4}, {"MAX('A',-1)", 0},   {"IIF('A',1,2)", 2}, {"IIF(1,'A','B')", 0},
      {"'A'^0", 1},       {"1!'A'", 1},         {"'7'+1", 1},        {"FIND(IIF(1,'AB',0),'B')", 0},
      {"'A'+'B'+1", 1},   {"-('A'+'B')", -0.0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

using arithmetic::Power;

TYPED_TEST(Evaluator, BarsSignsAndPowers) {
  const GoodFormula kTable[] = {
      {"|-3|+1", 4},
      {"|2-5|*|1-3|", 6},
      {"-0", -0.0},
      {"0*-1", -0.0},
      {"2^0.5", Power(2.0, 0.5)},
      {"10^-2=0.01", 1},
      {"10^-2-0.01", 0},
      {"0.3^3=0.027", 0},
      {"0.3^3", 0.026999999999999996},
      {"1.1^10", 2.5937424601000023},
      {"0^0", 1},
      {"0-0", 0},
      {"|0*-1|", 0},
      {"10^-2", Power(10.0, -2.0)},
      {"-8^3", -512},
      {"1.1^2", Power(1.1, 2.0)},
      {"(1-3)^3", -8},
      {"4^1.5", Power(4.0, 1.5)},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

TYPED_TEST(Evaluator, WhatArithmeticMakesOfInfinityIsNoError) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::string huge(400, '9');
  const std::string difference = huge + "-" + huge;
  const std::string nan_less = "(" + difference + ")<1";
  const std::string nan_differs = "(" + difference + ")!=(" + difference + ")";
  const std::string nan_root = "SQRT(" + difference + ")";
  const std::string nan_whole = "INT(" + difference + ")";
  // The bits of a NaN are the processor's; what it does in comparisons and functions is ours.
  const GoodFormula kTable[] = {
      {huge.c_str(), kInfinity},
      {"EXP(1000)", kInfinity},
      {"10^400", kInfinity},
      {nan_less.c_str(), 0},
      {nan_differs.c_str(), 1},
      {nan_root.c_str(), 0, 4},
      {nan_whole.c_str(), -2147483648.0},
  };
  for (const GoodFormula& row : kTable) ExpectGood<TypeParam>(row);
}

}  // namespace
}  // namespace lorv::test
