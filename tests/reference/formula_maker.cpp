#include "tests/reference/formula_maker.h"

#include <bit>
#include <limits>

namespace lorv::test {

namespace {

const TCHAR* const kNames[] = {
    _T("A"),
    _T("B"),
    _T("H"),
    _T("a"),
    _T("AB"),
    _T("A1"),
    _T("A_1"),
    _T("ABC"),
    _T("B2"),
    _T("X"),
    _T("E3"),
    _T("墙"),
    _T("墙高"),
    _T("H墙"),
    _T("LONG_NAME_OF_WALL"),
    _T("SOME_VERY_LONG_NAME_INDEED"),
};
const TCHAR* const kOddNames[] = {
    _T(""),  _T("1"),   _T("7"),   _T("."),   _T("-"),   _T("+"),   _T("1+"), _T("PI"), _T("SIN"),
    _T("0"), _T("_"),   _T("INF"), _T("NAN"), _T("inf"), _T("("),   _T("3*"), _T("/"),  _T("F"),
    _T("N"), _T("A B"), _T(" "),   _T("'"),   _T("=2"),  _T("AND"), _T(" A"), _T("R"),  _T("墙1"),
};
const TCHAR* const kNumbers[] = {
    _T("0"),
    _T("1"),
    _T("2"),
    _T("10"),
    _T("0.5"),
    _T("1.2.3"),
    _T("007"),
    _T("3."),
    _T("0.001"),
    _T("180"),
    _T("1000000000"),
    _T("0.0000000001"),
    _T("999999999999999999"),
    _T("2.9999999999999"),
    _T("1.0000000001"),
    _T("30"),
    _T("4503599627370497.5"),
};
const TCHAR* const kBinary[] = {
    _T("+"),     _T("+"),   _T("-"),  _T("-"),  _T("*"),    _T("*"),    _T("/"),     _T("/"),
    _T("^"),     _T("!"),   _T("<"),  _T(">"),  _T("="),    _T("<="),   _T(">="),    _T("=<"),
    _T("=>"),    _T("!="),  _T("<>"), _T("=="), _T("&&"),   _T("||"),   _T(" AND "), _T(" OR "),
    _T(" and "), _T(" + "), _T("- "), _T(" *"), _T("\x04"), _T("\x09"),
};
const TCHAR* const kFunctions[] = {
    _T("ABS"),  _T("ACOS"), _T("ASIN"), _T("ATAN"), _T("ATG"), _T("CEIL"), _T("COS"),
    _T("COSA"), _T("CTG"),  _T("CTGA"), _T("DTOR"), _T("EXP"), _T("FIND"), _T("FLOOR"),
    _T("IIF"),  _T("INT"),  _T("LEN"),  _T("LOG"),  _T("MAX"), _T("MIN"),  _T("ROUND"),
    _T("RTOD"), _T("SIN"),  _T("SINA"), _T("SQRT"), _T("TAN"), _T("TANA"), _T("TG"),
    _T("max"),  _T("Iif"),  _T("IIF"),  _T("MAX"),  _T("MIN"), _T("IIF"),
};
const TCHAR* const kQuoted[] = {
    _T("''"),   _T("'A'"),   _T("'ab'"), _T("'B'"), _T("'砖墙'"),
    _T("'墙'"), _T("'A=B'"), _T("'_'"),  _T("' '"), _T("'1'"),
};
const TCHAR kOddUnits[] = {
    '(',    ')',    '|',    '\'',   ' ',    ' ',    '+',    '-',    '*',    '/',    '^', '!',  '<',
    '>',    '=',    '&',    '|',    ',',    '.',    '.',    '0',    '1',    '9',    'A', 'Z',  'a',
    'z',    '_',    '#',    '@',    '[',    ']',    '{',    ':',    ';',    '"',    '%', '\\', '~',
    1,      3,      4,      5,      6,      7,      8,      9,      10,     13,     31,  127,  0xA0,
    0x5899, 0x3000, 0xFF08, 0xFF0C, 0xD83D, 0xDE00, 0xDC00, 0xD800, 0xFFFF, 0xFEFF,
};

const double kValues[] = {
    0,
    -0.0,
    1,
    -1,
    2,
    3,
    7,
    10,
    0.5,
    -0.5,
    1.5,
    2.25,
    100,
    1000,
    1500,
    -2.5,
    12.345,
    0.1,
    0.001,
    0.0004,  //
    0.0005,
    0.0006,
    -0.0004,
    1e-9,
    1e-12,
    1e-300,
    4.9e-324,
    0.3333333333333333,
    0.333,
    0.334,
    0.3343,
    0.3323,
    0.6666666666666666,
    0.667,
    0.6656,
    0.6677,
    -0.3333333333333333,
    1e5,
    123456.789,
    1e9,
    4294967296.5,
    1e15,
    9007199254740993.0,
    1e18,
    9.3e18,
    -9.3e18,
    1e20,
    -1e20,
    1e62,
    1e63,
    1e64,
    -1e63,
    1e100,
    1e300,
    -1e300,
    1.7976931348623157e308,
    2147483647,
    -2147483648.0,
    9223372036854775.8,
    9223372036854775807.0,
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(),
};

class Maker {
 public:
  explicit Maker(ChoiceSource& source) : s_(source) {}

  Text Sum(int depth) {
    Text text = Term(depth);
    const std::size_t more = s_.Below(4);
    for (std::size_t i = 0; i < more; ++i) {
      text += s_.From(kBinary);
      text += Term(depth);
    }
    return text;
  }

 private:
  Text Term(int depth) {
    Text text;
    while (s_.OneIn(6)) text += s_.OneIn(4) ? TCHAR{'+'} : TCHAR{'-'};
    if (s_.OneIn(12)) text += ' ';
    text += Primary(depth);
    if (s_.OneIn(12)) text += ' ';
    return text;
  }

  Text Primary(int depth) {
    switch (s_.Below(depth > 0 ? 12 : 7)) {
      case 0:
      case 1:
      case 2:
        return s_.From(kNames);
      case 3:
      case 4:
        return s_.From(kNumbers);
      case 5:
        return Text(s_.From(kNumbers)) + s_.From(kNames);
      case 6:
        return s_.OneIn(2) ? Text(_T("PI")) : Text(s_.From(kQuoted));
      case 7:
      case 8:
        return _T("(") + Sum(depth - 1) + _T(")");
      case 9:
        return _T("|") + Sum(depth - 1) + _T("|");
      default:
        return Call(depth - 1);
    }
  }

  Text Call(int depth) {
    const Text name = s_.From(kFunctions);
    std::size_t count = s_.OneIn(8) ? s_.Below(5) : 1;
    if (reference::CompareFolded(name, _T("IIF")) == 0 && !s_.OneIn(10)) count = 3;
    if (name == _T("FIND") && !s_.OneIn(10)) count = 2;
    if (reference::CompareFolded(name, _T("MAX")) == 0 || name == _T("MIN")) count = 1 + s_.Below(4);
    Text text = name + _T("(");
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) text += ',';
      if (i == 0 && s_.OneIn(20)) continue;
      text += name == _T("FIND") && !s_.OneIn(5) ? Text(s_.From(kQuoted)) : Sum(depth);
    }
    return text + _T(")");
  }

  ChoiceSource& s_;
};

}  // namespace

std::span<const TCHAR* const> UsualNames() {
  return kNames;
}

Text MakeFormula(ChoiceSource& source, int depth) {
  return Maker(source).Sum(depth);
}

void BreakText(ChoiceSource& source, Text& text) {
  const std::size_t places = 1 + source.Below(4);
  for (std::size_t i = 0; i < places; ++i) {
    const std::size_t at = source.Below(text.size() + 1);
    switch (source.Below(5)) {
      case 0:
        text.insert(at, 1, source.From(kOddUnits));
        break;
      case 1:
        if (at < text.size()) text[at] = source.From(kOddUnits);
        break;
      case 2:
        text.erase(at, 1 + source.Below(3));
        break;
      case 3:
        text.insert(source.Below(text.size() + 1), text.substr(at, source.Below(6)));
        break;
      default:
        text.insert(at, source.From(kBinary));
        break;
    }
  }
}

Text MakeAnyFormula(ChoiceSource& source) {
  Text text = MakeFormula(source, 1 + static_cast<int>(source.Below(4)));
  if (source.OneIn(2)) BreakText(source, text);
  if (source.OneIn(40)) {
    text.clear();
    const std::size_t units = source.Below(12);
    for (std::size_t i = 0; i < units; ++i) text += source.From(kOddUnits);
  }
  if (source.OneIn(200)) {
    const Text piece = text + source.From(kBinary);
    while (text.size() < 1030 && piece.size() > 1) text = piece + text;
  }
  return text;
}

Text MakeName(ChoiceSource& source) {
  if (!source.OneIn(6)) return source.From(kNames);
  if (!source.OneIn(6)) return source.From(kOddNames);
  Text name = source.From(kNames);
  BreakText(source, name);
  return name;
}

double MakeValue(ChoiceSource& source) {
  switch (source.Below(8)) {
    case 0:
      return std::bit_cast<double>(source.Bits());
    case 1:
      return static_cast<double>(source.Below(2000)) / 100 - 5;
    case 2:
      return static_cast<double>(source.Below(20000)) / 10000;
    case 3:
      return static_cast<double>(source.Below(60000)) / 8;
    case 4:
      return static_cast<double>(source.Below(20)) - 5;
    default:
      return source.From(kValues);
  }
}

CalculatorCase MakeCalculatorCase(ChoiceSource& source) {
  CalculatorCase made;
  const std::size_t keywords = source.Below(6);
  for (std::size_t i = 0; i < keywords; ++i) made.keywords.push_back(MakeName(source));
  const std::size_t rounds = 1 + source.Below(4);
  for (std::size_t i = 0; i < rounds; ++i) {
    CalculatorCase::Round round;
    const bool again = i > 0 && !source.OneIn(4);
    round.formula = again ? made.rounds.back().formula : MakeAnyFormula(source);
    round.set_formula = i == 0 || !source.OneIn(8);
    round.clear_values = source.OneIn(12);
    const std::size_t values = source.Below(7);
    for (std::size_t v = 0; v < values; ++v) {
      const Text name = again && !made.rounds.back().values.empty() && !source.OneIn(3)
                            ? made.rounds.back().values[source.Below(made.rounds.back().values.size())].first
                            : MakeName(source);
      const double value = MakeValue(source);
      round.values.emplace_back(name, value);
    }
    made.rounds.push_back(round);
  }
  return made;
}

}  // namespace lorv::test
