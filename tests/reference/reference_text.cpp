#include "tests/reference/reference_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace lorv::reference {

namespace {

constexpr int kReplaceCeiling = 100;

TCHAR Small(TCHAR c) {
  return c >= 'A' && c <= 'Z' ? static_cast<TCHAR>(c + 32) : c;
}

// 1 / 10 to the given power, by squaring: the last bit of the tolerances depends on this very order.
double PowerOfTenth(int power) {
  double base = 0.1;
  double result = 1;
  for (unsigned n = static_cast<unsigned>(power < 0 ? -power : power); n != 0; n >>= 1) {
    if ((n & 1) != 0) result *= base;
    base *= base;
  }
  return power < 0 ? 1 / result : result;
}

std::string Printed(double value, int decimals) {
  char buffer[512];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  return std::string(buffer, end.ptr);
}

int NeededPlaces(double value, int digits) {
  const double e = PowerOfTenth(digits + 1);
  std::uint32_t scale = 1;
  for (int places = 0; places < digits; ++places) {
    const double factor = static_cast<std::int32_t>(scale);
    const double scaled = value < 0 ? value * factor - 0.5 * e : value * factor + 0.5 * e;
    const double rounded = ThroughInt64(scaled) / factor;
    if (std::fabs(value - rounded) < 5 * e) return places;
    scale *= 10;
  }
  return -1;
}

// The power of ten of a decimal text's first digit other than 0: distinguishes an overflow from an underflow.
bool IsHuge(const std::string& number) {
  const std::size_t e = number.find('e');
  const std::string mantissa = number.substr(0, e);
  long exponent = 0;
  if (e != std::string::npos) {
    const bool minus = number[e + 1] == '-';
    for (std::size_t i = e + 1; i < number.size(); ++i) {
      if (number[i] < '0' || number[i] > '9') continue;
      if (exponent < 100000000) exponent = exponent * 10 + (number[i] - '0');
    }
    if (minus) exponent = -exponent;
  }
  const std::size_t first = mantissa.find_first_of("123456789");
  std::size_t point = mantissa.find('.');
  if (point == std::string::npos) point = mantissa.size();
  return exponent + static_cast<long>(point) - static_cast<long>(first) > 0;
}

// Copies digits (and one point if `point`) from `at` on; the count of digits.
int TakeDigits(const Text& text, std::size_t& at, bool point, std::string& out) {
  int digits = 0;
  bool seen = !point;
  for (; at < text.size(); ++at) {
    const TCHAR c = text[at];
    if (c == '.' && !seen) {
      seen = true;
    } else if (IsDecimalDigit(c)) {
      ++digits;
    } else {
      break;
    }
    out += static_cast<char>(c);
  }
  return digits;
}

void TakeExponent(const Text& text, std::size_t at, std::string& out) {
  if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) return;
  std::string exponent = "e";
  ++at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) exponent += static_cast<char>(text[at++]);
  if (TakeDigits(text, at, false, exponent) > 0) out += exponent;
}

}  // namespace

bool IsLetter(TCHAR c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsDecimalDigit(TCHAR c) {
  return c >= '0' && c <= '9';
}
bool IsNameUnit(TCHAR c) {
  return IsLetter(c) || IsDecimalDigit(c) || c == '_';
}

Text AsPointerText(const Text& text) {
  return text.substr(0, text.find(TCHAR{0}));
}

Text Upper(const Text& text) {
  Text upper = text;
  for (TCHAR& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<TCHAR>(c - 32);
  }
  return upper;
}

Text FirstTwenty(const Text& text) {
  return text.substr(0, 20);
}

int CompareFolded(const Text& a, const Text& b) {
  for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
    const int difference = Small(a[i]) - Small(b[i]);
    if (difference != 0) return difference;
  }
  return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

int CompareUnits(const Text& a, const Text& b) {
  for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
  }
  return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

double ReadNumber(const Text& text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == ' ' || (text[at] >= 9 && text[at] <= 13))) ++at;
  bool minus = false;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) minus = text[at++] == '-';
  std::string number;
  if (TakeDigits(text, at, true, number) == 0) return 0;
  TakeExponent(text, at, number);
  double value = 0;
  if (std::from_chars(number.data(), number.data() + number.size(), value).ec != std::errc()) {
    value = IsHuge(number) ? std::numeric_limits<double>::infinity() : 0;
  }
  return minus ? -value : value;
}

Text DoubleToText(double value, int digits, bool fixed, int size) {
  int places = NeededPlaces(value, digits);
  if (places >= 0) {
    if (fixed && places < digits) places = digits;
    if (places > 5) places = 6;
  } else {
    places = digits >= 0 && digits <= 6 ? digits : 6;
  }
  const std::string printed = Printed(value, places);
  return Text(printed.begin(), printed.end()).substr(0, static_cast<std::size_t>(size));
}

double ThroughInt32(double value) {
  const double whole = std::trunc(value);
  if (!(whole >= -2147483648.0 && whole <= 2147483647.0)) return -2147483648.0;
  return static_cast<std::int32_t>(whole);
}

double ThroughInt64(double value) {
  const double whole = std::trunc(value);
  if (!(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0)) return -9223372036854775808.0;
  return static_cast<double>(static_cast<std::int64_t>(whole));
}

int ReplacePlain(Text& text, std::size_t from, const Text& old, const Text& fresh, bool all) {
  if (old.empty() || fresh.empty() || CompareFolded(old, fresh) == 0) return 0;
  int count = 0;
  while (count < kReplaceCeiling) {
    const std::size_t hit = text.find(old, from);
    if (hit == Text::npos) break;
    text = text.substr(0, hit) + fresh + text.substr(hit + old.size());
    from = hit + fresh.size();
    ++count;
    if (!all) break;
  }
  return count;
}

}  // namespace lorv::reference
