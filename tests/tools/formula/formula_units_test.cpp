#include <gtest/gtest.h>

#include "TEXPRESSCAL/formula_words.h"
#include "tests/support/print.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/formula/circle_number.h"
#include "tools/lorv/formula/formula_digits.h"
#include "tools/lorv/formula/name_values.h"
#include "tools/lorv/takeoff/evaluate/component_evaluator.h"
#include "tools/lorv/takeoff/input/class_selector.h"
#include "tools/lorv/takeoff/input/rules_file.h"
#include "tools/lorv/takeoff/plan/bound_formula.h"

namespace lorv::tool {
namespace {

std::string Names(const char* formula) {
  std::string text;
  for (const FormulaWord& word : NamesOf(CString::FromUtf8(formula).View())) {
    text += word.name.ToUtf8() + "@" + std::to_string(word.position) + " ";
  }
  return text;
}

TEST(FormulaWords, HeaderExample) {
  EXPECT_EQ(Names("2*墙长+max(B,1)"), "墙长@2 B@9 ");
}

TEST(FormulaWords, KnowsWhatIsAName) {
  const struct {
    const char* formula;
    const char* names;
  } rows[] = {{"", ""},
              {"1+2.5", ""},
              {"2H", "H@1 "},
              {"a1b+_x", "a1b@0 _x@4 "},
              {"sin(PI*x)", "x@7 "},
              {"find(CLMC,'砖 B')>0", "CLMC@5 "},
              {"'open A", ""},
              {"A AND B or C", "A@0 B@6 C@11 "},
              {"AND+1", "AND@0 "},
              {"墙长×（2）", "墙长@0 "},
              {"Länge*höhe", "Länge@0 höhe@6 "}};
  for (const auto& row : rows) EXPECT_EQ(Names(row.formula), row.names) << row.formula;
}

TEST(FormulaWords, NamesThatCanStandInAFormula) {
  for (const char* good : {"L", "墙长", "a_1", "_x", "L2墙"})
    EXPECT_TRUE(IsName(CString::FromUtf8(good).View())) << good;
  for (const char* bad : {"", "1a", "a b", "a.b", "max", "pi", "a-b", "（"}) {
    EXPECT_FALSE(IsName(CString::FromUtf8(bad).View())) << bad;
  }
}

TEST(CircleNumber, HeaderExample) {
  const auto found = CircleNumberIn(_T("L*pi"));
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->position, 2);
  EXPECT_EQ(found->length, 2);
}

TEST(CircleNumber, IsAWordOfItsOwn) {
  for (const char* with : {"PI", "2PI", "(Pi)", "A+pi/2", "PIX+PI", "'PI'+PI"})
    EXPECT_TRUE(CircleNumberIn(CString::FromUtf8(with)).has_value()) << with;
  for (const char* without : {"", "P", "PIX", "API", "PI_", "'PI'", "P+I", "PI墙", "墙PI"})
    EXPECT_FALSE(CircleNumberIn(CString::FromUtf8(without)).has_value()) << without;
}

TEST(CaretText, HeaderExample) {
  EXPECT_EQ(CaretText(_T("墙长*+2"), 3, 1, 80), "    墙长*+2\n         ^\n");
}

TEST(CaretText, MarksStretchesAndTheEnd) {
  EXPECT_EQ(CaretText(_T("A+墙高"), 2, 2, 80), "    A+墙高\n      ^^^^\n");
  EXPECT_EQ(CaretText(_T("A+"), 2, 0, 80), "    A+\n      ^\n");
  EXPECT_EQ(CaretText(_T(""), 0, 0, 80), "    \n    ^\n");
  EXPECT_EQ(CaretText(_T("A\tB"), 2, 1, 80), "    A B\n      ^\n");
  EXPECT_EQ(CaretText(_T("A"), 99, 5, 80), "    A\n     ^\n");
}

TEST(CaretText, LongFormulaIsCutAroundTheMark) {
  CString formula(TCHAR('1'), 300);
  formula.SetAt(150, '#');
  const std::string text = CaretText(formula, 150, 1, 40);
  const std::size_t line = text.find('\n');
  EXPECT_LE(line, 40u) << text;
  EXPECT_EQ(text.find('#'), text.find('^', line) - line - 1) << text;
  EXPECT_NE(text.find("    ..."), std::string::npos) << text;
}

TEST(NameValues, ReadsNumbersAndTexts) {
  const auto pairs = ReadNameValues({"L=-3.5", "墙高=2.8", "CLMC='砖=墙'", "E=1e3"});
  ASSERT_EQ(pairs.size(), 4u);
  EXPECT_EQ(pairs[0].number, -3.5);
  EXPECT_EQ(test::Utf8(pairs[1].name), "墙高");
  EXPECT_TRUE(pairs[2].is_text);
  EXPECT_EQ(test::Utf8(pairs[2].text), "'砖=墙'");
  EXPECT_EQ(pairs[3].number, 1000);
}

TEST(NameValues, RefusesWhatIsNone) {
  for (const char* bad : {"L", "=1", "L=", "L=abc", "L=1x", "L=inf", "L='a'b'", "L='"}) {
    EXPECT_THROW(ReadNameValues({bad}), BadInput) << bad;
  }
  EXPECT_THROW(ReadNameValues({"a=1", "A=2"}), BadInput) << "one name twice";
}

TEST(ClassSelector, HeaderExample) {
  EXPECT_TRUE(ClassSelector("*WALL*;!CURTAIN*").Fits("Partition wall"));
}

TEST(ClassSelector, ListsWildcardsAndExceptions) {
  const struct {
    const char* list;
    const char* name;
    bool fits;
  } rows[] = {{"墙", "墙", true},
              {"墙", "隔墙", false},
              {"*墙", "隔墙", true},
              {"?墙", "隔墙", true},
              {"?墙", "墙", false},
              {"墙;梁", "梁", true},
              {"墙、梁", "梁", true},
              {"墙；梁", "梁", true},
              {"wall", "WALL", true},
              {"*", "", true},
              {"", "x", false},
              {"!door", "wall", true},
              {"!door", "Door", false},
              {"*;!a*;ab", "ab", true},
              {"*;!a*;ab", "ac", false},
              {" wall ", "wall", true},
              {"a*b*c", "axxbyybc", true},
              {"a*b*c", "axxbyyb", false},
              {"*IFC*CASE", "IFCWALLSTANDARDCASE", true}};
  for (const auto& row : rows)
    EXPECT_EQ(ClassSelector(row.list).Fits(row.name), row.fits) << row.list << " " << row.name;
}

TEST(ClassSelector, HostilePatternEndsSoon) {
  std::string pattern, name(20000, 'a');
  for (int i = 0; i < 500; ++i) pattern += "*a";
  EXPECT_FALSE(ClassSelector(pattern + "b").Fits(name));
}

TEST(Literal, GivesTheSameNumberAgain) {
  for (const double value :
       {0.0, 1.0, 0.1, 1.0 / 3, 3.24e-5, 1e-9, 123456789.123456789, 1e15, 5e-20, 2.0 / 7e7}) {
    for (const double signed_value : {value, -value}) {
      CAdExpCalculate calculator(Literal(signed_value));
      int error = -1;
      EXPECT_EQ(calculator.Calculate(error), signed_value) << test::Utf8(Literal(signed_value));
      EXPECT_EQ(error, 0);
    }
  }
  EXPECT_EQ(test::Utf8(Literal(0.5)), "(0.5)");
  EXPECT_EQ(test::Utf8(Literal(-20)), "(-20)");
}

// Dimensions 0 and 1 are given, 2 is missing; result 0 is a third; text column 0 holds a quote.
class Values : public ValueSource {
 public:
  std::optional<double> DimensionOf(std::size_t index) override {
    if (index == 2) return std::nullopt;
    return index == 0 ? 6.0 : 0.0;
  }
  std::optional<double> ResultOf(std::size_t /*index*/) override { return 0.0123456789; }
  CString TextOf(std::size_t /*column*/) override { return _T("24'砖墙"); }
};

Symbol Lookup(const CString& key) {
  if (key == _T("墙")) return {Symbol::kDimension, 0};
  if (key == _T("墙长")) return {Symbol::kDimension, 1};
  if (key == _T("NO")) return {Symbol::kDimension, 2};
  if (key == _T("R")) return {Symbol::kResult, 0};
  if (key == _T("C")) return {Symbol::kConstant, 0, 1e-9};
  if (key == _T("T")) return {Symbol::kText, 0};
  return {};
}

Outcome OutcomeOf(const char* formula, std::optional<double> instead = {}) {
  BoundFormula bound(CString::FromUtf8(formula), Lookup);
  Values values;
  return bound.Evaluate(values, instead);
}

TEST(BoundFormula, WorksNamesThatThePlainTextWouldConfuse) {
  EXPECT_EQ(OutcomeOf("墙+墙长").value, 6) << "one name within the other";
  EXPECT_EQ(OutcomeOf("墙+墙+墙+墙").value, 24) << "values shorter than their names";
  EXPECT_EQ(OutcomeOf("2墙").value, 12);
  EXPECT_EQ(OutcomeOf("R*1000").value, 0.0123456789 * 1000) << "what was calculated keeps its digits";
  EXPECT_EQ(OutcomeOf("C*1000000000").value, 1);
  EXPECT_EQ(OutcomeOf("FIND(T,'砖')").value, 4);
}

TEST(BoundFormula, FaultsStandInTheFormulaAsTyped) {
  const struct {
    const char* formula;
    int position, length;
    const char* message;
  } rows[] = {
      {"墙*Lenght", 2, 6, "nothing is named \"Lenght\" here"},
      {"墙+NO", 2, 2, "no value for \"NO\""},
      {"R+1/墙长", 4, 2, "division by zero: '墙长' is 0"},
      {"R+1/(墙长*2)+R", 4, 6, "division by zero: '(墙长*2)' is 0"},
      {"R+C+)", 4, 1, "a value is expected here, not ')'"},
      {"(墙+R", 0, 1, "'(' is never closed"},
      {"墙+", 2, 0, "the formula ends where a value is expected"},
      {"SQRT(0-墙)", 0, 9, "the argument of 'SQRT(0-墙)' is outside its domain"},
      {"墙.5", 1, 1, "'.' does not belong in a formula"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = OutcomeOf(row.formula);
    EXPECT_NE(outcome.state, Outcome::kEvaluated) << row.formula;
    EXPECT_EQ(outcome.fault.position, row.position) << row.formula;
    EXPECT_EQ(outcome.fault.length, row.length) << row.formula;
    EXPECT_EQ(outcome.fault.message, row.message) << row.formula;
  }
}

TEST(BoundFormula, MissingValueMayCountAsANumber) {
  EXPECT_EQ(OutcomeOf("墙+NO", 2).value, 8);
  EXPECT_EQ(OutcomeOf("墙+NO").state, Outcome::kMissing);
}

TEST(BoundFormula, LengthLimitIsThatOfTheCalculator) {
  const auto padded = [](std::size_t units) { return "墙" + std::string(units - 3, ' ') + "+1"; };
  EXPECT_EQ(OutcomeOf(padded(1022).c_str()).state, Outcome::kEvaluated);
  EXPECT_EQ(OutcomeOf(padded(1023).c_str()).state, Outcome::kEvaluated);
  EXPECT_EQ(OutcomeOf(padded(1024).c_str()).state, Outcome::kFaulty);
}

TEST(BoundFormula, ShowsTheFormulaWithItsValues) {
  BoundFormula bound(CString::FromUtf8("2墙*R-FIND(T,'砖')+(墙长)"), Lookup);
  Values values;
  EXPECT_EQ(test::Utf8(bound.TextWithValues(values, {})), "2*6*0.0123456789-FIND('24\"砖墙','砖')+(0)");
}

// Each way of putting values in gives what it says.
TEST(BoundFormula, SuiteValuesHaveThreeDecimals) {
  class Fine : public Values {
   public:
    std::optional<double> DimensionOf(std::size_t /*index*/) override { return 0.0004; }
  } fine;
  BoundFormula exact(CString::FromUtf8("墙*1000"), Lookup);
  BoundFormula suite(CString::FromUtf8("墙*1000"), Lookup, {}, ValueDigits::kSuite);
  EXPECT_EQ(exact.Evaluate(fine, {}).value, 0.4);
  EXPECT_EQ(suite.Evaluate(fine, {}).value, 0);
  EXPECT_EQ(suite.EvaluateExactly(fine, {}).value, 0.4);
}

}  // namespace
}  // namespace lorv::tool
