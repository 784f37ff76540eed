#include "TEXPRESSCAL/simplify_safely.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <random>

#include "TEXPRESSCAL/calculator.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::string Safely(LPCTSTR formula, ZeroSign zero_sign = ZeroSign::kKept) {
  return Utf8(SimplifySafely(formula, zero_sign));
}

struct Case {
  LPCTSTR formula;
  const char* after;
};

TEST(SimplifySafely, FoldsWhatIsConstant) {
  const Case cases[] = {
      {_T("2+3"), "5"},
      {_T("2+3*4-1"), "13"},
      {_T("A*(2+3)"), "A*5"},
      {_T("2*3*A"), "6*A"},
      {_T("A*2*3"), "A*2*3"},  // the product runs from the left: other bits
      {_T("A^(2-5)"), "A^-3"},
      {_T("A-(2-5)"), "A--3"},
      {_T("1/3"), "1/3"},  // longer as a number
      {_T("1/3*3"), "1"},
      {_T("0.1+0.2"), "0.1+0.2"},  // 0.30000000000000004
      {_T("1/0"), "1/0"},          // an error is kept
      {_T("A+SQRT(0-1)"), "A+SQRT(-1)"},
      {_T("SQRT(16)+A"), "4+A"},
      {_T("SIN(0)+A"), "SIN(0)+A"},  // its last bit hangs on the system
      {_T("MAX(1,2,3)*A"), "3*A"},
      {_T("FLOOR(2.5)*A"), "2*A"},
      {_T("'a'='A'"), "1"},
      {_T("2*0-5*0"), "0"},
      {_T("-5*0"), "-0"},
      {_T("PI*2"), "PI*2"},  // ten digits are longer
      {_T("A*(PI>3)*B"), "A*B"},
      {_T("塁塂塓*(2+3)"), "塁塂塓*5"},  // a name whose codes end as those of ABS do
      {_T("(5)+A"), "(5)+A"},            // brackets stay as they were typed
      {_T("-(2+3)*A"), "-5*A"},
  };
  for (const Case& c : cases) EXPECT_EQ(Safely(c.formula), c.after) << Utf8(c.formula);
}

TEST(SimplifySafely, TakesOutZeroTermsWhereNoValueShowsIt) {
  const Case cases[] = {
      {_T("A-0"), "A"},
      {_T("a - 0 + b"), "a + b"},
      {_T("A+0"), "A+0"},    // makes 0 of -0
      {_T("A+0+5"), "A+5"},  // which 5 hides
      {_T("5+A*0"), "5"},
      {_T("A*B*0+5-C*0"), "5"},
      {_T("(a+b*0)+1"), "(a)+1"},
      {_T("2*(A+0)>1"), "2*(A)>1"},
      {_T("0-A"), "0-A"},
      {_T("A*0"), "A*0"},  // -0 for a negative A
      {_T("MAX(A*0+1,2)"), "2"},
      {_T("|A*0|"), "0"},
      {_T("5+0*A/B"), "5+0/B"},  // B may be 0
      {_T("5+0*A/2"), "5"},
      {_T("5+0*A^B"), "5+0*A^B"},
      {_T("5+0*LOG(A)"), "5+0*LOG(A)"},
      {_T("5+0*SIN(A)"), "5"},
      {_T("5+A*B*C*D*E*0"), "5+A*B*C*D*E*0"},  // may leave the range of numbers
      {_T("A-0='x'"), "A-0='x'"},              // a text in arithmetic is a number
  };
  for (const Case& c : cases) EXPECT_EQ(Safely(c.formula), c.after) << Utf8(c.formula);
}

TEST(SimplifySafely, TheSignOfZeroMayBeIgnored) {
  EXPECT_EQ(Safely(_T("A+0"), ZeroSign::kIgnored), "A");
  EXPECT_EQ(Safely(_T("a*0+b"), ZeroSign::kIgnored), "b");
  EXPECT_EQ(Safely(_T("A*0"), ZeroSign::kIgnored), "0");
  EXPECT_EQ(Safely(_T("墙长*墙高*1+0*柱高"), ZeroSign::kIgnored), "墙长*墙高");
  EXPECT_EQ(Safely(_T("0-A"), ZeroSign::kIgnored), "0-A");
}

TEST(SimplifySafely, TakesOutUnitFactors) {
  const Case cases[] = {
      {_T("A*1"), "A"},           {_T("1*A"), "A"},
      {_T("A/1"), "A"},           {_T("1/A"), "1/A"},
      {_T("B-1*A"), "B-A"},       {_T("1*A^2"), "A^2"},
      {_T("A*1.0*B"), "A*B"},     {_T("A*(1)"), "A"},
      {_T("A^1"), "A^1"},         {_T("墙长 * 1 * 墙高"), "墙长 * 墙高"},
      {_T("A*1='x'"), "A*1='x'"}, {_T("FIND(A*1,'x')"), "FIND(A*1,'x')"},  // A may stand for a text
  };
  for (const Case& c : cases) EXPECT_EQ(Safely(c.formula), c.after) << Utf8(c.formula);
}

TEST(SimplifySafely, TakesOutDeadBranches) {
  const Case cases[] = {
      {_T("IIF(1,A,B)"), "A"},
      {_T("iif(2>3,A,B/0)*2"), "(B/0)*2"},
      {_T("IIF(2<3,A,B/0)*2"), "(A)*2"},
      {_T("2^IIF(1,A,B)"), "2^(A)"},
      {_T("IIF(1,5,B)+A"), "5+A"},
      {_T("IIF(1,MAX(A,B),B)+A"), "MAX(A,B)+A"},
      {_T("IIF(A,1,1)"), "IIF(A,1,1)"},
      {_T("IIF(1/0,A,B)"), "IIF(1/0,A,B)"},
      {_T("1 AND A>B"), "A>B"},
      {_T("1 AND A"), "1 AND A"},  // only an exact 1 passes for true
      {_T("A>B AND 1"), "A>B"},
      {_T("5 AND A>B"), "0"},
      {_T("0 and A/B"), "0"},
      {_T("A/B AND 0"), "A/B AND 0"},  // the left one may fail
      {_T("A AND 0"), "0"},
      {_T("1 OR A/0"), "1"},
      {_T("0 OR A>B"), "A>B"},
      {_T("A>B || 0"), "A>B"},
      {_T("A/B OR 1"), "A/B OR 1"},
      {_T("A OR 1"), "1"},
      {_T("MAX(IIF(1,A,B),1*B)"), "MAX((A),B)"},
  };
  for (const Case& c : cases) EXPECT_EQ(Safely(c.formula), c.after) << Utf8(c.formula);
}

TEST(SimplifySafely, ComparisonsOfAChainStayWhatTheyAre) {
  const Case cases[] = {
      {_T("H<(2+3)<4"), "H<(5)<4"},  // "H<5<4" would be taken apart
      {_T("1<2<3"), "1<2<3"},
      {_T("(1<H<3)*(2+3)"), "(1<H<3)*5"},  // elsewhere there is room
      {_T("(2>1)*(1<H<3)"), "(2>1)*(1<H<3)"},
      {_T("(2>1)*(H<3)"), "(H<3)"},
  };
  for (const Case& c : cases) EXPECT_EQ(Safely(c.formula), c.after) << Utf8(c.formula);
}

TEST(SimplifySafely, NamesThatMayBeMissedKeepTheirDistance) {
  // A value of one unit makes the search start behind the second name.
  EXPECT_EQ(Safely(_T("ABC*1+ABC")), "ABC*1+ABC");
  EXPECT_EQ(Safely(_T("ABC+ABC*1")), "ABC+ABC");
  EXPECT_EQ(Safely(_T("ABC*1*X*Y*2+ABC")), "ABC*X*Y*2+ABC");
}

TEST(SimplifySafely, WhatItDoesNotCoverComesBackUntouched) {
  for (LPCTSTR formula :
       {_T(""), _T("1+"), _T("A*1)"), _T("+A*1"), _T("B*(+A)*1"), _T("2A*1"), _T("墙A*1"), _T(".5*1"),
        _T("A#1*1"), _T("FIND(A,'a=b')*1"), _T("ABCDEFGHIJKLMNOPQRSTU*1"), _T("A1B*1+B"),
        _T("FIND('-A',A)*(B*1)+B"), _T("|A| +B*1"), _T("A\t*1"), _T("墙*1+墙高"), _T("A AND*1")}) {
    EXPECT_EQ(Safely(formula), Utf8(formula));
  }
  CString longest = _T("A*1");
  while (longest.GetLength() < 1023) longest += _T("*1");
  longest = longest.Left(1023);
  EXPECT_EQ(Safely(longest), "A");
  longest += _T("*1");
  EXPECT_EQ(Safely(longest), Utf8(longest));
}

TEST(SimplifySafely, HeaderExamples) {
  EXPECT_EQ(Safely(_T("1*A+IIF(2>1,B,C/0)")), "A+(B)");
  EXPECT_EQ(Safely(_T("a*b-0")), "a*b");
}

// ---- Random formulas x random values ----

class Maker {
 public:
  explicit Maker(unsigned seed) : random_(seed) {}

  unsigned Any(unsigned count) { return static_cast<unsigned>(random_() % count); }

  CString Formula() {
    CString text;
    Level(text, 4);
    return text;
  }

  double Value() {
    static constexpr std::array kValues = {0.0, -0.0, 1.0,   -1.0, 2.0,  0.5,   -0.0004, 1.0 / 3, 2.0 / 3,
                                           3.0, 1e60, -7.25, 1e-5, 10.0, -1e60, 100.123, 0.0004,  5.0};
    return kValues[Any(kValues.size())];
  }

 private:
  void Atom(CString& text) {
    static constexpr LPCTSTR kAtoms[] = {_T("0"),   _T("1"),   _T("2"),   _T("0"),    _T("1"),
                                         _T("0.5"), _T("3.0"), _T("PI"),  _T("A"),    _T("b"),
                                         _T("C"),   _T("LEN"), _T("ABC"), _T("墙高"), _T("x_1"),
                                         _T("A"),   _T("'A'"), _T("'k'"), _T("10"),   _T("00")};
    LPCTSTR atom = kAtoms[Any(Any(8) == 0 ? 20 : 16)];
    text += atom;
    if (CString(atom) == _T("LEN")) text += _T("(0)");
  }

  void Call(CString& text, int depth) {
    static constexpr struct {
      LPCTSTR name;
      int arguments;
    } kCalls[] = {{_T("IIF"), 3},   {_T("max"), 2},   {_T("MIN"), 3},  {_T("SQRT"), 1},
                  {_T("ABS"), 1},   {_T("sin"), 1},   {_T("IIF"), 3},  {_T("INT"), 1},
                  {_T("ROUND"), 1}, {_T("LOG"), 1},   {_T("FIND"), 2}, {_T("CTG"), 1},
                  {_T("COS"), 1},   {_T("FLOOR"), 1}, {_T("EXP"), 1},  {_T("IIF"), 3}};
    const auto& call = kCalls[Any(16)];
    text += call.name;
    text += '(';
    for (int i = 0; i < call.arguments; ++i) {
      if (i > 0) text += ',';
      if (i > 0 || Any(40) != 0 || call.arguments == 1) Level(text, depth - 1);
    }
    text += ')';
  }

  void Operand(CString& text, int depth) {
    const unsigned kind = depth <= 0 ? 0 : Any(10);
    if (Any(12) == 0) text += '-';
    if (kind < 6) return Atom(text);
    if (kind < 8) return Call(text, depth);
    text += kind == 8 ? '(' : Any(3) == 0 ? '|' : '(';
    const TCHAR close = text[text.GetLength() - 1] == '(' ? ')' : '|';
    Level(text, depth - 1);
    text += close;
  }

  void Level(CString& text, int depth) {
    static constexpr LPCTSTR kOperators[] = {_T("+"),     _T("-"),    _T("*"),  _T("/"),  _T("*"), _T("+"),
                                             _T("-"),     _T("*"),    _T("^"),  _T("<"),  _T(">"), _T("="),
                                             _T(" AND "), _T(" or "), _T("<="), _T("<>"), _T("!"), _T(" + "),
                                             _T("&&"),    _T(" * "),  _T("*"),  _T("+")};
    Operand(text, depth);
    for (unsigned more = Any(4); more > 0; --more) {
      text += kOperators[Any(22)];
      Operand(text, depth - 1);
    }
  }

  std::mt19937 random_;
};

struct Outcome {
  double value = 0;
  int error = 0;
  int code = 0;
};

using Values = std::array<double, 6>;

Outcome Work(const CString& formula, const Values& values) {
  static constexpr LPCTSTR kNames[] = {_T("A"), _T("B"), _T("C"), _T("ABC"), _T("墙高"), _T("X_1")};
  CAdExpCalculate calculator(formula);
  for (std::size_t i = 0; i < values.size(); ++i) calculator.SetVarValue(kNames[i], values[i], false);
  Outcome outcome;
  outcome.value = calculator.Calculate(outcome.error);
  // The code behind the calculator's one error, and the value that it hides.
  CExpression expression;
  expression.ChangeExpression(calculator.GetCalcedExpr());
  double value = 0;
  outcome.code = expression.Value(value);
  if (outcome.error == 0) outcome.value = value;
  return outcome;
}

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void ExpectSameWork(const CString& before, const CString& after, const Values& values, bool zero_sign) {
  const Outcome a = Work(before, values);
  const Outcome b = Work(after, values);
  const bool same = SameBits(a.value, b.value) || (!zero_sign && a.value == b.value);
  ASSERT_TRUE(same && a.error == b.error && a.code == b.code)
      << Utf8(before) << "\n"
      << Utf8(after) << "\n"
      << testing::PrintToString(values) << "\n"
      << a.value << " " << a.error << " " << a.code << " | " << b.value << " " << b.error << " " << b.code;
}

TEST(SimplifySafely, NeverChangesValueOrErrorOfRandomFormulas) {
  Maker maker(20251);
  int shortened = 0;
  constexpr int kFormulas = 200'000 / test::CheckedShare(5);
  for (int i = 0; i < kFormulas; ++i) {
    const CString formula = maker.Formula();
    const ZeroSign zero_sign = i % 4 == 3 ? ZeroSign::kIgnored : ZeroSign::kKept;
    const CString after = SimplifySafely(formula, zero_sign);
    ASSERT_LE(after.GetLength(), formula.GetLength()) << Utf8(formula);
    if (after == formula) continue;
    ++shortened;
    for (int k = 0; k < 3; ++k) {
      Values values;
      for (double& value : values) value = maker.Value();
      ExpectSameWork(formula, after, values, zero_sign == ZeroSign::kKept);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
  EXPECT_GT(shortened, kFormulas / 10);  // the formulas are of the kind that it is for
}

}  // namespace
}  // namespace lorv
