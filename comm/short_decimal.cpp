#include "comm/short_decimal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "framework/text/number_text.h"

// Two ways lead to the same text. The long way follows the definition step by step in doubles. The short way
// looks at u, the value in units of the last permitted decimal, and its nearest whole number n: unless u
// lies close to a half, or just below n, the definition's outcome follows from n alone.

namespace lorv {
namespace {

constexpr int kMaxFixedDecimals = 6;
constexpr int kMaxShortWayDigits = 5;

// Sign, 309 digits before the point, the point and six decimals.
constexpr int kLongestText = 320;
// Sign, eleven digits before the point, the point and five decimals: what the short way may touch.
constexpr int kShortWayRoom = 24;

struct ShortWayBounds {
  double power;  // 10 to the digits
  double limit;  // below it, u and the definition's own roundings are far finer than `noise`
  double noise;  // how far below n the definition still counts u as n, whatever the decimals
};

constexpr std::array<ShortWayBounds, kMaxShortWayDigits + 1> kBounds = {{
    {1e0, 0x1p36, 1e-5},
    {1e1, 0x1p36, 1e-5},
    {1e2, 0x1p36, 1e-5},
    {1e3, 0x1p36, 1e-5},
    {1e4, 0x1p36, 1e-5},
    {1e5, 0x1p32, 1e-6},
}};

// Further below n than this, the definition counts u as short of n at every number of decimals.
constexpr double kSurelyBelow = 0.051;
// Nearer to n than this, rounding leads to n at every number of decimals.
constexpr double kSurelyNearest = 0.499;

constexpr std::array<TCHAR, 200> MakePairs() {
  std::array<TCHAR, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<TCHAR>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<TCHAR>('0' + i % 10);
  }
  return pairs;
}
constexpr std::array<TCHAR, 200> kPairs = MakePairs();

void PutPair(TCHAR* out, std::uint64_t pair) {
  std::memcpy(out, &kPairs[2 * pair], 2 * sizeof(TCHAR));
}

int CountDigits(std::uint64_t number) {
  int count = 1;
  for (std::uint64_t power = 10; number >= power; power *= 10) ++count;
  return count;
}

int PutWhole(TCHAR* out, std::uint64_t number) {
  if (number < 10) {
    *out = static_cast<TCHAR>('0' + number);
    return 1;
  }
  const int count = CountDigits(number);
  TCHAR* at = out + count;
  for (; number >= 100; number /= 100) PutPair(at -= 2, number % 100);
  if (number >= 10) {
    PutPair(out, number);
  } else {
    *out = static_cast<TCHAR>('0' + number);
  }
  return count;
}

constexpr std::array<std::uint64_t, kMaxShortWayDigits + 1> kWholePowers = {1, 10, 100, 1000, 10000, 100000};

// `number` is in units of the last of kDigits decimals. With `trim` zeros at the end are left out.
template <int kDigits>
int PutScaled(TCHAR* out, std::uint64_t number, bool trim) {
  constexpr std::uint64_t kPower = kWholePowers[kDigits];
  const std::uint64_t whole = number / kPower;
  std::uint64_t fraction = number % kPower;
  int length = PutWhole(out, whole);
  if (kDigits == 0 || (trim && fraction == 0)) return length;
  out[length] = '.';
  TCHAR* const behind = out + length + 1;
  int at = kDigits;
  for (; at >= 2; fraction /= 100) PutPair(behind + (at -= 2), fraction % 100);
  if (at == 1) *behind = static_cast<TCHAR>('0' + fraction);
  length += 1 + kDigits;
  while (trim && out[length - 1] == '0') --length;
  return length;
}

int PutScaled(TCHAR* out, std::uint64_t number, int digits, bool trim) {
  switch (digits) {
    case 0:
      return PutScaled<0>(out, number, trim);
    case 1:
      return PutScaled<1>(out, number, trim);
    case 2:
      return PutScaled<2>(out, number, trim);
    case 3:
      return PutScaled<3>(out, number, trim);
    case 4:
      return PutScaled<4>(out, number, trim);
    default:
      return PutScaled<5>(out, number, trim);
  }
}

// 0 where the outcome does not follow from the nearest whole number.
int ShortWay(double value, int digits, bool fixed, TCHAR* out) {
  const ShortWayBounds& bounds = kBounds[static_cast<std::size_t>(digits)];
  const double units = std::fabs(value) * bounds.power;
  if (!(units < bounds.limit)) return 0;
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): a wrong neighbour is found out right below
  // An addition that rounds wrongly lies next to a half, which is left to the long way.
  const auto nearest = static_cast<std::int64_t>(units + 0.5);  // NOLINT(bugprone-incorrect-roundings)
  const double off = units - static_cast<double>(nearest);
  const bool reached = off >= -bounds.noise && off < kSurelyNearest;
  const bool missed = off <= -kSurelyBelow && off > -kSurelyNearest;
  if (!reached && !missed) return 0;
  int length = 0;
  if (std::signbit(value)) out[length++] = '-';
  const bool trim = reached && !fixed;
  return length + PutScaled(out + length, static_cast<std::uint64_t>(nearest), digits, trim);
}

// 0.1 to the power digits + 1 by repeated squaring.
double TenthToThe(int digits) {
  double result = 1.0;
  double square = 0.1;
  for (auto left = static_cast<unsigned>(std::max(digits, -1) + 1); left != 0; left >>= 1) {
    if ((left & 1U) != 0) result *= square;
    square *= square;
  }
  return result;
}

// As the processor cuts a double to 64 bits: the lowest number for what does not fit.
double CutToWhole(double value) {
  constexpr double kEnd = 0x1p63;
  if (!(value < kEnd && value >= -kEnd)) return -kEnd;
  return static_cast<double>(static_cast<std::int64_t>(value));
}

// The fewest decimals that give the value back; -1 where `digits` are not enough.
int FewestDecimals(double value, int digits) {
  const double tenth = TenthToThe(std::min(digits, std::numeric_limits<int>::max() - 1));
  const double push = value < 0 ? -0.5 * tenth : 0.5 * tenth;
  // 32 bits: it wraps from ten places on and stays 0 from 32 on, where no number of decimals fits any more.
  std::uint32_t scale = 1;
  for (int places = 0; places < digits && scale != 0; ++places, scale *= 10) {
    const auto factor = static_cast<double>(static_cast<std::int32_t>(scale));
    const double back = CutToWhole(value * factor + push) / factor;
    if (std::fabs(value - back) < 5.0 * tenth) return places;
  }
  return -1;
}

int DecimalsToPrint(double value, int digits, bool fixed) {
  const int fewest = FewestDecimals(value, digits);
  if (fewest < 0) return digits >= 0 && digits <= kMaxFixedDecimals ? digits : kMaxFixedDecimals;
  return std::min(fixed ? std::max(fewest, digits) : fewest, kMaxFixedDecimals);
}

int LongWay(double value, int digits, bool fixed, TCHAR* out, int size) {
  std::array<char, kLongestText> text;
  const int decimals = DecimalsToPrint(value, digits, fixed);
  const int length = std::min(FixedToText(value, decimals, text.data(), kLongestText), size);
  std::copy_n(text.data(), length, out);
  return length;
}

}  // namespace

int ShortDecimal(double value, int digits, bool fixed, TCHAR* out, int size) {
  if (size < 1) return 0;
  if (digits >= 0 && digits <= kMaxShortWayDigits && size >= kShortWayRoom) {
    if (const int length = ShortWay(value, digits, fixed, out)) return length;
  }
  return LongWay(value, digits, fixed, out, size);
}

}  // namespace lorv
