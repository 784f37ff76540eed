// The zero rules, one by one.

#include <gtest/gtest.h>

#include "tests/TEXPRESSCAL/simplify/legacy/simplifier_rules.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(SimplifierZero, IsValueLooksAtTheFirstDivisionByZeroOnly) {
  const struct {
    LPCTSTR text;
    bool value;
  } cases[] = {
      {_T("a+b"), true},        {_T("a/0"), false},    {_T("a/0.5"), true}, {_T("a/0.5+b/0"), true},
      {_T("a/0+b/0.5"), false}, {_T("a/00"), false},   {_T("a/01"), true},  {_T("a/0*5"), false},
      {_T("a/0.0"), false},     {_T("(a/0)5"), false}, {_T("a/0x5"), true}, {_T("a/0墙"), false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(rules.IsValue(c.text), c.value) << Utf8(c.text);
    EXPECT_EQ(rules.ReplaceDivisionZero(c.text), !c.value) << Utf8(c.text);
  }
}

TEST(SimplifierZero, ProductsWithAZeroFactorBecomeZero) {
  const auto cut = [](CString& text) {
    return rules.ReplaceMutiZeroAndSubtration(text, _T("*0"), text.Find(_T("*0")));
  };
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T("a*0"), "0 1"},
      {_T("a*0+b"), "0+b 1"},
      {_T("c-a*0+b"), "c-0+b 1"},
      {_T("(a+b)*0"), "0 1"},
      {_T("5*0.0"), "0 1"},
      {_T("5*0.5"), "5*0.5 0"},
      {_T("*0"), "0 1"},
      {_T("b+max(a)*0"), "b+0 1"},  // the call belongs to the product
      {_T("sin(a*0)"), "s0) 1"},    // an inner product takes its function's name along
      {_T("b+(a*0)"), "b+(0) 1"},   // a bracket behind an operator is left out
      {_T("b,sin(a*0)"), "b,0) 1"},
      {_T("2*a*0"), "2*0 1"},
      {_T("a"), "a 0"},  // no hit
  };
  for (const auto& c : cases) EXPECT_EQ(SimplifierRules::After(c.text, cut), c.after) << Utf8(c.text);
}

TEST(SimplifierZero, SignsMoveInFrontOfTheProduct) {
  const auto move = [](LPCTSTR token) {
    return
        [token](CString& text) { return rules.ReplaceMutiZeroAndSubtration(text, token, text.Find(token)); };
  };
  EXPECT_EQ(SimplifierRules::After(_T("a*-b"), move(_T("*-"))), "-a*b 1");
  EXPECT_EQ(SimplifierRules::After(_T("c+a*-b"), move(_T("*-"))), "c-a*b 1");
  EXPECT_EQ(SimplifierRules::After(_T("c-a*-b"), move(_T("*-"))), "c+a*b 1");
  EXPECT_EQ(SimplifierRules::After(_T("a/-b"), move(_T("/-"))), "-a/b 1");
  EXPECT_EQ(SimplifierRules::After(_T("c*a/-b"), move(_T("/-"))), "c*-a/b 1");
  EXPECT_EQ(SimplifierRules::After(_T("*-b"), move(_T("*-"))), "-*b 1");
  EXPECT_EQ(SimplifierRules::After(_T("a*b"), move(_T("*-"))), "a*b 0");
  EXPECT_EQ(SimplifierRules::After(_T("x--y+-z*-w"), move(_T("*-"))),
            "x+y++z*w 1");  // each pair of signs joins once
}

TEST(SimplifierZero, ZeroInFrontOfAProduct) {
  const auto cut = [](LPCTSTR token) {
    return [token](CString& text) { return rules.ReplaceZeroMutiple(text, token, text.Find(token)); };
  };
  EXPECT_EQ(SimplifierRules::After(_T("0*a-b"), cut(_T("0*"))), "0-b 1");
  EXPECT_EQ(SimplifierRules::After(_T("0*a*b"), cut(_T("0*"))), "0*b 1");
  EXPECT_EQ(SimplifierRules::After(_T("0/(a+b)+c"), cut(_T("0/"))), "0+c 1");
  EXPECT_EQ(SimplifierRules::After(_T("10*a"), cut(_T("0*"))), "10*a 0");
  EXPECT_EQ(SimplifierRules::After(_T("x0*y"), cut(_T("0*"))), "0 1");  // a letter does not stop the scan
  EXPECT_EQ(SimplifierRules::After(_T("0*"), cut(_T("0*"))), "0 1");
  EXPECT_EQ(SimplifierRules::After(_T("f(0*a)"), cut(_T("0*"))), "f(0) 1");
  EXPECT_EQ(SimplifierRules::After(_T("a"), cut(_T("0*"))), "a 0");
}

TEST(SimplifierZero, ZeroBehindASum) {
  const auto cut = [](LPCTSTR token) {
    return [token](CString& text) { return rules.ReplaceAndSubtrationZero(text, token, text.Find(token)); };
  };
  EXPECT_EQ(SimplifierRules::After(_T("a+0"), cut(_T("+0"))), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T("a-0+b"), cut(_T("-0"))), "a+b 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+0.5"), cut(_T("+0"))), "a+0.5 0");
  EXPECT_EQ(SimplifierRules::After(_T("(-0+1)"), cut(_T("-0"))), "(1) 1");
  EXPECT_EQ(SimplifierRules::After(_T("(-0-1)"), cut(_T("-0"))), "(-1) 1");
  EXPECT_EQ(SimplifierRules::After(_T("-0+1"), cut(_T("-0"))), "+1 1");  // at the very start the "+" stays
  EXPECT_EQ(SimplifierRules::After(_T("a+0)"), cut(_T("+0"))), "a) 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+0x"), cut(_T("+0"))), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T("a"), cut(_T("+0"))), "a 0");
}

TEST(SimplifierZero, ZeroInFrontOfASum) {
  const auto cut = [](LPCTSTR token) {
    return [token](CString& text) { return rules.ReplaceZeroAndSubtration(text, token, text.Find(token)); };
  };
  EXPECT_EQ(SimplifierRules::After(_T("0-a"), cut(_T("0-"))), "-a 1");
  EXPECT_EQ(SimplifierRules::After(_T("0+a"), cut(_T("0+"))), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T("(0+a)"), cut(_T("0+"))), "(a) 1");
  EXPECT_EQ(SimplifierRules::After(_T("10-a"), cut(_T("0-"))), "10-a 0");
  EXPECT_EQ(SimplifierRules::After(_T("00+a"), cut(_T("0+"))), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T("a"), cut(_T("0+"))), "a 0");
}

TEST(SimplifierZero, ProductsFirstAndTheFirstDivisionByZeroEndsThem) {
  const auto run = [](CString& text) { return rules.ZeroAndMutipleAndDvsion(text); };
  EXPECT_EQ(SimplifierRules::After(_T("a/0+b*0"), run), "a/0+b*0 -1");
  EXPECT_EQ(SimplifierRules::After(_T("a/0.5+b/0"), run), "a/0.5+b/0 0");
  EXPECT_EQ(SimplifierRules::After(_T("a*0+b*0+0*c"), run), "0+0+0 1");
  EXPECT_EQ(SimplifierRules::After(_T("a*0.5+b*0"), run), "a*0.5+0 1");  // goes on behind a place that stays
  EXPECT_EQ(SimplifierRules::After(_T("a*b"), run), "a*b 0");
  EXPECT_EQ(SimplifierRules::After(_T("0/a"), run), "0 1");
}

TEST(SimplifierZero, SumsWithZero) {
  const auto run = [](CString& text) { return rules.ZeroAndAddAndSubtratration(text); };
  EXPECT_EQ(SimplifierRules::After(_T("a-0+0-b"), run), "a-b 1");
  EXPECT_EQ(SimplifierRules::After(_T("0+a"), run), "a 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+0.5-0"), run), "a+0.5 1");
  EXPECT_EQ(SimplifierRules::After(_T("a+b"), run), "a+b 0");
}

TEST(SimplifierZero, RepeatedOperatorsJoin) {
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T("a++b"), "a+b"},      {_T("a--b"), "a+b"},  {_T("a+-b"), "a-b"},     {_T("a-+b"), "a-b"},
      {_T("a*+b"), "a*b"},      {_T("a/+b"), "a/b"},  {_T("a+++++b"), "a+b"},  {_T("a---b"), "a-b"},
      {_T("a*-b"), "-a*b"},     {_T("a/-b"), "-a/b"}, {_T("c+a*-b"), "c-a*b"}, {_T("a*-b*-c"), "+a*b*c"},
      {_T("c*a/-b"), "c*-a/b"},  // the products' turn is over when the quotients come
      {_T("a*-*-b"), "+a**b"},  {_T("a+b"), "a+b"},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    rules.ClearRepeatOperator(text);
    EXPECT_EQ(Utf8(text), c.after) << Utf8(c.text);
  }
}

TEST(SimplifierZero, OptimizateZeroRunsAllRulesInTheirOrder) {
  const auto run = [](CString& text) { return rules.OptimizateZero(text); };
  const struct {
    LPCTSTR text;
    const char* after;
  } cases[] = {
      {_T(""), "0 1"},
      {_T("a*0+b"), "b 1"},
      {_T("0*a-b"), "-b 1"},
      {_T("+a"), "a 1"},
      {_T("a+"), "a 1"},
      {_T("a-"), "a 1"},
      {_T("a*"), "a* 1"},
      {_T("+"), "0 1"},
      {_T("0+0"), "0 1"},
      {_T("a/0"), "a/0 0"},
      {_T("--a/0"), "+a/0 0"},
      {_T("(3)+(4)"), "3+(4) 1"},
      {_T("A+0"), "A 1"},  // letters keep their case here
      {_T("c*a/-b*-d"), "c*a/b*d 1"},
  };
  for (const auto& c : cases) EXPECT_EQ(SimplifierRules::After(c.text, run), c.after) << Utf8(c.text);
}

}  // namespace
}  // namespace lorv
