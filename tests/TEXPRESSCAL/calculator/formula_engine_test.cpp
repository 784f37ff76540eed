// The engine behind a calculator: what it costs those who hold one, and how often it parses.

#include "TEXPRESSCAL/calculator/formula_engine.h"

#include <gtest/gtest.h>

#include "TEXPRESSCAL/calculator.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

// Every parse asks for each name once.
class CountingNames final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR) const override {
    ++asked_;
    return 1;
  }
  int Asked() const { return asked_; }

 private:
  mutable int asked_ = 0;
};

struct Parses {
  const TCHAR* formula;
  int asked;
  double value;
  const char* text;
};

class FormulaEngineParses : public testing::TestWithParam<Parses> {};

TEST_P(FormulaEngineParses, OnceOrTwice) {
  CMapValue values;
  values[_T("ABC")] = 1;
  FormulaEngine engine;
  bool too_long = false;
  engine.Set(GetParam().formula, too_long);
  const CountingNames names;
  int error = -7;
  EXPECT_EQ(engine.Calculate(values, names, error), GetParam().value);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(names.Asked(), GetParam().asked);
  EXPECT_EQ(Utf8(CString(engine.WorkingText().View())), GetParam().text);
}

// Of names without a value zeros are made, and the text is parsed again; a name whose place was missed stays,
// and counts what every name counts.
INSTANTIATE_TEST_SUITE_P(Texts, FormulaEngineParses,
                         testing::Values(Parses{_T("1 +2"), 0, 3, "1 +2"}, Parses{_T("X+Y"), 2, 0, "0+0"},
                                         Parses{_T("ABC+ABC"), 1, 1000001, "1+ABC"},
                                         Parses{_T("ABC+ABC+X"), 3, 1000001, "1+ABC+0"}));

TEST(FormulaEngine, EvaluatesAsideWithoutATrace) {
  CMapValue values;
  values[_T("A")] = 2;
  const CountingNames names;
  FormulaEngine engine;
  bool too_long = false;
  engine.Set(_T("a*3"), too_long);
  int error = -7;
  EXPECT_EQ(engine.Calculate(values, names, error), 6);
  EXPECT_EQ(engine.CalculateAside(_T("a+b+0.5"), values, names), 2.5);
  EXPECT_EQ(engine.CalculateAside(_T("1/0"), values, names), 0);
  EXPECT_EQ(Utf8(CString(engine.WorkingText().View())), "2*3");
  EXPECT_EQ(Utf8(CString(engine.Formula())), "A*3");
}

TEST(FormulaEngine, KeepsCalculatorsSmall) {
  EXPECT_LT(sizeof(CAdExpCalculate), 1024U);
}

}  // namespace
}  // namespace lorv::test
