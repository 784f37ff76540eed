// Formulas that are evaluated in one pass over the text, and those that are refused because they may mean
// something else: value, error and text with values are those of the slow reference either way.

#include "TEXPRESSCAL/direct/direct_evaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "TEXPRESSCAL/calculator.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

using Values = std::vector<std::pair<Text, double>>;

constexpr int kDirectShare = CheckedShare(5);

const Values kUsual = {{_T("A"), 2.5},   {_T("B"), 0.25}, {_T("C"), 3},       {_T("N"), -4},
                       {_T("H"), 3.15},  {_T("X1"), 7},   {_T("B1K"), 1.125}, {_T("W_1"), 0.5},
                       {_T("ROWS"), 12}, {_T("Z"), 0},    {_T("SIN"), 30},    {_T("EIGHTLET"), 8}};

CMapValue MapOf(const Values& values) {
  CMapValue map;
  for (const auto& [name, value] : values) map[name.c_str()] = value;
  return map;
}

bool IsCovered(const Text& formula, const CMapValue& values) {
  ValuePlaces places;
  double value = 0;
  return DirectEvaluator(formula.c_str(), values, places).Evaluate(value);
}

// Evaluated alone, and once more behind another formula with the same values.
void ExpectSame(const Text& formula, const Values& values) {
  CalculatorCase made;
  made.rounds.push_back({formula, values});
  made.rounds.push_back({_T("1+A"), {}});
  made.rounds.push_back({formula, {}});
  made.rounds.push_back({formula, {}, false});
  const std::string difference = CalculatorDifference(made);
  if (!difference.empty()) FAIL() << Shown(made) << '\n' << difference;
}

TEST(DirectEvaluator, CoversWhatFormulasUsuallyAre) {
  for (const TCHAR* formula : {_T("A"),
                               _T("1.2.3"),
                               _T("-A"),
                               _T("+A"),
                               _T("--N"),
                               _T("-+A"),
                               _T("A-N"),
                               _T("A--N"),
                               _T("N^2"),
                               _T("-N^2"),
                               _T("A^B^C"),
                               _T("2^-A"),
                               _T("A/B/C"),
                               _T("A*(B+H)*(A-0.05)*1.1"),
                               _T("((((A))))"),
                               _T("X1*B1K-W_1/ROWS"),
                               _T("EIGHTLET*2"),
                               _T("SIN*2"),
                               _T("PI*A"),
                               _T("ABS(N)*MAX(A,B,C)-MIN(N)"),
                               _T("SQRT(N)+LOG(Z)+CTG(Z)"),
                               _T("IIF(A>B,A,B)"),
                               _T("IIF(Z>0,1/Z,0)"),
                               _T("IIF(1,2,1/0)"),
                               _T("A>=B"),
                               _T("A=>B"),
                               _T("A<=B"),
                               _T("A=<B"),
                               _T("A<>B"),
                               _T("A!=B"),
                               _T("A=B"),
                               _T("A==B"),
                               _T("(A>B)&&(B<C)"),
                               _T("A<B||C>H"),
                               _T("Z&&1/0"),
                               _T("1||1/0"),
                               _T("(A<B)+(A>B)=1"),
                               _T("MAX(1,2,3,4,5,6,7,8)"),
                               _T("123456789012345.5*A"),
                               _T("FLOOR(A)+ROUND(N/3)")}) {
    EXPECT_TRUE(IsCovered(formula, MapOf(kUsual))) << Shown(formula);
    ExpectSame(formula, kUsual);
  }
}

TEST(DirectEvaluator, RefusesWhatMayMeanSomethingElse) {
  for (const TCHAR* formula :
       {_T(""),          _T("A +B"),    _T(" A"),           _T("'A'='A'"),
        _T("|N|"),       _T("0!A"),     _T("A B"),          _T("2A"),
        _T("A.5"),       _T("3.A"),     _T("+-A"),          _T("+N"),
        _T("2++N"),      _T("Q+A"),     _T("A(1)"),         _T("PI(1)"),
        _T("COS"),       _T("SIN(1)"),  _T("COS()"),        _T("COS(A"),
        _T("(A"),        _T("A)"),      _T("A+"),           _T("*A"),
        _T("MAX(,A)"),   _T("MAX(A,)"), _T("IIF(A,B)"),     _T("IIF(A,B,C,H)"),
        _T("COS(A,B)"),  _T("LEN(A)"),  _T("FIND(A,B)"),    _T("MAX(1,2,3,4,5,6,7,8,9)"),
        _T("A/Z"),       _T("A/(B-B)"), _T("1/0"),          _T("IIF(A>B,1/0,1)"),
        _T("1&&1/0"),    _T("Z||1/0"),  _T("IIF(1/0,1,2)"), _T("A<B<C"),
        _T("A<2<C"),     _T("A<N=C"),   _T("A><B"),         _T("A===B"),
        _T("A>==B"),     _T("A&B"),     _T("A&&&B"),        _T("A|||B"),
        _T("A|B"),       _T("ASIN(2)"), _T("NINELETTE+1"),  _T("墙+A"),
        _T("A#B"),       _T("A\x08"),   _T("\x04"),         _T("A@B"),
        _T("_A"),        _T("1,5"),     _T("A;B"),          _T("A[1]"),
        _T("IIF(A,1;B)")}) {
    EXPECT_FALSE(IsCovered(formula, MapOf(kUsual))) << Shown(formula);
    ExpectSame(formula, kUsual);
  }
}

TEST(DirectEvaluator, RefusesValuesWhoseTextIsNotTheirNumber) {
  for (const double value : {0.3333333333333333, 0.333, 0.334, 0.6666666666666666, 0.667, 1e62, 1e-3 / 2,
                             0.0015, 2.4995, 1e300, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
    EXPECT_FALSE(IsCovered(_T("A*3"), MapOf({{_T("A"), value}}))) << value;
    ExpectSame(_T("A*3/A^2"), {{_T("A"), value}});
  }
  for (const double value :
       {0.0, -0.0, 0.0004, -0.0004, 1.99951, 1.9996, 12.3456, 0.331, 0.335, -2.0, 68719476.735})
    ExpectSame(_T("A*3/(A-7)^2"), {{_T("A"), value}});
}

TEST(DirectEvaluator, RefusesMapsWithNamesThatCouldMatchElsewhere) {
  for (const TCHAR* odd : {_T("A+B"), _T("1"), _T("_A"), _T("2A"), _T("("), _T("+"), _T("A."),
                           _T("NINE+LETTERS"), _T("_NINELETTERS")}) {
    const Values values = {{_T("A"), 2}, {_T("B"), 3}, {odd, 5}};
    EXPECT_FALSE(IsCovered(_T("A+B*21"), MapOf(values))) << Shown(odd);
    ExpectSame(_T("A+B*21-(A+B)"), values);
  }
  for (const TCHAR* harmless : {_T("墙"), _T("墙A"), _T("NINELETTERS"), _T("")}) {
    const Values values = {{_T("A"), 2}, {_T("B"), 3}, {harmless, 5}};
    EXPECT_TRUE(IsCovered(_T("A+B*21"), MapOf(values))) << Shown(harmless);
    ExpectSame(_T("A+B*21"), values);
    ExpectSame(_T("墙+NINELETTERS*A+墙A"), values);
  }
  // A key that was stored in small letters is equal to the name in capitals, but not found in the text.
  CMapValue small;
  small.insert({_T("a"), 2});
  EXPECT_FALSE(IsCovered(_T("A"), small));
}

TEST(DirectEvaluator, CountsOfEntriesUnitsAndOperatorsAreBounded) {
  Values values;
  for (int i = 0; i < static_cast<int>(ValuePlaces::kMaxEntries); ++i) {
    Text name = _T("K");
    for (const char c : std::to_string(i)) name += static_cast<TCHAR>(c);
    values.emplace_back(name, i);
  }
  EXPECT_TRUE(IsCovered(_T("K0+K127"), MapOf(values)));
  ExpectSame(_T("K0+K127*K64-K63"), values);
  values.emplace_back(_T("A"), 3);
  EXPECT_FALSE(IsCovered(_T("K0+K127"), MapOf(values)));
  ExpectSame(_T("K0+K127*K64-K63+A"), values);

  for (const int count : {499, 500, 501, 511}) {
    Text sum = _T("A");
    for (int i = 1; i < count; ++i) sum += _T("+A");
    EXPECT_EQ(IsCovered(sum, MapOf({{_T("A"), 2}})), count <= 500) << count;
    ExpectSame(sum, {{_T("A"), 2}});
    ExpectSame(sum, {{_T("A"), -2.125}});
  }
  for (const TCHAR* piece : {_T("+(A<B)"), _T("+(A&&B)"), _T("+(1=A)")}) {
    for (const int count : {99, 100, 101, 102}) {
      Text sum = _T("1");
      for (int i = 0; i < count; ++i) sum += piece;
      EXPECT_EQ(IsCovered(sum, MapOf(kUsual)), count <= 100) << Shown(piece) << count;
      ExpectSame(sum, kUsual);
    }
  }
}

// A value shorter than its name makes the next place of that name be missed if it follows closely.
TEST(DirectEvaluator, NamesCloseToEachOther) {
  EXPECT_FALSE(IsCovered(_T("ABC+ABC"), MapOf({{_T("ABC"), 1}})));
  EXPECT_TRUE(IsCovered(_T("ABC+ABC"), MapOf({{_T("ABC"), 12}})));
  EXPECT_TRUE(IsCovered(_T("ABC+(ABC)"), MapOf({{_T("ABC"), 1}})));
  EXPECT_FALSE(IsCovered(_T("ABCD+(ABCD)"), MapOf({{_T("ABCD"), 1}})));
  for (const TCHAR* name :
       {_T("A"), _T("AB"), _T("ABC"), _T("ABCD"), _T("A_1_"), _T("ABCDEFGH"), _T("A1B")}) {
    for (const TCHAR* gap : {_T("+"), _T("*("), _T("+1*"), _T("+10*"), _T("*A*"), _T("-B*(0+"),
                             _T("+EFGHIJ*"), _T("<EFGHIJ*")}) {
      for (const double value : {1.0, 12.0, 1.5, -1.0, 0.25, -0.125, 12345.0}) {
        const Text formula = Text(name) + gap + name + gap + name + gap + name;
        Text closed = formula;
        for (const TCHAR c : formula) closed += c == '(' ? Text(_T(")")) : Text();
        ExpectSame(closed, {{name, value}, {_T("EFGHIJ"), 3}, {_T("B"), 4}});
        ExpectSame(closed, {{name, value}, {_T("EFGHIJ"), 123456.5}, {_T("B"), 4}, {_T("A"), 7}});
      }
    }
  }
}

TEST(DirectEvaluator, NamesWithinNames) {
  const Values values = {{_T("A"), 2},    {_T("AA"), 3}, {_T("AAA"), 5}, {_T("A1"), 7},    {_T("A12"), 11},
                         {_T("A1B"), 13}, {_T("B"), 17}, {_T("B1"), 19}, {_T("A1B1"), 23}, {_T("MAX"), 29}};
  const TCHAR* const names[] = {_T("A"),    _T("AA"), _T("AAA"),   _T("A1"),  _T("A12"),  _T("A1B"),
                                _T("B"),    _T("B1"), _T("A1B1"),  _T("MAX"), _T("A1C"),  _T("C1B"),
                                _T("A1_B"), _T("PI"), _T("A1B2C"), _T("MIN"), _T("A11A"), _T("AAAA")};
  for (const TCHAR* first : names) {
    for (const TCHAR* second : names) {
      const Text formula = Text(first) + _T("*2-(") + second + _T("+") + first + _T(")");
      for (std::size_t left_out = 0; left_out <= values.size(); ++left_out) {
        Values some = values;
        if (left_out < some.size()) some.erase(some.begin() + static_cast<std::ptrdiff_t>(left_out));
        ExpectSame(formula, some);
      }
    }
  }
  EXPECT_TRUE(IsCovered(_T("A1B+A1C"), MapOf({{_T("A1B"), 1}, {_T("A1C"), 2}, {_T("A1"), 3}})));
  EXPECT_FALSE(IsCovered(_T("A1B"), MapOf({{_T("A1B"), 1}, {_T("B"), 2}})));
  EXPECT_FALSE(IsCovered(_T("A1B2C"), MapOf({{_T("A1B2C"), 1}, {_T("B2C"), 2}})));
}

TEST(DirectEvaluator, EveryFormulaOfFiveTokens) {
  const TCHAR* const tokens[] = {_T("A"), _T("N"), _T("2"), _T("-"), _T("+"),
                                 _T("/"), _T("^"), _T("("), _T(")"), _T("<")};
  constexpr int kLong = 100000;
  for (int number = 0; number < kLong; number += kDirectShare) {
    Text formula;
    for (int rest = number, i = 0; i < 5; ++i, rest /= 10) formula += tokens[rest % 10];
    CalculatorCase made;
    made.rounds.push_back({formula, {{_T("A"), 0.5}, {_T("N"), -3}}});
    ASSERT_EQ(CalculatorDifference(made), "") << Shown(formula);
  }
}

class FormulaSource {
 public:
  explicit FormulaSource(ChoiceSource& source) : s_(source) {}

  Text Sum(int depth) {
    Text text = Operand(depth);
    for (std::size_t more = s_.Below(4); more > 0; --more) text += Text(s_.From(kSigns)) + Operand(depth);
    return text;
  }
  Values SomeValues() {
    Values values;
    for (const TCHAR* name : kNames) {
      if (s_.OneIn(9)) continue;
      const double thousandths = static_cast<double>(s_.Below(s_.OneIn(2) ? 40 : 40000)) - 9;
      values.emplace_back(name, s_.OneIn(3) ? std::floor(thousandths / 9) : thousandths / 1000);
    }
    return values;
  }

 private:
  static constexpr const TCHAR* kNames[] = {_T("A"),    _T("B"),     _T("AB"),  _T("ABC"),
                                            _T("A1"),   _T("B1H"),   _T("H"),   _T("ROW"),
                                            _T("ROWS"), _T("SLOPE"), _T("X_1"), _T("MAX")};
  static constexpr const TCHAR* kSigns[] = {_T("+"), _T("-"),  _T("*"), _T("/"),  _T("+"),  _T("*"), _T("^"),
                                            _T("<"), _T(">="), _T("="), _T("&&"), _T("||"), _T("+-")};
  static constexpr const TCHAR* kNumbers[] = {_T("1"),    _T("0"),  _T("2.5"), _T("10"),
                                              _T("0.05"), _T("PI"), _T("-3")};
  static constexpr const TCHAR* kCalls[] = {_T("ABS("), _T("ROUND("), _T("CEIL("), _T("SQRT("),
                                            _T("INT("), _T("("),      _T("-("),    _T("COS(")};

  Text Operand(int depth) {
    if (depth == 0 || s_.OneIn(2)) return s_.OneIn(3) ? s_.From(kNumbers) : s_.From(kNames);
    if (s_.OneIn(3))
      return Text(_T("IIF(")) + Sum(depth - 1) + _T(",") + Sum(depth - 1) + _T(",") + Sum(depth - 1) +
             _T(")");
    if (s_.OneIn(3)) return Text(_T("MIN(")) + Sum(depth - 1) + _T(",") + Sum(depth - 1) + _T(")");
    return s_.From(kCalls) + Sum(depth - 1) + _T(")");
  }

  ChoiceSource& s_;
};

TEST(DirectEvaluator, RandomFormulas) {
  ChoiceSource source(20240611);
  int covered = 0;
  constexpr int kCount = 40000 / kDirectShare;
  for (int i = 0; i < kCount; ++i) {
    FormulaSource formulas(source);
    const Text formula = formulas.Sum(2);
    const Values values = formulas.SomeValues();
    if (IsCovered(formula, MapOf(values))) ++covered;
    ExpectSame(formula, values);
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(covered, kCount / 10);
}

// The text with values is that of the moment of the evaluation, however late it is asked for.
TEST(DirectEvaluator, WorkedTextIsKeptUntilItIsAskedFor) {
  CMapValue values = MapOf({{_T("A"), 2}, {_T("B"), 3.25}});
  CAdExpCalculate calculator;
  calculator.SetVarValue(&values);
  calculator.SetExpr(_T("a*B-a"));
  EXPECT_EQ(calculator.Calculate(), 4.5);
  values[_T("A")] = 77;
  values.erase(_T("B"));
  const CAdExpCalculate copy(calculator);
  CAdExpCalculate assigned;
  assigned = calculator;
  calculator.ClearAllValue();
  EXPECT_EQ(Utf8(calculator.GetCalcedExpr()), "2*3.25-2");
  EXPECT_EQ(Utf8(copy.GetCalcedExpr()), "2*3.25-2");
  EXPECT_EQ(Utf8(assigned.GetCalcedExpr()), "2*3.25-2");
  EXPECT_EQ(Utf8(calculator.GetExpr()), "A*B-A");
  EXPECT_EQ(calculator.Calculate(), 4.5);
  calculator.SetExpr(_T("a+1"));
  EXPECT_EQ(Utf8(calculator.GetCalcedExpr()), "A+1");
}

TEST(DirectEvaluator, ParametersAreWorkedBesideThePendingText) {
  CAdExpCalculate calculator(_T("A*2"));
  calculator.SetVarValue(_T("A"), 3, false);
  EXPECT_EQ(calculator.Calculate(), 6);
  CString parameters(_T("p:A+1;q:1/0"));
  EXPECT_TRUE(calculator.PrepareParamsValue(parameters));
  EXPECT_EQ(Utf8(parameters), "p:4;q:0");
  EXPECT_EQ(Utf8(calculator.GetCalcedExpr()), "3*2");
}

// Names that were seen to be keywords are searched no more, until keywords go.
TEST(DirectEvaluator, KeywordsThatWentComeAgainWithTheirValue) {
  CAdExpCalculate calculator;
  const auto count_with_value = [&calculator] {
    calculator.SetVarValue(_T("H"), 1, false);
    return calculator.GetKeywords().size();
  };
  CStringArray words;
  words.Add(_T("Q"));
  EXPECT_EQ(count_with_value(), 1U);
  EXPECT_EQ(calculator.SetKeyWord(words), 1);
  EXPECT_EQ(count_with_value(), 2U);
  EXPECT_EQ(calculator.SetKeyWord(_T("one pass"), words, words), 1);
  EXPECT_EQ(count_with_value(), 2U);
  calculator = CAdExpCalculate();
  EXPECT_EQ(count_with_value(), 1U);
  calculator.ClearStaticKeyWord();
  EXPECT_EQ(count_with_value(), 1U);
}

}  // namespace
}  // namespace lorv::test
