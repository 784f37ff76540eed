#include <cmath>
#include <cstdint>
#include <limits>

#include "comm/AdLorvComm.h"
#include "comm/short_decimal.h"
#include "framework/text/char_class.h"
#include "framework/text/number_text.h"

// Numbers in texts: printing with few decimals, reading numbers out of mixed texts, small questions about
// them. All reading goes through number_text.h, so no locale counts.

namespace {

using lorv::IsDigit;
using lorv::TextView;

template <class Test>
bool HoldsOneOf(const CString& text, Test test) {
  for (const TCHAR c : text.View()) {
    if (test(c)) return true;
  }
  return false;
}

// The characters of a mixed text that make up its first number, and where reading stopped.
class FirstNumber {
 public:
  explicit FirstNumber(TextView text) : text_(text) {}

  CString Collect() {
    CollectHead();
    CollectTail();
    return number_;
  }

 private:
  // What is no part of a number is passed over, between digits too; a sign or a point ends the head.
  void CollectHead() {
    while (at_ < text_.size()) {
      const TCHAR c = text_[at_++];
      const bool sign = c == '-' || c == '+';
      if (!IsDigit(c) && !sign && c != '.') continue;
      number_ += c;
      has_point_ = c == '.';
      if (!IsDigit(c)) return;
    }
  }

  void CollectTail() {
    for (; at_ < text_.size(); ++at_) {
      const TCHAR c = text_[at_];
      if (c == '.' ? has_point_ : !IsDigit(c)) return;
      number_ += c;
      has_point_ = has_point_ || c == '.';
    }
  }

  TextView text_;
  std::size_t at_ = 0;
  bool has_point_ = false;
  CString number_;
};

// As the processor cuts a double to 32 bits: the lowest number for what does not fit.
int CutToInt(double value) {
  constexpr double kEnd = 0x1p31;
  if (!(value < kEnd && value > -kEnd - 1)) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

struct MeasureOperator {
  LPCTSTR sign;
  bool (*holds)(const CString& value, const CString& rule, int position, const CString& operand);
};

bool AtMost(const CString& value, const CString& /*rule*/, int /*position*/, const CString& operand) {
  return value.CompareNoCase(operand) < 1;
}
bool Below(const CString& value, const CString& /*rule*/, int /*position*/, const CString& operand) {
  return value.CompareNoCase(operand) < 0;
}
bool AtLeast(const CString& value, const CString& /*rule*/, int /*position*/, const CString& operand) {
  return value.CompareNoCase(operand) >= 0;
}
bool Above(const CString& value, const CString& /*rule*/, int /*position*/, const CString& operand) {
  return value.CompareNoCase(operand) > 0;
}
bool Between(const CString& value, const CString& rule, int position, const CString& operand) {
  return value.CompareNoCase(rule.Left(position)) >= 0 && value.CompareNoCase(operand) < 1;
}

// In the order of testing: a rule with "<=" is tested as "<" too.
constexpr MeasureOperator kMeasureOperators[] = {
    {_T("<="), AtMost}, {_T("<"), Below}, {_T(">="), AtLeast}, {_T(">"), Above}, {_T("~"), Between},
};

bool MeasuresUp(const CString& value, const CString& rule, const MeasureOperator& test) {
  const int position = rule.Find(test.sign);
  if (position < 0) return false;
  // Counted from the right end, with the sign's length added instead of taken off: the operand takes in the
  // sign and as much before it.
  const int count = rule.GetLength() - position + CString(test.sign).GetLength();
  const CString operand = rule.Right(count);
  return !operand.IsEmpty() && test.holds(value, rule, position, operand);
}

}  // namespace

bool Double2String(const double& value, const int& digits, TCHAR* out, bool fixed, int size) {
  if (out == nullptr) return false;
  const int length = lorv::ShortDecimal(value, digits, fixed, out, size);
  if (length < size) out[length] = 0;
  return length > 0;
}

bool CAdLorvComm::Double2String(const double& value, const int& digits, TCHAR* out, bool fixed, int size) {
  return ::Double2String(value, digits, out, fixed, size);
}

bool CAdLorvComm::isNumber(const CString& text) {
  if (text.IsEmpty()) return false;
  const TCHAR first = text[0];
  if (text.GetLength() == 1) return IsDigit(first);
  if (!IsDigit(first) && first != '-' && first != '.') return false;
  for (const TCHAR c : text.View().substr(1)) {
    if (!IsDigit(c) && c != '.') return false;
  }
  return true;
}

bool CAdLorvComm::isValidNumberStr(CString& text) {
  // The caller's text loses its zeros, valid or not.
  text.TrimLeft(_T('0'));
  return !text.IsEmpty() && !HoldsOneOf(text, [](TCHAR c) { return !IsDigit(c); });
}

bool CAdLorvComm::GetDoubleValueFromString(const CString& text, double& value) {
  if (text.IsEmpty() || (text.GetLength() == 1 && !IsDigit(text[0]))) return false;
  const CString number = FirstNumber(text.View()).Collect();
  if (number.IsEmpty()) return false;
  value = lorv::ReadReal(number.View());
  return true;
}

bool CAdLorvComm::haveNumber(const CString& text) {
  return HoldsOneOf(text, IsDigit);
}

bool CAdLorvComm::haveAlphabeticLetter(const CString& text) {
  return HoldsOneOf(text, lorv::IsAsciiLetter);
}

bool CAdLorvComm::GetTheNumber(const CString& text, int& number) {
  const TextView view = text.View();
  std::size_t start = 0;
  while (start < view.size() && !IsDigit(view[start])) ++start;
  if (start == view.size()) return false;
  number = lorv::ReadInteger(view.substr(start));
  return true;
}

bool CAdLorvComm::RemoveMoreZeroAferPoint(CString& text) {
  if (text.IsEmpty()) return false;
  const int point = text.Find(_T('.'));
  if (point < 0) return true;
  int length = text.GetLength();
  while (length > point + 1 && text[length - 1] == '0') --length;
  if (length == point + 1) length = point;
  text = text.Left(length);
  return true;
}

bool CAdLorvComm::DivideBHByEndNumber(const CString& code, CString& head, CString& end_number) {
  CString copy = code;
  if (copy.Right(1) == _T(")")) {
    const int bracket = copy.ReverseFind(_T('('));
    if (bracket >= 0) copy = copy.Left(bracket);
  }
  if (copy.IsEmpty()) return false;
  int start = copy.GetLength();
  while (start > 0 && IsDigit(copy[start - 1])) --start;
  // Digits alone are a head without a number.
  if (start == 0) start = copy.GetLength();
  head = copy.Left(start);
  end_number = copy.Mid(start);
  return true;
}

int CAdLorvComm::GetCLosetInteger(double value, double tolerance) {
  const int above = CutToInt(std::ceil(value));
  // The upper neighbour first: it wins where both are near enough.
  if (tolerance > std::fabs(value - above)) return above;
  const int below = CutToInt(std::floor(value));
  if (tolerance > std::fabs(value - below)) return below;
  return CutToInt(value);
}

int CAdLorvComm::compareInt(const void* a, const void* b) {
  const auto first = static_cast<std::uint32_t>(*static_cast<const int*>(a));
  const auto second = static_cast<std::uint32_t>(*static_cast<const int*>(b));
  // A difference that wraps around, as callers' sort orders have it.
  return static_cast<int>(first - second);
}

bool IsMeasureStr(const CString& value, const CString& rule) {
  for (const MeasureOperator& test : kMeasureOperators) {
    if (MeasuresUp(value, rule, test)) return true;
  }
  return false;
}
