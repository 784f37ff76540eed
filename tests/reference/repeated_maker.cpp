#include <algorithm>
#include <cmath>

#include "tests/reference/repeated_case.h"

namespace lorv::test {

namespace {

constexpr std::size_t kLongestName = 20;
constexpr std::size_t kLongestValue = 20;

const TCHAR* const kUsualNames[] = {
    _T("A"),    _T("AB"),     _T("ABC"), _T("BEAM"),     _T("LENGTH"), _T("H"),        _T("B2"),
    _T("X_1"),  _T("WALL_H"), _T("墙A"), _T("层高度数"), _T("墙"),     _T("高"),       _T("A墙"),
    _T("墙高"), _T("H1"),     _T("E3"),  _T("A1B"),      _T("A1B2C"),  _T("EIGHTLET"), _T("NINELETTE"),
};
const TCHAR* const kOddNames[] = {_T("1"), _T("25"), _T("_A"),  _T("A+"), _T("3*"),
                                  _T("."), _T("-"),  _T("SIN"), _T("PI")};
const TCHAR kFirstUnits[] = {'A', 'A', 'B', 'A', 'B', 0x5899, 0x5899, 0x9AD8, '_'};
const TCHAR kNextUnits[] = {'A', 'A', 'B', 'A', 'B', '1', '2', '_', 0x5899, 0x9AD8};
const TCHAR* const kNumbers[] = {_T("2"), _T("1"),  _T("0"),      _T("12"),     _T("0.5"),  _T("3."),
                                 _T("7"), _T("10"), _T("0.0015"), _T("0.3334"), _T("1000"), _T("100")};
const TCHAR* const kSigns[] = {_T("+"),  _T("+"),   _T("-"),     _T("-"),  _T("*"),  _T("*"),  _T("/"),
                               _T("/"),  _T("^"),   _T("<"),     _T(">"),  _T("="),  _T("<="), _T(">="),
                               _T("<>"), _T("&&"),  _T("||"),    _T("+-"), _T("--"), _T("*-"), _T("*+"),
                               _T("!"),  _T(" + "), _T(" AND "), _T("^-")};
const TCHAR* const kCalls[] = {_T("("),    _T("("),      _T("-("),    _T("ABS("), _T("SQRT("), _T("ROUND("),
                               _T("INT("), _T("FLOOR("), _T("CEIL("), _T("LOG("), _T("COS(")};
// Where the answers turn: thirds and what is near them, the middle between two thousandths, divisors of 0
// that are none once a value is rounded.
const double kTurningValues[] = {0,
                                 -0.0,
                                 0.0004,
                                 -0.0004,
                                 0.0005,
                                 -0.0005,
                                 0.0015,
                                 2.0005,
                                 2.4995,
                                 0.3333,
                                 0.3334,
                                 0.333,
                                 0.334,
                                 0.3323,
                                 0.3343,
                                 0.667,
                                 0.6656,
                                 0.6677,
                                 0.6666666666666666,
                                 -0.3333333333333333,
                                 1e-9,
                                 0.5,
                                 1,
                                 -1,
                                 2,
                                 10};

class RepeatedMaker {
 public:
  explicit RepeatedMaker(ChoiceSource& source) : s_(source) {}

  RepeatedCase Make() {
    RepeatedCase made;
    MakeNames(made);
    names_ = &made.names;
    made.formula = Sum(s_.OneIn(3) ? 2 : 1);
    if (s_.OneIn(16)) BreakText(s_, made.formula);
    for (const Text& name : made.names) {
      if (s_.OneIn(8)) made.keywords.push_back(name);
    }
    if (made.names.size() > 1 && s_.OneIn(6)) made.names.pop_back();  // used, and has no value
    AddOtherNames(made);
    MakeRounds(made);
    made.rows = s_.OneIn(24) ? 257 + s_.Below(150) : s_.OneIn(6) ? 30 + s_.Below(40) : made.rounds.size();
    made.keeps_fixed_values_apart = s_.OneIn(2);
    return made;
  }

 private:
  void MakeNames(RepeatedCase& made) {
    const std::size_t count = 1 + s_.Below(4);
    while (made.names.size() < count) {
      const Text name = Name(made.names);
      // What is cut to one name has one value.
      const bool is_new = std::none_of(made.names.begin(), made.names.end(), [&](const Text& other) {
        return reference::FirstTwenty(other) == reference::FirstTwenty(name);
      });
      if (is_new) made.names.push_back(name);
    }
  }

  // Names that the formula does not use: many names are looked up in another way than few.
  void AddOtherNames(RepeatedCase& made) {
    std::size_t count = s_.OneIn(40) ? 14 + s_.Below(10) : 0;
    if (s_.OneIn(400)) count = 120 + s_.Below(12);
    for (std::size_t i = 0; i < count; ++i) {
      const TCHAR digits[] = {static_cast<TCHAR>('0' + i / 100), static_cast<TCHAR>('0' + i / 10 % 10),
                              static_cast<TCHAR>('0' + i % 10), 0};
      made.names.push_back(Text(_T("K")) + digits);
    }
  }

  Text Name(const std::vector<Text>& others) {
    if (s_.OneIn(40)) return s_.From(kOddNames);
    if (s_.OneIn(3)) return s_.From(kUsualNames);
    if (!others.empty() && s_.OneIn(3)) {
      // Hangs together with another name.
      const Text& other = others[s_.Below(others.size())];
      switch (s_.Below(4)) {
        case 0:
          return other + s_.From(kNextUnits);
        case 1:
          return s_.From(kFirstUnits) + other;
        case 2:
          return other + other;
        default:
          return other.substr(0, 1 + s_.Below(other.size()));
      }
    }
    Text name(1, s_.From(kFirstUnits));
    const std::size_t length = 1 + s_.Below(s_.OneIn(2) ? 5 : kLongestName);
    while (name.size() < length) name += s_.From(kNextUnits);
    return name;
  }

  Text Sum(int depth) {
    Text text = Operand(depth);
    for (std::size_t more = s_.Below(4); more > 0; --more) {
      if (!s_.OneIn(20)) text += s_.From(kSigns);
      text += Operand(depth);
    }
    return text;
  }

  const Text& AnyName() { return (*names_)[s_.Below(names_->size())]; }

  Text Operand(int depth) {
    switch (s_.Below(depth > 0 ? 14 : 10)) {
      case 0:
        return s_.From(kNumbers);
      case 1:
      case 2:
        return s_.From(kNumbers) + AnyName();
      case 3:
        return AnyName() + AnyName();
      case 4:
        return Touching();
      case 10:
        return Divided();
      case 11:
        return s_.OneIn(3) ? _T("IIF(") + Sum(depth - 1) + _T(",") + Sum(0) + _T(",") + Sum(0) + _T(")")
                           : (s_.OneIn(2) ? _T("MAX(") : _T("MIN(")) + Sum(0) + _T(",") + Sum(0) + _T(")");
      case 12:
      case 13:
        return s_.From(kCalls) + Sum(depth - 1) + _T(")");
      default:
        return AnyName();
    }
  }

  // What a value must not join, or is not looked for in.
  Text Touching() {
    switch (s_.Below(7)) {
      case 0:
        return AnyName() + s_.From(kNumbers);
      case 1:
        return s_.From(kNumbers) + AnyName() + s_.From(kNumbers);
      case 2:
        return s_.From(kNumbers) + AnyName() + AnyName();
      case 3:
        return AnyName() + _T(".5");
      case 4:
        return _T("|") + AnyName() + _T("|");
      case 5:
        return _T("'") + AnyName() + _T("'");
      default:
        return AnyName() + _T(" ");
    }
  }

  Text Divided() {
    const Text factor = s_.OneIn(3) ? Text(_T("1000*")) : Text();
    return Text(s_.From(kNumbers)) + _T("/(") + factor + AnyName() + _T("-") +
           (s_.OneIn(2) ? Text(s_.From(kNumbers)) : AnyName()) + _T(")");
  }

  void MakeRounds(RepeatedCase& made) {
    const std::size_t rounds = 4 + s_.Below(3);
    std::vector<bool> is_fixed;
    for (std::size_t i = 0; i < made.names.size(); ++i) is_fixed.push_back(s_.OneIn(5));
    for (std::size_t i = 0; i < rounds; ++i) {
      RepeatedCase::Round round;
      for (std::size_t name = 0; name < made.names.size(); ++name)
        round.values.push_back(i > 0 && is_fixed[name] ? made.rounds[0].values[name] : Value());
      round.values_first = s_.OneIn(2);
      round.small_letters = s_.OneIn(10);
      round.asks_text = s_.OneIn(2);
      round.calculates_twice = s_.OneIn(8);
      round.other_before = s_.OneIn(24);
      round.clears_before = s_.OneIn(24);
      round.is_copied_before = s_.OneIn(24);
      made.rounds.push_back(round);
    }
  }

  double Value() {
    switch (s_.Below(10)) {
      case 0:
        return s_.From(kTurningValues);
      case 1:
        return MakeValue(s_);
      case 2:
        return static_cast<double>(s_.Below(12)) - 3;
      default:
        return OfLength(1 + s_.Below(s_.OneIn(3) ? kLongestValue : 7));
    }
  }

  // A value whose text has about so many units, the sign not counted.
  double OfLength(std::size_t units) {
    double value = static_cast<double>(1 + s_.Below(9));
    const std::size_t decimals =
        units > 2 && s_.OneIn(2) ? 1 + s_.Below(std::min<std::size_t>(3, units - 2)) : 0;
    for (std::size_t i = decimals == 0 ? 1 : 2; i < units; ++i)
      value = value * 10 + static_cast<double>(s_.Below(10));
    value /= std::pow(10, static_cast<double>(decimals));
    return s_.OneIn(4) ? -value : value;
  }

  ChoiceSource& s_;
  const std::vector<Text>* names_ = nullptr;
};

}  // namespace

RepeatedCase MakeRepeatedCase(ChoiceSource& source) {
  return RepeatedMaker(source).Make();
}

}  // namespace lorv::test
