#pragma once

#include <cmath>

// A value stands in a formula as a short text, and what is evaluated is the number which that text reads as.
// For nearly all values that number follows from the value by arithmetic alone.
namespace lorv {

// Where it does not: values near a third or two thirds (their text is a division), values that lie close to
// the middle between two thousandths, and those so large that their thousandths are no longer exact.
struct ReadingBounds {
  static constexpr double kUnits = 1000;
  static constexpr double kOneUnit = 0.001;
  static constexpr double kOneUnitRest = -0x1.89374bc6a7efap-66;  // what that misses of a thousandth
  static constexpr double kLimit = 0x1p36;    // in units: below it, a value times kUnits is nearly exact
  static constexpr double kSurely = 0.499;    // nearer to a whole unit than this, rounding surely leads there
  static constexpr double kToWhole = 0x1p52;  // adding and taking it away leaves the nearest whole number
  static constexpr double kOneThird = 0.3333333333333333;
  static constexpr double kTwoThirds = 0.6666666666666666;
  static constexpr double kThirdWidth = 0.001;
};

// One or two thirds where a value is kept as that many, else 0.
inline int ThirdsOf(double value) {
  using Bounds = ReadingBounds;
  if (std::fabs(value - Bounds::kOneThird) < Bounds::kThirdWidth) return 1;
  return std::fabs(value - Bounds::kTwoThirds) < Bounds::kThirdWidth ? 2 : 0;
}

// The number nearest to `whole` thousandths, a whole count below the limit. The quotient of two exact
// numbers is the rounded value that reading the digits gives as well. Where the processor multiplies and
// adds at once, so is the product with a thousandth in two parts: no count lies so close to the middle
// between two numbers that what the product misses would matter.
[[gnu::always_inline]] inline double FromUnits(double whole) {
  using Bounds = ReadingBounds;
#if defined(__FMA__)
  return __builtin_fma(whole, Bounds::kOneUnit, whole * Bounds::kOneUnitRest);
#else
  return whole / Bounds::kUnits;
#endif
}

// True, with the number in `reading`, where it follows; else `reading` holds nothing of use. A zero keeps the
// value's sign, as "-0" does.
//
//   1.23449 gives 1.234;  -0.0001 gives -0.0;  0.3333 is refused
// Always inlined, as are the rules of numbers.
[[gnu::always_inline]] inline bool ReadsPlainly(double value, double& reading) {
  using Bounds = ReadingBounds;
  const double units = std::fabs(value) * Bounds::kUnits;
  const double whole = (units + Bounds::kToWhole) - Bounds::kToWhole;
  reading = std::copysign(FromUnits(whole), value);
  return units < Bounds::kLimit && std::fabs(units - whole) < Bounds::kSurely &&
         std::fabs(value - Bounds::kOneThird) >= Bounds::kThirdWidth &&
         std::fabs(value - Bounds::kTwoThirds) >= Bounds::kThirdWidth;
}

}  // namespace lorv
