// The calculator: values in, a text to evaluate, one number and one error out.

#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "tests/TEXPRESSCAL/calculator/calculator_engines.h"

namespace lorv::test {
namespace {

using Engines = testing::Types<LibraryCalculator, ReferenceCalculator>;

template <class Engine>
class Calculator : public testing::Test {
 protected:
  // Evaluates `formula` (UTF-8); checks number, error and the text with its values.
  void Expect(const char* formula, double value, int error, const char* with_values) {
    calculator_.SetExpr(CString::FromUtf8(formula));
    int got_error = -7;
    const double got = calculator_.Calculate(got_error);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(got), std::bit_cast<std::uint64_t>(value))
        << formula << ": " << got;
    EXPECT_EQ(got_error, error) << formula;
    EXPECT_EQ(Utf8(calculator_.Calced()), with_values) << formula;
  }
  std::string Message(const char* formula) {
    calculator_.SetExpr(CString::FromUtf8(formula));
    CString message = _T("old");
    const bool valid = calculator_.ValidExp(message);
    EXPECT_EQ(valid, message.IsEmpty()) << formula;
    return Utf8(message);
  }
  std::string Names(const char* formula) {
    calculator_.SetExpr(CString::FromUtf8(formula));
    std::string out;
    for (const CString& name : calculator_.Vars()) out += Utf8(name) + ",";
    return out;
  }
  std::string KeyWords() {
    std::string out;
    for (const CString& name : calculator_.KeyWords()) out += Utf8(name) + ",";
    return out;
  }

  Engine calculator_;
};
TYPED_TEST_SUITE(Calculator, Engines);

TYPED_TEST(Calculator, WorksAFormulaWithValues) {
  this->calculator_.SetExpr(_T("a+b"));
  EXPECT_EQ(this->calculator_.Set(_T("A"), 2), 1);
  EXPECT_EQ(this->calculator_.Set(_T("b"), 3), 1);
  int error = -1;
  EXPECT_EQ(this->calculator_.Calculate(error), 5);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Utf8(this->calculator_.Expr()), "A+B");
  EXPECT_EQ(Utf8(this->calculator_.Calced()), "2+3");
}

TYPED_TEST(Calculator, NewValuesNeedTheTextAgain) {
  this->calculator_.SetExpr(_T("a+b"));
  this->calculator_.Set(_T("A"), 2);
  this->calculator_.Set(_T("b"), 3);
  int error = -1;
  EXPECT_EQ(this->calculator_.Calculate(error), 5);
  this->calculator_.Set(_T("A"), 10);
  EXPECT_EQ(this->calculator_.Calculate(error), 5);
  EXPECT_EQ(Utf8(this->calculator_.Calced()), "2+3");
  this->Expect("a+b", 13, 0, "10+3");
}

TYPED_TEST(Calculator, PlainNumbersAreReadWithoutAParse) {
  this->Expect("-12.5", -12.5, 0, "-12.5");
  this->Expect("1.2.3", 1.2, 0, "1.2.3");
  this->Expect("-", 0, 0, "-");
  this->Expect(".5", 0.5, 0, ".5");
  this->Expect("-.5", -0.5, 0, "-.5");
  this->Expect(".", 0, 0, ".");
  this->Expect("-.", 0, 0, "-.");
  this->Expect("007", 7, 0, "007");
  this->Expect("-0", -0.0, 0, "-0");
  this->Expect("5", 5, 0, "5");
  // These are no plain numbers.
  this->Expect("+5", 5, 0, "+5");
  this->Expect("", 0, 0, "");
  this->Expect(" 5", 5, 0, " 5");
  this->Expect("--5", 5, 0, "--5");
  this->Expect("1-5", -4, 0, "1-5");
  this->Expect("+.5", 0, 1, "+.5");
}

TYPED_TEST(Calculator, PlainNumberIsNotSubstituted) {
  this->calculator_.Set(_T("1"), 7);
  this->Expect("1", 1, 0, "1");
  this->Expect("1+0", 7, 0, "7+0");
}

TYPED_TEST(Calculator, KeywordWithoutValueCountsZero) {
  this->calculator_.SetKeyWord({_T("A"), _T("B")});
  this->Expect("A+1", 1, 0, "0+1");
  this->Expect("a*2+b", 0, 0, "0*2+0");
  this->Expect("2A", 0, 0, "2*0");
  this->calculator_.Set(_T("A"), 3);
  this->Expect("A+B+1", 4, 0, "3+0+1");
}

TYPED_TEST(Calculator, NameOutsideTheKeywordsStopsTheWork) {
  this->Expect("A+1", 0, 1, "A+1");
  this->Expect("1+LONG", 0, 6, "1+LONG");
  this->calculator_.SetKeyWord({_T("A")});
  // The other names are not zeroed either.
  this->Expect("A+C", 0, 3, "A+C");
  this->calculator_.Set(_T("B"), 2);
  this->Expect("A+B+C", 0, 5, "A+2+C");
}

TYPED_TEST(Calculator, ErrorGivesDivisionAndPositionInOneNumber) {
  this->Expect("1/0", 0, 1, "1/0");
  this->Expect("SQRT(-1)", 0, 0, "SQRT(-1)");
  this->Expect("LOG(0)+2", 2, 0, "LOG(0)+2");
  this->Expect("SIN()", 0, 0, "SIN()");
  this->Expect("1#2", 0, 1, "1#2");
  this->Expect("#", 0, 0, "#");
  this->Expect("1+", 0, 2, "1+");
  this->Expect("1>=1+", 0, 4, "1>=1+");
  this->Expect("IIF(1,2)", 0, 8, "IIF(1,2)");
  this->Expect("1/0+SQRT(-1)", -1000, 0, "1/0+SQRT(-1)");
  this->Expect("SQRT(-1)+1/0", 0, 1, "SQRT(-1)+1/0");
}

TYPED_TEST(Calculator, ChainWithNamesIsPartedOnceTheyAreNumbers) {
  this->calculator_.Set(_T("H"), 1500);
  this->Expect("1000<H<=2000", 1, 0, "1000<1500<=2000");
  this->calculator_.Set(_T("H"), 500);
  this->Expect("1000<H<=2000", 0, 0, "1000<500<=2000");
  this->calculator_.Set(_T("H"), 2500);
  this->Expect("1000<H<=2000", 0, 0, "1000<2500<=2000");
}

TYPED_TEST(Calculator, MinusSignsJoinTheText) {
  this->calculator_.Set(_T("A"), -2);
  this->Expect("3-A", 5, 0, "3--2");
  this->Expect("A^2", 4, 0, "-2^2");
  this->Expect("3+A", 1, 0, "3+-2");
  this->Expect("+A", 0, 1, "+-2");
  this->Expect("3A", -6, 0, "3*-2");
}

TYPED_TEST(Calculator, ValuesPassThroughTheirShortText) {
  this->calculator_.Set(_T("A"), 1.0 / 3);
  this->Expect("A*3", 1.0 / 3 * 3, 0, "1/3*3");
  this->Expect("2A", 2 * 1.0 / 3, 0, "2*1/3");
  this->Expect("6/A", 6.0 / 1 / 3, 0, "6/1/3");
  this->calculator_.Set(_T("A"), 2.0 / 3);
  this->Expect("A+1", 2.0 / 3 + 1, 0, "2/3+1");
  this->calculator_.Set(_T("A"), 1.2344);
  this->Expect("A*1", 1.234, 0, "1.234*1");
  this->calculator_.Set(_T("A"), 0.0004);
  this->Expect("A+0", 0, 0, "0+0");
  this->calculator_.Set(_T("A"), -0.0001);
  this->Expect("A+0", 0, 0, "-0+0");
  this->calculator_.Set(_T("A"), 1e15);
  this->Expect("A+0", 1e15, 0, "1000000000000000+0");
  this->calculator_.Set(_T("A"), 2147483648.125);
  this->Expect("A+0", 2147483648.125, 0, "2147483648.125+0");
}

TYPED_TEST(Calculator, ShiftedSearchLeavesALaterNameAlone) {
  // Behind a replacement that shortens the text, units are passed over unseen.
  this->calculator_.Set(_T("ABC"), 1);
  this->calculator_.SetExpr(_T("ABC+ABC"));
  int error = 0;
  this->calculator_.Calculate(error);
  EXPECT_EQ(Utf8(this->calculator_.Calced()), "1+ABC");
  EXPECT_EQ(error, 0);
  // What was not reached counts as the stand-in for a name.
  EXPECT_EQ(this->calculator_.Calculate(error), 2);
}

TYPED_TEST(Calculator, ChineseNamesWorkButAreNotListedOrValid) {
  this->calculator_.Set(_T("墙高"), 2.5);
  this->calculator_.Set(_T("墙长"), 4);
  this->Expect("墙高*墙长", 10, 0, "2.5*4");
  EXPECT_EQ(this->Message("1+墙高"), "表达式在第 2 个字符有误");
  EXPECT_EQ(this->Names("墙高+1"), "");
}

TYPED_TEST(Calculator, NamesAreCutToTwentyUnits) {
  this->calculator_.Set(_T("ABCDEFGHIJKLMNOPQRST"), 1);
  this->calculator_.Set(_T("abcdefghijklmnopqrstUV"), 2);
  EXPECT_EQ(this->KeyWords(), "ABCDEFGHIJKLMNOPQRST,");
  this->Expect("ABCDEFGHIJKLMNOPQRST+1", 3, 0, "2+1");
  // The longer name is never found under its full name.
  this->Expect("ABCDEFGHIJKLMNOPQRSTU+1", 0, 21, "ABCDEFGHIJKLMNOPQRSTU+1");
}

TYPED_TEST(Calculator, KeepingAnExistingValue) {
  this->calculator_.Set(_T("A"), 1, true);
  this->calculator_.Set(_T("a"), 2, true);
  this->Expect("A+0", 1, 0, "1+0");
  this->calculator_.Set(_T("a"), 3, false);
  this->Expect("A+0", 3, 0, "3+0");
  EXPECT_EQ(this->KeyWords(), "A,");
}

TYPED_TEST(Calculator, NamesBecomeKeywordsAsGiven) {
  this->calculator_.Set(_T("b"), 1);
  this->calculator_.Set(_T("A"), 1);
  this->calculator_.Set(_T("B"), 1);
  EXPECT_EQ(this->KeyWords(), "A,b,");
}

TYPED_TEST(Calculator, ListOfValues) {
  EXPECT_EQ(this->calculator_.SetList(_T("A:1;B;C:2:3;D:4")), 2);
  EXPECT_EQ(this->KeyWords(), "A,D,");
  this->Expect("A+D", 5, 0, "1+4");
  EXPECT_EQ(this->calculator_.SetList(_T("a:1;;b: 2.5x;:7;")), 3);
  this->Expect("A+B", 3.5, 0, "1+2.5");
  EXPECT_EQ(this->KeyWords(), ",A,b,D,");
  EXPECT_EQ(this->calculator_.SetList(_T("E:1e2;E:-3;F:abc")), 2);
  this->Expect("E+F+A", -3, 0, "-3+0+0");
  EXPECT_EQ(this->calculator_.SetList(_T("")), 0);
  this->Expect("A+D", 0, 0, "0+0");
  EXPECT_EQ(this->calculator_.SetList(_T(";;")), 0);
}

TYPED_TEST(Calculator, MapOfValuesReplacesAll) {
  this->calculator_.Set(_T("X"), 9);
  EXPECT_EQ(this->calculator_.SetMap({{_T("a"), 1.0}, {_T("B"), 2.0}, {_T("A"), 3.0}}), 2);
  // "A" sorts before "a": the later value stands.
  this->Expect("A+B+X", 3, 0, "1+2+0");
  EXPECT_EQ(this->calculator_.SetMap({}), 0);
  this->Expect("A+B+X", 0, 0, "0+0+0");
}

TYPED_TEST(Calculator, ClearingValuesKeepsTheKeywords) {
  this->calculator_.Set(_T("A"), 5);
  this->calculator_.ClearAllValue();
  EXPECT_EQ(this->KeyWords(), "A,");
  this->Expect("A+1", 1, 0, "0+1");
}

TYPED_TEST(Calculator, ValuesGoInByOrderOfName) {
  // "_" stands before letters, digits before it: A's text is put in before B is looked for.
  this->calculator_.Set(_T("A"), 7);
  this->calculator_.Set(_T("7"), 8);
  this->Expect("A+0", 7, 0, "7+0");
  this->calculator_.Set(_T("Z"), 7);
  this->Expect("Z+7", 15, 0, "7+8");
}

TYPED_TEST(Calculator, InfiniteAndNoNumbersAreNames) {
  constexpr double kBeyond = std::numeric_limits<double>::infinity();
  this->calculator_.Set(_T("A"), kBeyond);
  this->Expect("A+1", 0, 3, "inf+1");
  this->calculator_.Set(_T("A"), -kBeyond);
  this->Expect("A+1", 0, 4, "-inf+1");
  this->calculator_.Set(_T("A"), std::numeric_limits<double>::quiet_NaN());
  this->Expect("A+1", 0, 3, "nan+1");
}

TYPED_TEST(Calculator, ValidityNamesThePlace) {
  this->calculator_.SetKeyWord({_T("A")});
  EXPECT_EQ(this->Message("A+1"), "");
  EXPECT_EQ(this->Message("1+"), "表达式在第 2 个字符有误");
  EXPECT_EQ(this->Message("B"), "表达式在第 1 个字符有误");
  EXPECT_EQ(this->Message("1>=1+"), "表达式在第 4 个字符有误");
  EXPECT_EQ(this->Message(""), "表达式在第 0 个字符有误");
  EXPECT_EQ(this->Message("A/(A-A)"), "除数为零");
  EXPECT_EQ(this->Message("1/0"), "除数为零");
  EXPECT_EQ(this->Message("1/0+SQRT(-1)"), "");
  EXPECT_EQ(this->Message("SQRT(-1)"), "");
  EXPECT_EQ(this->Message("A/A"), "");
}

TYPED_TEST(Calculator, ValidityLooksAtTheTextAsSet) {
  this->calculator_.Set(_T("A"), 0);
  EXPECT_EQ(this->Message("1/A"), "");
  int error = 0;
  this->calculator_.Calculate(error);
  EXPECT_EQ(error, 1);
  CString message;
  EXPECT_TRUE(this->calculator_.ValidExp(message));
}

TYPED_TEST(Calculator, TextIsCutAt1023AndFlaggedAbove1024) {
  for (const int length : {1022, 1023, 1024, 1025, 3000}) {
    CString text = _T("1");
    while (text.GetLength() + 1 < length) text += _T("+1");
    if (text.GetLength() < length) text += _T(" ");
    ASSERT_EQ(text.GetLength(), length);
    this->calculator_.SetExpr(text);
    EXPECT_EQ(this->calculator_.Expr().GetLength(), length < 1023 ? length : 1023);
    EXPECT_EQ(this->calculator_.Calced().GetLength(), length < 1023 ? length : 1023);
    CString message;
    EXPECT_EQ(this->calculator_.ValidExp(message), length <= 1024) << length;
    EXPECT_EQ(Utf8(message), length <= 1024 ? "" : "字符太长,最长只能处理1024个字符的表达式!") << length;
    int error = -1;
    EXPECT_EQ(this->calculator_.Calculate(error), length < 1023 ? 511 : 512) << length;
    EXPECT_EQ(error, 0);
  }
  this->calculator_.SetExpr(_T("1"));
  CString message;
  EXPECT_TRUE(this->calculator_.ValidExp(message));
}

TYPED_TEST(Calculator, NamesAreListedInOrderWithRepeats) {
  this->calculator_.SetKeyWord({_T("A"), _T("B"), _T("A_1")});
  EXPECT_EQ(this->Names("A+B*A"), "A,B,A,");
  EXPECT_EQ(this->Names("a_1/2b"), "A_1,B,");
  EXPECT_EQ(this->Names("A+C"), "");
  EXPECT_EQ(this->Names("1+2"), "");
  EXPECT_EQ(this->Names("A+"), "");
  EXPECT_EQ(this->Names("PI*A"), "A,");
  EXPECT_EQ(this->Names(""), "");
}

TYPED_TEST(Calculator, AHundredAndMoreNamesAreAllZeroed) {
  this->calculator_.SetKeyWord({_T("LONG_NAME_1"), _T("B")});
  CString text = _T("B");
  for (int i = 0; i < 80; ++i) text += _T("+LONG_NAME_1");
  this->calculator_.SetExpr(text);
  EXPECT_EQ(this->calculator_.Vars().size(), 81u);
}

// What one of the two calculators cannot do: pointers, copies, overloads.

TEST(CalculatorObject, HeaderExample) {
  CAdExpCalculate c(_T("a+b"));
  c.SetVarValue(CString(_T("A:2;b:3")));
  EXPECT_EQ(c.Calculate(), 5);
}

TEST(CalculatorObject, MapOfTheCallerIsUsedAndOutlivesTheCalculator) {
  CMapValue map;
  map[_T("a")] = 2;
  {
    CAdExpCalculate calculator;
    calculator.SetKeyWord(StringArray({_T("A"), _T("B")}));
    EXPECT_EQ(calculator.SetVarValue(&map), 1);
    EXPECT_EQ(calculator.SetVarValue(&map), 1);
    calculator.SetExpr(_T("A*10+B"));
    EXPECT_EQ(calculator.Calculate(), 20);
    map[_T("B")] = 1;
    calculator.SetExpr(_T("A*10+B"));
    EXPECT_EQ(calculator.Calculate(), 21);
    calculator.SetVarValue(_T("C"), 4, false);
    EXPECT_EQ(map.size(), 3u);
  }
  EXPECT_EQ(map[_T("A")], 2);
}

TEST(CalculatorObject, MapByPointerOrValueMakesNoKeywords) {
  CMapValue map;
  map[_T("AB")] = 2;
  CAdExpCalculate calculator;
  calculator.SetVarValue(&map);
  EXPECT_EQ(calculator.GetKeywords().size(), 0u);
  CAdExpCalculate other;
  EXPECT_EQ(other.SetVarValue(map), 1);
  EXPECT_EQ(other.GetKeywords().size(), 0u);
  // The value reaches the text all the same.
  other.SetExpr(_T("AB+1"));
  EXPECT_EQ(other.Calculate(), 3);
}

TEST(CalculatorObject, ClearingEmptiesTheMapOfTheCaller) {
  CMapValue map;
  map[_T("A")] = 2;
  CAdExpCalculate calculator;
  calculator.SetVarValue(&map);
  calculator.ClearAllValue();
  EXPECT_EQ(map.size(), 0u);
}

TEST(CalculatorObject, ListLeavesAnExternalMapAlone) {
  CMapValue map;
  map[_T("A")] = 2;
  CAdExpCalculate calculator;
  calculator.SetVarValue(&map);
  EXPECT_EQ(calculator.SetVarValue(CString(_T("B:3"))), 1);
  EXPECT_EQ(map.size(), 1u);
  calculator.SetVarValue(&map);
  EXPECT_EQ(calculator.SetVarValue(std::map<CString, double>{{_T("C"), 1.0}}), 1);
  EXPECT_EQ(map.size(), 1u);
  calculator.SetVarValue(&map);
  EXPECT_EQ(calculator.SetVarValue(CString(_T(""))), 0);
  EXPECT_EQ(map.size(), 1u);
}

TEST(CalculatorObject, MapGivenUpIsOwnedAfterACopyInto) {
  CMapValue* map = new CMapValue;
  CMapValue values;
  values[_T("A")] = 5;
  CAdExpCalculate calculator;
  calculator.SetVarValue(map);
  calculator.SetVarValue(values);
  calculator.SetExpr(_T("A+0"));
  EXPECT_EQ(calculator.Calculate(), 5);
}

TEST(CalculatorObject, CopyAcceptsNoNamesButKnowsTheValues) {
  CAdExpCalculate source;
  source.SetExpr(_T("a+c"));
  source.SetVarValue(_T("A"), 2, false);
  source.SetVarValue(_T("B"), 9, false);
  source.SetKeyWord(StringArray({_T("A"), _T("C")}));
  CAdExpCalculate copy(source);
  EXPECT_EQ(copy.GetKeywords().size(), 0u);
  EXPECT_EQ(Utf8(copy.GetExpr()), "A+C");
  int error = 0;
  EXPECT_EQ(copy.Calculate(error), 0);
  EXPECT_EQ(error, 3);
  EXPECT_EQ(Utf8(copy.GetCalcedExpr()), "2+C");
  EXPECT_EQ(source.Calculate(error), 2);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Utf8(source.GetCalcedExpr()), "2+0");
}

TEST(CalculatorObject, CopyTakesTheWorkedTextAndTheFlag) {
  CAdExpCalculate source;
  source.SetExpr(_T("a+1"));
  source.SetVarValue(_T("A"), 2, false);
  source.Calculate();
  CAdExpCalculate copy(source);
  EXPECT_EQ(Utf8(copy.GetExpr()), "A+1");
  EXPECT_EQ(Utf8(copy.GetCalcedExpr()), "2+1");
  CString text;
  for (int i = 0; i < 1100; ++i) text += _T("1");
  source.SetExpr(text);
  CString message;
  EXPECT_FALSE(CAdExpCalculate(source).ValidExp(message));
}

TEST(CalculatorObject, AssignmentTakesKeywordsAndSharesTheValues) {
  CAdExpCalculate target;
  target.SetVarValue(_T("Z"), 1, false);
  {
    CAdExpCalculate source;
    source.SetExpr(_T("a+1"));
    source.SetVarValue(_T("A"), 2, false);
    target = source;
    target.SetVarValue(_T("A"), 7, false);
    EXPECT_EQ(source.Calculate(), 8);
  }
  EXPECT_EQ(target.GetKeywords().size(), 1u);
  EXPECT_EQ(target.Calculate(), 8);
  CAdExpCalculate& same = target;
  target = same;
  EXPECT_EQ(target.Calculate(), 8);
}

TEST(CalculatorObject, SplitGivesStringsToo) {
  CAdExpCalculate calculator(_T("a+b*a"));
  calculator.SetKeyWord(StringArray({_T("A"), _T("B")}));
  CStringArray names;
  names.Add(_T("old"));
  EXPECT_EQ(calculator.SplitExprVars(names), 3);
  ASSERT_EQ(names.GetSize(), 3);
  EXPECT_EQ(Utf8(names.GetAt(1)), "B");
  calculator.SetExpr(_T("a+x"));
  EXPECT_EQ(calculator.SplitExprVars(names), 0);
  EXPECT_EQ(names.GetSize(), 0);
}

TEST(CalculatorObject, NullTextIsEmpty) {
  CAdExpCalculate calculator;
  calculator.SetExpr(nullptr);
  int error = 5;
  EXPECT_EQ(calculator.Calculate(error), 0);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Utf8(calculator.GetExpr()), "");
}

}  // namespace
TEST(Calculator, NullForTheValuesIsAnOwnEmptyMap) {
  CMapValue values;
  values[_T("A")] = 2;
  CAdExpCalculate c(CString(_T("A+1")));
  c.SetVarValue(&values);
  EXPECT_EQ(c.SetVarValue(nullptr), 1);
  EXPECT_TRUE(c.Values().empty());
  EXPECT_EQ(values.size(), 1U);
}

}  // namespace lorv::test
