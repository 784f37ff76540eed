#pragma once

#include "TEXPRESSCAL/arithmetic/double_pair.h"
#include "TEXPRESSCAL/arithmetic/exponential_table.h"

// e to a power that is a pair, for `Exponential` and `Power`. The argument's magnitude must be below 750.
namespace lorv::arithmetic {

// e^x = value * 2^exponent, value being a normal pair from 0.99 up to 2.01.
struct ScaledPair {
  Pair value;
  int exponent;
};

// Powers of e beyond these are infinite, or 0.
constexpr double kAllOverflowAbove = 709.79;
constexpr double kAllVanishBelow = -745.2;

// Relative error below 2^-100. The pair's high part is the right rounding also where both parts are not
// enough to hold the distance from the middle of two doubles.
ScaledPair LongExponential(Pair x);

// The argument in whole steps of ln(2) / 128, and those in whole powers of two.
constexpr int kPowerIndexBits = 7;
constexpr int kPowersInTable = 1 << kPowerIndexBits;

struct PartedPower {
  double count;  // whole number of steps of ln(2) / 128
  int index;
  int exponent;
};

inline PartedPower PartOfPower(double x) {
  const double count = (x * kStepsByLogarithmOfTwo + kNearestWhole) - kNearestWhole;
  const int whole = static_cast<int>(count);
  return {count, whole & (kPowersInTable - 1), whole >> kPowerIndexBits};
}

// Relative error below `kQuickExponentialError`, not counting what the error of x makes of it.
constexpr double kQuickExponentialError = 1.1 * PowerOfTwo(-60);
inline ScaledPair QuickExponential(Pair x) {
  const PartedPower parted = PartOfPower(x.high);
  const Pair r = Sum(x.high - parted.count * kStepHigh, -parted.count * kStepMiddle);
  const double low = r.low - parted.count * kStepLow + x.low;
  const double square = r.high * r.high;
  const double grown = r.high + square * 0.5;  // nearly e^r - 1
  const double series = square * (0.5 + r.high * (1.0 / 6)) +
                        square * square * (1.0 / 24 + r.high * (1.0 / 120) + square * (1.0 / 720));
  const Pair step = kPowersOfTwo[parted.index];
  return {FastSum(step.high, step.low + step.high * (r.high + (low + low * grown + series))),
          parted.exponent};
}

}  // namespace lorv::arithmetic
