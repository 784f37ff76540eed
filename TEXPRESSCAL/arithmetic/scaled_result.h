#pragma once

#include <cmath>
#include <limits>

#include "TEXPRESSCAL/arithmetic/double_pair.h"

// The last step of functions whose results reach over all exponents.
namespace lorv::arithmetic {

constexpr int kLeastExponent = -1022;     // of a normal double
constexpr int kLeastBitExponent = -1074;  // of the last bit of the smallest ones

// 2 to the `exponent`, which is from -1074 to 1023.
inline double AnyPowerOfTwo(int exponent) {
  if (exponent >= kLeastExponent) return PowerOfTwo(exponent);
  return std::bit_cast<double>(std::uint64_t{1} << (exponent - kLeastBitExponent));
}

// Whether value * 2^exponent is a normal double, or infinity, for every value from 0.99 up to 2.01; then the
// second gives it.
inline bool ScalesPlainly(int exponent) {
  return exponent > kLeastExponent && exponent <= kExponentBias;
}
inline double ScaledPlainly(double value, int exponent) {
  return exponent > 0 ? value * 2 * PowerOfTwo(exponent - 1) : value * PowerOfTwo(exponent);
}

// value * 2^exponent with one rounding, for a normal pair of which |high| is from 1 up to below 2: infinity
// beyond the range, and results below the normal doubles rounded at their own last bit.
inline double ScaledUnit(Pair value, int exponent) {
  if (exponent > kExponentBias) return std::numeric_limits<double>::infinity();
  if (exponent < kLeastBitExponent - 2) return 0;
  if (exponent >= kLeastExponent) return ScaledPlainly(value.high, exponent);
  // Added to a number whose last bit is the one to round at, the value is rounded there.
  const double distance = PowerOfTwo(kLeastBitExponent - exponent);
  const double anchor = PowerOfTwo(kLeastBitExponent - exponent + kMantissaBits);
  const Pair sum = Sum(anchor, value.high);
  const double rest = OddSum(sum.low, value.low);
  const double parts = ((sum.high + rest) - anchor) / distance;
  return parts * AnyPowerOfTwo(kLeastBitExponent);
}

// The same for a normal pair from 0.5 up to 4.
inline double Scaled(Pair value, int exponent) {
  if (value.high >= 2) return ScaledUnit({value.high / 2, value.low / 2}, exponent + 1);
  if (value.high < 1) return ScaledUnit({value.high * 2, value.low * 2}, exponent - 1);
  return ScaledUnit(value, exponent);
}

}  // namespace lorv::arithmetic
