// The library against the slow reference: every short formula, then random ones, whole and broken.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/reference/formula_difference.h"
#include "tests/support/checked_share.h"

namespace lorv::test {
namespace {

const std::vector<Text> kKnownNames = {_T("A"), _T("B"), _T("H"), _T("A1"), _T("A_1"), _T("AB"), _T("E3")};

constexpr int kShare = CheckedShare(5);

void ExpectSame(const Text& formula, bool resolves) {
  const std::string difference = ParserDifference(formula, resolves, kKnownNames);
  if (difference.empty()) return;
  const Text small = ShrunkFormula(formula, resolves, kKnownNames);
  FAIL() << "formula \"" << Shown(small) << (resolves ? "\" with" : "\" without")
         << " a name resolver: " << ParserDifference(small, resolves, kKnownNames);
}

// Every text of one to `most` tokens.
template <std::size_t N>
void ExpectSameForAll(const TCHAR* const (&tokens)[N], int most, bool resolves) {
  std::vector<std::size_t> choice;
  long count = 0;
  for (int length = 1; length <= most; ++length) {
    choice.assign(static_cast<std::size_t>(length), 0);
    for (bool more = true; more && !testing::Test::HasFatalFailure();) {
      Text formula;
      for (const std::size_t token : choice) formula += tokens[token];
      if (++count % kShare == 0) ExpectSame(formula, resolves);
      more = false;
      for (std::size_t& token : choice) {
        if (++token < N) {
          more = true;
          break;
        }
        token = 0;
      }
    }
  }
}

TEST(FormulaDifference, EveryFormulaOfFiveArithmeticTokens) {
  const TCHAR* const kTokens[] = {_T("2"), _T("0"), _T("A"), _T("-"), _T("+"), _T("/"),
                                  _T("^"), _T("("), _T(")"), _T("|"), _T(" ")};
  ExpectSameForAll(kTokens, 5, true);
}

TEST(FormulaDifference, EveryFormulaOfFiveComparingTokens) {
  const TCHAR* const kTokens[] = {_T("1"), _T("3."), _T("-"), _T("<"), _T(">"),
                                  _T("="), _T("!"),  _T("&"), _T("|"), _T(" OR ")};
  ExpectSameForAll(kTokens, 5, false);
}

TEST(FormulaDifference, EveryFormulaOfFiveTokensWithCallsAndTexts) {
  const TCHAR* const kTokens[] = {_T("1"), _T("'A'"), _T("X"), _T("IIF("), _T("MAX("), _T("FIND("),
                                  _T(","), _T(")"),   _T("="), _T("+"),    _T(" AND ")};
  ExpectSameForAll(kTokens, 5, false);
}

TEST(FormulaDifference, EveryFormulaOfThreeTokensOfAll) {
  const TCHAR* const kTokens[] = {
      _T("1"),    _T("."),    _T("A"),    _T("ZZ"),     _T("PI"),  _T("_"),     _T("SIN"),  _T("SQRT("),
      _T("LOG("), _T("LEN("), _T("IIF("), _T("("),      _T(")"),   _T("|"),     _T("'"),    _T("''"),
      _T(","),    _T(" "),    _T("+"),    _T("-"),      _T("*"),   _T("/"),     _T("^"),    _T("!"),
      _T("<"),    _T(">"),    _T("="),    _T("&&"),     _T("||"),  _T(" AND "), _T("\x04"), _T("\x08"),
      _T("\x09"), _T("墙"),   _T("#"),    _T("\xD800"), _T("1E3"), _T("0!"),    _T("AND"),  _T("@")};
  ExpectSameForAll(kTokens, 3, true);
  ExpectSameForAll(kTokens, 3, false);
}

// Operands where the answers turn: signed zeros, tolerances, 32-bit ends, no numbers, infinity, texts,
// errors.
const TCHAR* const kOperands[] = {_T("0"),
                                  _T("-0"),
                                  _T("1"),
                                  _T("-1"),
                                  _T("2"),
                                  _T("0.5"),
                                  _T("-0.5"),
                                  _T("2.5"),
                                  _T("1.000000001"),
                                  _T("1.0000000009"),
                                  _T("1.0000000011"),
                                  _T("1.000000002"),
                                  _T("0.9999999999"),
                                  _T("2.9999999999"),
                                  _T("3.0000000001"),
                                  _T("2.99999999985"),
                                  _T("3.00000000015"),
                                  _T("0.4999999999999994"),
                                  _T("0.49999999999999"),
                                  _T("2147483647.5"),
                                  _T("2147483648"),
                                  _T("-2147483648.5"),
                                  _T("-2147483649"),
                                  _T("30"),
                                  _T("90"),
                                  _T("EXP(1000)"),
                                  _T("-EXP(1000)"),
                                  _T("(EXP(1000)-EXP(1000))"),
                                  _T("''"),
                                  _T("'A'"),
                                  _T("'AB'"),
                                  _T("'_'"),
                                  _T("(1/0)"),
                                  _T("SQRT(-1)"),
                                  _T("SIN()")};

TEST(FormulaDifference, EveryOperatorOnEveryPairOfOperands) {
  for (const TCHAR* sign : {_T("+"), _T("-"), _T("*"), _T("/"), _T("^"), _T("!"), _T("<"), _T(">"), _T("="),
                            _T("<>"), _T(">="), _T("<="), _T("&&"), _T("||")}) {
    for (const TCHAR* left : kOperands) {
      for (const TCHAR* right : kOperands) ExpectSame(Text(_T("(")) + left + _T(")") + sign + right, false);
    }
  }
}

TEST(FormulaDifference, EveryFunctionOnEveryOperand) {
  for (const TCHAR* name :
       {_T("ABS"),  _T("ACOS"), _T("ASIN"), _T("ATAN"), _T("ATG"),  _T("CEIL"),  _T("COS"),
        _T("COSA"), _T("CTG"),  _T("CTGA"), _T("DTOR"), _T("EXP"),  _T("FIND"),  _T("FLOOR"),
        _T("INT"),  _T("LEN"),  _T("LOG"),  _T("MAX"),  _T("MIN"),  _T("ROUND"), _T("RTOD"),
        _T("SIN"),  _T("SINA"), _T("SQRT"), _T("TAN"),  _T("TANA"), _T("TG")}) {
    for (const TCHAR* first : kOperands) {
      const Text call = Text(name) + _T("(") + first;
      ExpectSame(call + _T(")"), false);
      for (const TCHAR* second : kOperands) ExpectSame(call + _T(",") + second + _T(")"), false);
    }
  }
}

TEST(FormulaDifference, ListsOfThreeOperands) {
  for (const TCHAR* name : {_T("MAX("), _T("MIN("), _T("IIF(")}) {
    for (const TCHAR* first : kOperands) {
      for (const TCHAR* second : kOperands) {
        const Text call = Text(name) + first + _T(",") + second + _T(",");
        for (const TCHAR* third : kOperands) ExpectSame(call + third + _T(")"), false);
      }
    }
  }
}

Text Repeated(const Text& piece, int count) {
  Text text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

// Trees are evaluated one way to some depth, another way below it.
TEST(FormulaDifference, ChainsOfEveryDepth) {
  for (const int depth : {1, 2, 30, 248, 249, 250, 251, 252, 499, 500, 501, 700}) {
    for (const TCHAR* first :
         {_T("2"), _T("1/0"), _T("SQRT(-1)"), _T("'A'"), _T("(1/0)/LOG(0)"), _T("SIN()")}) {
      for (const TCHAR* link :
           {_T("+1"), _T("-0.1"), _T("/3"), _T("/0"), _T("+'A'"), _T("<2"), _T("&&1"), _T("||0")})
        ExpectSame(first + Repeated(link, depth), false);
      for (const TCHAR* open :
           {_T("1+("), _T("2-("), _T("1/("), _T("MAX(1,"), _T("IIF(1,"), _T("0||("), _T("ABS(")}) {
        const Text close = Text(open) == _T("IIF(1,") ? Text(_T(",1/0)")) : Text(_T(")"));
        ExpectSame(Repeated(open, depth) + first + Repeated(close, depth), false);
      }
    }
    ExpectSame(_T("'A'") + Repeated(_T("+'A'"), depth) + _T("='A'") + Repeated(_T("+'a'"), depth), false);
    ExpectSame(Repeated(_T("-"), depth) + _T("5"), false);
  }
}

TEST(FormulaDifference, NumbersOfEveryLength) {
  const Text digits = _T("98765432109876543210987654321098765432109876543210");
  for (std::size_t length = 1; length <= digits.size(); ++length) {
    for (std::size_t point = 1; point <= length; ++point) {
      Text number = digits.substr(0, length);
      number.insert(point, 1, '.');
      ExpectSame(number, false);
      ExpectSame(Text(_T("0.0000")) + number, false);
      ExpectSame(_T("1+") + number + _T(".7*2"), false);
      ExpectSame(number + _T("A1+1"), true);
    }
    ExpectSame(digits.substr(0, length), false);
    ExpectSame(_T("000000000000000000000000") + digits.substr(0, length) + _T(" *2"), false);
  }
}

TEST(FormulaDifference, ChainedComparisonsOverEveryStretch) {
  for (const TCHAR* middle :
       {_T("2"), _T("2.5"), _T("-1"), _T("-"), _T("."), _T("2-1"), _T("A"), _T("2+1"), _T("(2)"), _T("")}) {
    for (const TCHAR* first : {_T("<"), _T(">"), _T("="), _T("<="), _T(">="), _T("<>"), _T("=="), _T("!=")}) {
      for (const TCHAR* second :
           {_T("<"), _T(">"), _T("="), _T("<="), _T("=>"), _T("=<"), _T("<>"), _T("!=")}) {
        for (const TCHAR* tail : {_T("3"), _T("3<4"), _T("3>2=1"), _T("3&&1<2<3"), _T("A OR 4=4=1")})
          ExpectSame(Text(_T("1")) + first + middle + second + tail, true);
      }
    }
  }
}

TEST(FormulaDifference, RandomFormulas) {
  ChoiceSource source(20240601);
  for (int i = 0; i < 100000 / kShare; ++i) {
    const Text formula = MakeAnyFormula(source);
    ExpectSame(formula, !source.OneIn(3));
    if (HasFatalFailure()) break;
  }
}

TEST(FormulaDifference, RandomCalculations) {
  ChoiceSource source(20240602);
  for (int i = 0; i < 60000 / kShare; ++i) {
    const CalculatorCase made = MakeCalculatorCase(source);
    if (CalculatorDifference(made).empty()) continue;
    const CalculatorCase small = Shrunk(made);
    FAIL() << Shown(small) << '\n' << CalculatorDifference(small);
  }
}

TEST(FormulaDifference, RandomRewriting) {
  ChoiceSource source(20240603);
  for (int i = 0; i < 60000 / kShare; ++i) {
    const RewritingCase made = MakeRewritingCase(source);
    if (RewritingDifference(made).empty()) continue;
    const RewritingCase small = Shrunk(made);
    FAIL() << Shown(small) << '\n' << RewritingDifference(small);
  }
}

}  // namespace
}  // namespace lorv::test
