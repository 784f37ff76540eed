#include "framework/text/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "framework/text/char_class.h"

// Numbers read from and written to text without a look at the locale. Reading takes the longest beginning
// that is a number, as _wtof does, and gives the double nearest to it; the short way and the long way give
// the same bits, since the short one divides two exact numbers once.

namespace lorv {
namespace {

// A number's beginning, measured but not yet converted.
struct NumberSpan {
  std::size_t start = 0;  // behind blanks and sign
  std::size_t end = 0;
  bool negative = false;
  bool found = false;
};

std::size_t SkipDigits(TextView text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// Where an exponent that begins at `at` ends, or `at` if none does.
std::size_t SkipExponent(TextView text, std::size_t at) {
  if (at == text.size() || ToLower(text[at]) != 'e') return at;
  std::size_t digits = at + 1;
  if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
  const std::size_t end = SkipDigits(text, digits);
  return end == digits ? at : end;
}

// "1.", ".5" and "1e" begin a number, "." and "e5" do not; an exponent without digits is left out.
NumberSpan MeasureReal(TextView text) {
  NumberSpan span;
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) span.negative = text[at++] == '-';
  span.start = at;
  std::size_t end = SkipDigits(text, at);
  std::size_t digits = end - at;
  if (end < text.size() && text[end] == '.') {
    const std::size_t behind = SkipDigits(text, end + 1);
    digits += behind - end - 1;
    if (digits != 0) end = behind;
  }
  span.found = digits != 0;
  span.end = span.found ? SkipExponent(text, end) : at;
  return span;
}

// The power of ten at which a number's first digit above 0 stands, as far as it parts large from small.
std::int64_t PowerOfFirstDigit(const std::string& number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::size_t point = std::min(number.find('.'), mark);
  const std::size_t first = number.find_first_not_of("0.");
  if (first >= mark) return std::numeric_limits<std::int64_t>::min();
  const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  const bool negative = mark + 1 < number.size() && number[mark + 1] == '-';
  constexpr std::int64_t kEnough = std::int64_t{1} << 40;  // longer than any text that could outweigh it
  std::int64_t exponent = 0;
  for (std::size_t i = mark; i < number.size(); ++i) {
    const char c = number[i];
    if (c >= '0' && c <= '9') exponent = std::min(exponent * 10 + (c - '0'), kEnough);
  }
  return place + (negative ? -exponent : exponent);
}

// Conversion of a measured span that is too long or too fine for the short way.
double ConvertNarrow(TextView digits) {
  std::string narrow(digits.size(), '0');
  std::transform(digits.begin(), digits.end(), narrow.begin(), [](TCHAR c) { return static_cast<char>(c); });
  double value = 0;
  const auto result = std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  // The conversion says only that the number does not fit; whether it is too large or too small shows in the
  // digits.
  return PowerOfFirstDigit(narrow) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

// Of numbers that are printed without an exact conversion.
constexpr int kMostShortDecimals = 6;
constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// At most 15 digits and no exponent: the digits and the power of ten are exact, so one division rounds
// once, which is the correctly rounded value.
bool ConvertShort(TextView digits, double& value) {
  // 15 digits are below 2^53 and so exact, as the power of ten is; the sixteenth unit may be the point.
  if (digits.size() > 16) return false;
  std::int64_t number = 0;
  std::size_t count = 0;
  std::size_t point = digits.size();
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (digits[i] == '.') {
      point = i;
    } else if (IsDigit(digits[i])) {
      number = number * 10 + (digits[i] - '0');
      ++count;
    } else {
      return false;
    }
  }
  if (count > 15) return false;
  const std::size_t decimals = point == digits.size() ? 0 : digits.size() - point - 1;
  value = static_cast<double>(number) / kPowersOfTen[decimals];
  return true;
}

// The digits of |value| with some decimals as one whole number, where there is no doubt of their rounding.
bool RoundedDigits(double value, int decimals, std::uint64_t& digits) {
  if (decimals < 0 || decimals > kMostShortDecimals) return false;
  const double scaled = std::abs(value) * kPowersOfTen[static_cast<std::size_t>(decimals)];
  // Below 2^42 the product is off by 2^-12 at most. Also false for NaN.
  if (!(scaled < 0x1p42)) return false;
  const auto whole = static_cast<std::uint64_t>(scaled);
  const double rest = scaled - static_cast<double>(whole);
  // So near the middle the exact value may lie on its other side, or in it.
  if (std::abs(rest - 0.5) < 0x1p-10) return false;
  digits = whole + (rest > 0.5 ? 1 : 0);
  return true;
}

// Digits that stand for `decimals` places behind the point; the count of characters, or 0 if they do not fit.
int PrintDigits(std::uint64_t digits, unsigned decimals, bool negative, char* out, int size) {
  char reversed[24] = {};
  unsigned count = 0;
  for (; digits != 0 || count <= decimals; digits /= 10) {
    reversed[count++] = static_cast<char>('0' + digits % 10);
  }
  const int length = static_cast<int>(count) + (decimals > 0 ? 1 : 0) + (negative ? 1 : 0);
  if (length > size) return 0;
  char* at = out;
  if (negative) *at++ = '-';
  while (count > decimals) *at++ = reversed[--count];
  if (decimals > 0) *at++ = '.';
  while (count > 0) *at++ = reversed[--count];
  return length;
}

bool IsCapital(char form) {
  return form >= 'A' && form <= 'Z';
}

std::chars_format FormatOf(char form) {
  switch (form) {
    case 'e':
    case 'E':
      return std::chars_format::scientific;
    case 'g':
    case 'G':
      return std::chars_format::general;
    default:
      return std::chars_format::fixed;
  }
}

}  // namespace

double ReadReal(TextView text, std::size_t* used) {
  const NumberSpan span = MeasureReal(text);
  if (used != nullptr) *used = span.found ? span.end : 0;
  if (!span.found) return 0.0;
  const TextView digits = text.substr(span.start, span.end - span.start);
  double value = 0;
  if (!ConvertShort(digits, value)) value = ConvertNarrow(digits);
  return span.negative ? -value : value;
}

int ReadInteger(TextView text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  bool negative = false;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';
  std::int64_t value = 0;
  constexpr std::int64_t kLimit = std::int64_t{1} << 31;
  // Held at the limit at each digit, so that a line of a thousand digits cannot wrap.
  for (; at < text.size() && IsDigit(text[at]); ++at) value = std::min(value * 10 + (text[at] - '0'), kLimit);
  if (negative) return static_cast<int>(-value);
  return static_cast<int>(std::min(value, kLimit - 1));
}

std::string RealToText(double value, char form, int precision) {
  // 309 digits before the point, the precision behind it, and what sign, point and exponent take.
  std::string out(static_cast<std::size_t>(std::max(precision, 0)) + 330, '\0');
  const auto result = std::to_chars(out.data(), out.data() + out.size(), value, FormatOf(form), precision);
  out.resize(static_cast<std::size_t>(result.ptr - out.data()));
  if (IsCapital(form)) {
    for (char& c : out) c = static_cast<char>(ToUpper(static_cast<TCHAR>(c)));
  }
  return out;
}

int FixedToText(double value, int decimals, char* out, int size) {
  std::uint64_t digits = 0;
  // Most numbers of a table by far; the rest takes its exact value apart.
  if (RoundedDigits(value, decimals, digits)) {
    return PrintDigits(digits, static_cast<unsigned>(decimals), std::signbit(value), out, size);
  }
  const auto result = std::to_chars(out, out + size, value, std::chars_format::fixed, decimals);
  return result.ec == std::errc() ? static_cast<int>(result.ptr - out) : 0;
}

}  // namespace lorv
