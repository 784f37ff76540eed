// One formula evaluated again and again, and for many rows: all ways agree, also where names stand against
// digits and against each other.

#include "TEXPRESSCAL/compiled/repeated_formula.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

#include "TEXPRESSCAL/calculate_rows.h"
#include "TEXPRESSCAL/express.h"
#include "tests/reference/formula_difference.h"
#include "tests/reference/repeated_case.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

constexpr int kRepeatedShare = CheckedShare(10);

struct Known {
  const TCHAR* formula;
  const TCHAR* name;
  double given;
  double value;
  int error;
};

// A value shorter than its name moves the search behind the next place of the name. The "*" that a digit
// before that place asks for is not there yet while it is searched.
const Known kMissedPlaces[] = {{_T("BEAM+2BEAM"), _T("BEAM"), 5, 1000005, 0},
                               {_T("墙A墙A+1"), _T("墙A"), 1, 0, 1},
                               {_T("LENGTH-12LENGTH"), _T("LENGTH"), 25, -999975, 0},
                               {_T("层高度数+2层高度数"), _T("层高度数"), 3, 0, 3},
                               {_T("2BEAM+BEAM"), _T("BEAM"), 5, 1000010, 0},
                               {_T("2BEAM+BEAM"), _T("BEAM"), 10, 30, 0}};

TEST(RepeatedFormula, MissesTheSamePlacesEachTime) {
  for (const Known& known : kMissedPlaces) {
    CAdExpCalculate calculator;
    for (int round = 0; round < 4; ++round) {
      calculator.SetExpr(known.formula);
      calculator.SetVarValue(known.name, known.given, false);
      int error = -7;
      EXPECT_EQ(calculator.Calculate(error), known.value) << Shown(known.formula) << " in round " << round;
      EXPECT_EQ(error, known.error) << Shown(known.formula) << " in round " << round;
    }
  }
}

TEST(RepeatedFormula, MissesTheSamePlacesInRows) {
  for (const Known& known : kMissedPlaces) {
    const std::vector<double> given(100, known.given);
    const ValueColumn columns[] = {{known.name, given.data()}};
    std::vector<double> results(given.size(), -7);
    std::vector<int> errors(given.size(), -7);
    CalculateRows(CAdExpCalculate(known.formula), columns, given.size(), results.data(), errors.data());
    EXPECT_EQ(results, std::vector<double>(given.size(), known.value)) << Shown(known.formula);
    EXPECT_EQ(errors, std::vector<int>(given.size(), known.error)) << Shown(known.formula);
  }
}

// A row whose value does not fit is first evaluated with another number, which may divide by zero where the
// value's text does not.
TEST(RepeatedFormula, LeavesNoErrorBesideARightValue) {
  for (const auto& [formula, name, given] :
       {std::tuple(_T("ABC/ABC"), _T("ABC"), 0.0), std::tuple(_T("1/(A-0.0015)"), _T("A"), 0.0015),
        std::tuple(_T("1/(A-0.3334)"), _T("A"), 0.3334), std::tuple(_T("1/(1000*A-0.5)"), _T("A"), 0.0005)}) {
    CAdExpCalculate calculator(formula);
    calculator.SetVarValue(name, given, false);
    int error = -7;
    const double value = calculator.Calculate(error);
    EXPECT_EQ(error, 0) << Shown(formula);
    for (const std::size_t rows : {1U, 63U, 64U, 300U}) {
      const std::vector<double> column(rows, given);
      const ValueColumn columns[] = {{name, column.data()}};
      std::vector<double> results(rows, -7);
      std::vector<int> errors(rows, -7);
      CalculateRows(CAdExpCalculate(formula), columns, rows, results.data(), errors.data());
      EXPECT_EQ(results, std::vector<double>(rows, value)) << Shown(formula);
      EXPECT_EQ(errors, std::vector<int>(rows, 0)) << Shown(formula);
    }
  }
}

CMapValue TakenFrom(CMapValue& values) {
  return std::move(values);
}

// A map whose names were moved away is empty, whatever was known of them.
TEST(RepeatedFormula, NoticesThatTheValuesWereMovedAway) {
  CMapValue values;
  CAdExpCalculate calculator;
  calculator.SetVarValue(&values);
  for (int round = 0; round < 4; ++round) {
    calculator.SetExpr(_T("A*B"));
    values[_T("A")] = 2;
    values[_T("B")] = round;
    EXPECT_EQ(calculator.Calculate(), 2 * round);
  }
  const CMapValue others = TakenFrom(values);
  calculator.SetExpr(_T("A*B"));
  int error = 0;
  EXPECT_EQ(calculator.Calculate(error), 0);
  EXPECT_EQ(error, 1);  // a name without a value, known as no keyword
  EXPECT_EQ(others.size(), 2U);
  values[_T("B")] = 7;
  calculator.SetExpr(_T("B+1"));
  EXPECT_EQ(calculator.Calculate(), 8);
}

bool HasPlan(const RepeatedCase& made) {
  Text formula = made.formula;
  for (TCHAR& unit : formula) unit = ToUpper(unit);
  CMapValue values;
  for (const Text& name : made.names) values[name.c_str()] = 0;
  FormulaPlan plan;
  return plan.Make(formula, values) || plan.Make(formula, values, FormulaPlan::Thirds::kFit);
}

TEST(RepeatedFormula, AllWaysAgree) {
  constexpr int kCases = 12000 / kRepeatedShare;
  int planned = 0;
  for (int seed = 1; seed <= kCases; ++seed) {
    ChoiceSource source(static_cast<std::uint64_t>(seed));
    const RepeatedCase made = MakeRepeatedCase(source);
    planned += HasPlan(made) ? 1 : 0;
    if (RepeatedDifference(made).empty()) continue;
    const RepeatedCase small = Shrunk(made);
    FAIL() << "seed " << seed << ": " << Shown(small) << '\n' << RepeatedDifference(small);
  }
  EXPECT_GT(planned, kCases / 4);  // else the comparison would say little about plans
}

}  // namespace
}  // namespace lorv::test
