#include <cmath>
#include <limits>

#include "TEXPRESSCAL/arithmetic/exponential.h"
#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/logarithm.h"
#include "TEXPRESSCAL/arithmetic/scaled_result.h"
#include "TEXPRESSCAL/arithmetic/square_root.h"

// base^exponent: small whole exponents by multiplication, the others as e^(exponent * ln(base)). Quantities
// mostly ask for squares and cubes, which the first way gives in a few products with all their bits; both
// ways give the double nearest to the exact power. Infinities, zeros and negative bases are settled before
// either is asked.

namespace lorv::arithmetic {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Bounds within which the pairs of the products neither overflow nor lose their lower parts.
constexpr double kMostMultiplied = 16;
constexpr double kSmallestMultiplied = PowerOfTwo(-24);
constexpr double kLargestMultiplied = PowerOfTwo(24);

constexpr double kFirstAllEven = 9007199254740992.0;  // 2^53: doubles from here on are even whole numbers

bool IsWhole(double y) {
  return std::fabs(y) >= kFirstAllEven || static_cast<double>(static_cast<std::int64_t>(y)) == y;
}
bool IsOdd(double y) {
  return std::fabs(y) < kFirstAllEven && IsWhole(y) && (static_cast<std::int64_t>(y) & 1) != 0;
}

double Multiplied(double base, int exponent) {
  Pair power = {1, 0};
  Pair square = {base, 0};
  // By squaring, with the last square left out: it could overflow and nobody would use it.
  for (int left = exponent < 0 ? -exponent : exponent;; square = Times(square, square)) {
    if ((left & 1) != 0) power = Times(power, square);
    left >>= 1;
    if (left == 0) break;
  }
  return exponent < 0 ? Over({1, 0}, power).high : power.high;
}

// x = odd * 2^exponent.
struct OddPart {
  double odd;
  int exponent;
};
OddPart OddPartOf(double x) {
  std::uint64_t mantissa = BitsOf(x) & ((std::uint64_t{1} << kMantissaBits) - 1);
  int exponent = static_cast<int>(BitsOf(x) >> kMantissaBits);
  if (exponent != 0) {
    mantissa |= std::uint64_t{1} << kMantissaBits;
    --exponent;
  }
  const int zeros = std::countr_zero(mantissa);
  return {static_cast<double>(mantissa >> zeros), exponent + kLeastBitExponent + zeros};
}

// Powers that a double can hold exactly, or whose bits end at the middle between two doubles: there a value
// that errs by however little is rounded the wrong way. With a base of several odd factors the exponent is a
// whole number of 32nds, as no number of 53 bits is a higher power of two of another, and the power has at
// most 54 bits.
bool ExactPower(double x, double y, double& result) {
  constexpr double kMostLogarithm = 37.8;  // of 54.5 bits
  constexpr double kFinestExponent = 32;
  const OddPart part = OddPartOf(x);
  const double exponent = y * part.exponent;
  if (!IsWhole(exponent) || std::fabs(exponent) > 4 * kExponentBias) return false;
  Pair power = {1, 0};
  if (part.odd != 1) {
    if (y < 0 || !IsWhole(y * kFinestExponent) || y * QuickLogarithm(part.odd).value.high > kMostLogarithm)
      return false;
    double root = part.odd;
    double left = y;
    // A fraction of a power of two is a root: each must come out whole or the power is not exact.
    for (; !IsWhole(left); left *= 2) {
      const double next = SquareRoot(root);
      if (next * next != root || !IsWhole(next)) return false;
      root = next;
    }
    for (int factors = static_cast<int>(left); factors > 0; --factors) power = Times(power, root);
  }
  const int size = std::ilogb(power.high);
  const double unit = PowerOfTwo(-size);
  result = ScaledUnit({power.high * unit, power.low * unit}, size + static_cast<int>(exponent));
  return true;
}

double LongPower(double x, double y) {
  double exact = 0;
  if (ExactPower(x, y, exact)) return exact;
  const ScaledPair full = LongExponential(Times(LongLogarithm(x), y));
  return Scaled(full.value, full.exponent);
}

// For finite x above 0 and finite y.
double PositivePower(double x, double y) {
  constexpr double kDecidesAlone = PowerOfTwo(64);  // however close to 1 the base is
  if (x == 1) return 1;
  if (std::fabs(y) >= kDecidesAlone) return (x > 1) == (y > 0) ? kInfinity : 0;
  const QuickLogarithmResult log = QuickLogarithm(x);
  const Pair product = Product(log.value.high, y);
  const Pair power = FastSum(product.high, product.low + log.value.low * y);
  if (power.high > kAllOverflowAbove) return kInfinity;
  if (power.high < kAllVanishBelow) return 0;
  const ScaledPair quick = QuickExponential(power);
  // The logarithm's error grows by the exponent; the hundredth covers the rounding of this bound itself.
  const double error = kQuickExponentialError + 1.01 * (std::fabs(y) * log.error);
  double rounded = 0;
  if (ScalesPlainly(quick.exponent) && RoundsSurely(quick.value, quick.value.high * error, rounded)) {
    return ScaledPlainly(rounded, quick.exponent);
  }
  return LongPower(x, y);
}

// Where the base is 0 or infinite, or the exponent is; neither is not-a-number.
double PowerAtTheEnds(double x, double y) {
  if (std::fabs(y) == kInfinity) {
    if (std::fabs(x) == 1) return 1;
    return (std::fabs(x) > 1) == (y > 0) ? kInfinity : 0;
  }
  const double size = (x == 0) == (y > 0) ? 0 : kInfinity;
  return IsOdd(y) ? std::copysign(size, x) : size;
}

}  // namespace

double Power(double base, double exponent) {
  // One product rounds once: nearest by itself, whatever the base.
  if (exponent == 2) return base * base;
  if (std::fabs(exponent) <= kMostMultiplied && std::fabs(base) >= kSmallestMultiplied &&
      std::fabs(base) <= kLargestMultiplied && IsWhole(exponent)) {
    return Multiplied(base, static_cast<int>(exponent));
  }
  // Before not-a-number is looked at, as the C library has it.
  if (exponent == 0 || base == 1) return 1;
  if (base != base || exponent != exponent) return base + exponent;
  if (base == 0 || std::fabs(base) == kInfinity || std::fabs(exponent) == kInfinity) {
    return PowerAtTheEnds(base, exponent);
  }
  if (exponent == 1) return base;
  if (exponent == -1) return 1 / base;
  if (base > 0) return exponent == 0.5 ? SquareRoot(base) : PositivePower(base, exponent);
  if (!IsWhole(exponent)) return ProcessorsNan();
  const double size = PositivePower(-base, exponent);
  return IsOdd(exponent) ? -size : size;
}

}  // namespace lorv::arithmetic
