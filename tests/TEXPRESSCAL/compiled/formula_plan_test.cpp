// A formula set again with other values is evaluated by a plan. The reference is a calculator that has never
// seen the formula: it writes the values into the text and parses that.

#include "TEXPRESSCAL/compiled/formula_plan.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "TEXPRESSCAL/express.h"
#include "TEXPRESSCAL/values/substitution.h"
#include "framework/text/char_class.h"
#include "framework/text/number_text.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"
#include "tests/support/same_bits.h"

namespace lorv::test {
namespace {

constexpr int kPlanShare = CheckedShare(10);

using NamedValues = std::vector<std::pair<Text, double>>;

struct PlanOutcome {
  double value = 0;
  int error = 0;
  std::string with_values;

  bool operator==(const PlanOutcome& other) const {
    return SameBits(value, other.value) && error == other.error && with_values == other.with_values;
  }
};

void PrintTo(const PlanOutcome& outcome, std::ostream* out) {
  *out << outcome.value << ", error " << outcome.error << ", evaluated as " << outcome.with_values;
}

PlanOutcome EvaluatedBy(CAdExpCalculate& calculator, const Text& formula, const NamedValues& values) {
  calculator.SetExpr(formula.c_str());
  for (const auto& [name, value] : values) calculator.SetVarValue(name.c_str(), value, false);
  PlanOutcome outcome;
  outcome.value = calculator.Calculate(outcome.error);
  outcome.with_values = Utf8(calculator.GetCalcedExpr());
  return outcome;
}

PlanOutcome EvaluatedAfresh(const Text& formula, const NamedValues& values) {
  CAdExpCalculate calculator;
  return EvaluatedBy(calculator, formula, values);
}

CMapValue MapOf(const NamedValues& values) {
  CMapValue map;
  for (const auto& [name, value] : values) map[name.c_str()] = value;
  return map;
}

Text Capitals(Text text) {
  for (TCHAR& unit : text) unit = ToUpper(unit);
  return text;
}

bool HasPlan(const Text& formula, const NamedValues& values) {
  FormulaPlan plan;
  return plan.Make(Capitals(formula), MapOf(values));
}

// Evaluates the plan itself, not by way of a calculator that may choose to evaluate the text.
bool FitsPlan(const Text& formula, const NamedValues& values) {
  FormulaPlan plan;
  double value = 0;
  int error = 0;
  const CMapValue map = MapOf(values);
  return plan.Make(Capitals(formula), map) && plan.Evaluate(map, value, error);
}

const NamedValues kBeam = {
    {_T("L"), 5.4}, {_T("B"), 0.25}, {_T("H"), 3.15}, {_T("LN"), 6.6}, {_T("WALL"), 2.125}};

TEST(FormulaPlan, IsMadeForWhatEstimatorsType) {
  for (const TCHAR* formula :
       {_T("L*B*H"), _T("2*(B+H)*L"), _T("IIF(H>3.6,L*B*H*1.2,L*B*H)-WALL*LN"),
        _T("MAX(B,MIN(H,L))*L+ABS(B-H)"), _T("ROUND((L-2*B)/H+1)*(B-2*B)*0.617"), _T("SQRT((L-B)*(L-B)+H*H)"),
        _T("2L+3H"), _T("-B^2"), _T("L-B-H/2"), _T("(H>1)&&(L<6)||(B=0.25)"), _T("H>=1 AND L<=6 OR B<>2"),
        _T("|B-H|"), _T("SIN(PI/6)*L"), _T("L/B/H^2"), _T("1!L"), _T("LEN('A')+L"),
        _T("MAX(1,2,L,B,H)-MIN(L,B,3)"), _T("l*b"), _T("1+2*3")}) {
    EXPECT_TRUE(FitsPlan(formula, kBeam)) << Shown(formula);
  }
}

TEST(FormulaPlan, IsRefusedWhereAValueCanChangeWhatTheTextMeans) {
  for (const TCHAR* formula : {
           _T("5"),            // read at once
           _T("'L'"),          // inside quotes
           _T("FIND('L',B)"),  // texts
           _T("1.L"),          // the value's digits would join those before
           _T("L.5"),
           _T("L B"),      // two values side by side
           _T("L("),       // no formula
           _T("L+X"),      // a name without a value
           _T("1<L<3"),    // the value is written twice
           _T("L*"),       // a missing operand
           _T("SIN()+L"),  // the evaluator reports it
           _T(""),
       }) {
    EXPECT_FALSE(HasPlan(formula, kBeam)) << Shown(formula);
  }
}

TEST(FormulaPlan, IsRefusedForNamesThatAValueCanBeTakenFor) {
  EXPECT_TRUE(HasPlan(_T("墙*高"), {{_T("墙"), 2}, {_T("高"), 3}}));
  EXPECT_TRUE(HasPlan(_T("A墙"), {{_T("A"), 2}, {_T("墙"), 3}}));
  EXPECT_FALSE(HasPlan(_T("A*2"), {{_T("A"), 2}, {_T("2"), 3}}));
  EXPECT_FALSE(HasPlan(_T("A*2"), {{_T("A"), 2}, {_T("A-"), 3}}));
  EXPECT_FALSE(HasPlan(_T("墙A"), {{_T("A"), 1}, {_T("墙1"), 3}}));
}

struct Fit {
  const TCHAR* formula;
  double value;
  bool fits;
};

TEST(FormulaPlan, TakesTheValuesWhoseTextsCannotMatter) {
  const Fit kFits[] = {
      {_T("W+1"), 1, true},
      {_T("W+1"), -1, true},
      {_T("W+1"), -0.0, true},
      {_T("W+1"), 0.0001, true},
      {_T("W+1"), 0.3333, false},
      {_T("W+1"), 0.667, false},
      {_T("W+1"), 0.335, true},
      {_T("W+1"), 0.3355, false},  // between two thousandths
      {_T("W+1"), 1e12, false},
      {_T("W+1"), std::numeric_limits<double>::infinity(), false},
      {_T("W+1"), std::numeric_limits<double>::quiet_NaN(), false},
      {_T("1*+W"), 1, true},
      {_T("1*+W"), -1, false},
      {_T("1+W"), -1, true},
      {_T("1+-W"), -1, true},
  };
  for (const Fit& fit : kFits) {
    EXPECT_EQ(FitsPlan(fit.formula, {{_T("W"), fit.value}}), fit.fits)
        << Shown(fit.formula) << ' ' << fit.value;
  }
}

bool FitsPlanOfThirds(const Text& formula, const NamedValues& values) {
  FormulaPlan plan;
  double value = 0;
  int error = 0;
  const CMapValue map = MapOf(values);
  return plan.Make(Capitals(formula), map, FormulaPlan::Thirds::kFit) && plan.Evaluate(map, value, error);
}

TEST(FormulaPlan, TakesThirdsWhereTheirDivisorBindsToNothingElse) {
  const NamedValues values = {{_T("A"), 0.3333}, {_T("B"), 0.667}, {_T("H"), 2.5}};
  for (const TCHAR* formula : {_T("A"), _T("A*B/H"), _T("H/A/B"), _T("2^A"), _T("-A-B"), _T("IIF(A>B,A,B)*H"),
                               _T("MAX(A,B)"), _T("|A-B|"), _T("2A"), _T("H^2*A"), _T("A=B&&H>2")}) {
    EXPECT_TRUE(FitsPlanOfThirds(formula, values)) << Shown(formula);
    CAdExpCalculate calculator;
    for (int i = 0; i < 4; ++i)
      EXPECT_EQ(EvaluatedBy(calculator, formula, values), EvaluatedAfresh(formula, values)) << Shown(formula);
  }
  // "1/3^2" is a ninth, where "0.5^2" squares the half.
  EXPECT_FALSE(FitsPlanOfThirds(_T("A^2"), values));
  EXPECT_FALSE(FitsPlanOfThirds(_T("H*B ^H"), values));
  EXPECT_FALSE(FitsPlanOfThirds(_T("A+A^2"), values));
  // The text of a third has three units.
  EXPECT_TRUE(FitsPlanOfThirds(_T("ABCD*ABCD"), {{_T("ABCD"), 0.3333}}));
  EXPECT_FALSE(FitsPlanOfThirds(_T("ABCDE*ABCDE"), {{_T("ABCDE"), 0.3333}}));
}

TEST(FormulaPlan, LeavesAShortValueWhoseNextHitIsMissed) {
  EXPECT_TRUE(FitsPlan(_T("GJL*GJL"), {{_T("GJL"), 12}}));
  EXPECT_FALSE(FitsPlan(_T("GJL*GJL"), {{_T("GJL"), 8}}));
  EXPECT_TRUE(FitsPlan(_T("GJL*2*GJL"), {{_T("GJL"), 8}}));
  // What lies between may be short as well.
  EXPECT_FALSE(FitsPlan(_T("GJLWW*AAA*GJLWW"), {{_T("GJLWW"), 8}, {_T("AAA"), 12}, {_T("B"), 1}}));
  EXPECT_TRUE(FitsPlan(_T("GJLWW*AAA*GJLWW"), {{_T("GJLWW"), 12}, {_T("AAA"), 12}, {_T("B"), 1}}));
}

TEST(FormulaPlan, KeepsTheLastErrorOfTheTree) {
  const NamedValues values = {{_T("A"), 0}, {_T("B"), -1}};
  for (const TCHAR* formula : {_T("1/A"),
                               _T("1/A+SQRT(B)"),
                               _T("SQRT(B)/A"),
                               _T("SQRT(B)/(A*2)"),
                               _T("LOG(A)/(1/A)"),
                               _T("(1/A)^SQRT(B)"),
                               _T("SQRT(B)^(1/A)"),
                               _T("IIF(A,1/A,2)"),
                               _T("IIF(1,1/A,2)"),
                               _T("A&&(1/A)"),
                               _T("1&&(1/A)"),
                               _T("1||(1/A)"),
                               _T("MAX(1/A,SQRT(B))"),
                               _T("MAX(SQRT(B),1/A)"),
                               _T("(1/A)/SQRT(B)"),
                               _T("A/A/A"),
                               _T("2!(1/A)"),
                               _T("(1/A)!2"),
                               _T("LEN(1/A)"),
                               _T("SIN(1,1/A)")}) {
    EXPECT_TRUE(FitsPlan(formula, values)) << Shown(formula);
    CAdExpCalculate calculator;
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(EvaluatedBy(calculator, formula, values), EvaluatedAfresh(formula, values)) << Shown(formula);
  }
}

TEST(FormulaPlan, IsLeftWhenNamesComeOrGo) {
  CAdExpCalculate calculator;
  for (int i = 0; i < 3; ++i) EvaluatedBy(calculator, _T("A+AB"), {{_T("A"), 1}, {_T("AB"), 2}});
  EXPECT_EQ(EvaluatedBy(calculator, _T("A+AB"), {{_T("+"), 7}}),
            EvaluatedAfresh(_T("A+AB"), {{_T("A"), 1}, {_T("AB"), 2}, {_T("+"), 7}}));
  calculator.ClearAllValue();
  EXPECT_EQ(EvaluatedBy(calculator, _T("A+AB"), {{_T("A"), 5}}).value, 5);  // AB is a keyword still
  CMapValue own;
  own[_T("B")] = 3;
  calculator.SetVarValue(&own);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(EvaluatedBy(calculator, _T("B*2"), {}).value, 6 + 2 * i);
    own[_T("B")] += 1;
  }
}

TEST(FormulaPlan, IsLeftWhenTheFormulaChanges) {
  CAdExpCalculate calculator;
  const NamedValues values = {{_T("A"), 2}, {_T("B"), 0.3333}};
  const TCHAR* const formulas[] = {_T("A*3"), _T("A+30"), _T("A*B"), _T("a*3"), _T("7"), _T("A+"), _T("")};
  ChoiceSource source(8);
  for (int i = 0; i < 2000; ++i) {
    const TCHAR* formula = source.From(formulas);
    for (std::size_t times = 1 + source.Below(4); times > 0; --times)
      EXPECT_EQ(EvaluatedBy(calculator, formula, values), EvaluatedAfresh(formula, values)) << Shown(formula);
  }
}

TEST(FormulaPlan, IsKeptWhenTheSameNamesAreSetAfresh) {
  CAdExpCalculate calculator;
  for (int i = 0; i < 5; ++i) {
    calculator.ClearAllValue();
    EXPECT_EQ(EvaluatedBy(calculator, _T("A*B"), {{_T("A"), i}, {_T("B"), 2}}).value, 2 * i);
  }
}

// The same text goes on being evaluated as it stands, values in it.
TEST(FormulaPlan, LeavesTheWorkingTextAsTheTextWouldBe) {
  CAdExpCalculate calculator;
  calculator.SetVarValue(_T("ABC:1"));
  for (int i = 0; i < 4; ++i) {
    calculator.SetExpr(_T("2*ABC+1"));
    calculator.SetVarValue(_T("ABC"), i + 0.25, false);
    EXPECT_EQ(calculator.Calculate(), 2 * (i + 0.25) + 1);
    calculator.SetVarValue(_T("ABC"), 100, false);
    EXPECT_EQ(calculator.Calculate(), 2 * (i + 0.25) + 1);  // new values take effect with SetExpr only
    EXPECT_EQ(Utf8(calculator.GetCalcedExpr()), "2*" + std::to_string(i) + ".25+1");
  }
  const CAdExpCalculate copy(calculator);
  EXPECT_EQ(Utf8(copy.GetCalcedExpr()), "2*3.25+1");
}

TEST(FormulaPlan, ReadsEveryValueAsItsText) {
  ChoiceSource source(77);
  int plain = 0;
  for (int i = 0; i < 2000000 / kPlanShare; ++i) {
    const double value =
        source.OneIn(2) ? MakeValue(source) : static_cast<double>(source.Below(1000000)) / 7777;
    double reading = 0;
    if (!ReadsPlainly(value, reading)) continue;
    ++plain;
    const ValueText text(value);
    const bool negative = text.Plain().front() == '-';
    const double magnitude = ReadReal(text.Plain().substr(negative ? 1 : 0));
    const double expected = negative ? -magnitude : magnitude;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(reading), std::bit_cast<std::uint64_t>(expected)) << value;
  }
  EXPECT_GT(plain, 1000000 / kPlanShare);
}

// Mostly values that fit a plan, so that plans are used and not only left.
double TypicalValue(ChoiceSource& source) {
  if (source.OneIn(12)) return MakeValue(source);
  if (source.OneIn(3)) return static_cast<double>(source.Below(12)) - 3;
  return static_cast<double>(source.Below(40000)) / 1000 - 8;
}

// One formula, the same names, six rounds of values: how many rounds could be evaluated by a plan.
int ExpectSameInAllRounds(ChoiceSource& source) {
  const Text formula =
      source.OneIn(8) ? MakeAnyFormula(source) : MakeFormula(source, 1 + static_cast<int>(source.Below(3)));
  NamedValues values;
  for (const TCHAR* name : UsualNames()) {
    if (!source.OneIn(24)) values.emplace_back(name, 0);
  }
  if (source.OneIn(16)) values.emplace_back(MakeName(source), 0);
  CAdExpCalculate calculator;
  int planned = 0;
  for (int round = 0; round < 6; ++round) {
    for (auto& [name, value] : values) value = TypicalValue(source);
    const PlanOutcome expected = EvaluatedAfresh(formula, values);
    const PlanOutcome outcome = EvaluatedBy(calculator, formula, values);
    EXPECT_EQ(outcome, expected) << Shown(formula) << " in round " << round;
    if (!(outcome == expected)) break;
    planned += FitsPlan(formula, values) ? 1 : 0;
  }
  return planned;
}

TEST(FormulaPlan, GivesWhatTheTextGives) {
  ChoiceSource source(20260101);
  int planned = 0;
  const int formulas = 60000 / kPlanShare;
  for (int i = 0; i < formulas && !HasFailure(); ++i) planned += ExpectSameInAllRounds(source);
  EXPECT_GT(planned, formulas);  // else the comparison would say nothing about plans
}

}  // namespace
}  // namespace lorv::test
