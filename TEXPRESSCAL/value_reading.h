#pragma once

#include <cmath>
#include <cstddef>

// A value stands in a formula as a short text, and what is worked is the number which that text reads as. For
// nearly all values that number follows from the value by arithmetic alone.
namespace lorv {

// Where it does not: values near a third or two thirds (their text is a division), values that lie close to
// the middle between two thousandths, and those so large that their thousandths are no longer exact.
struct ReadingBounds {
  static constexpr double kUnits = 1000;
  static constexpr double kLimit = 0x1p36;  // in units: below it, a value times kUnits is off by a hair only
  static constexpr double kSurely = 0.499;  // nearer to a whole unit than this, rounding surely leads there
  static constexpr double kToWhole = 0x1p52;  // adding and taking it away leaves the nearest whole number
  static constexpr double kThird = 333;       // in units: the texts of thirds are used for less than one unit
  static constexpr double kTwoThirds = 667;   // around them, which these and their two neighbours cover
};

// True, with the number in `reading`, where it follows; else `reading` holds nothing of use. A zero keeps the
// value's sign, as "-0" does.
//
//   1.23449 gives 1.234;  -0.0001 gives -0.0;  0.3333 is refused
inline bool ReadsPlainly(double value, double& reading) {
  using Bounds = ReadingBounds;
  const double units = std::fabs(value) * Bounds::kUnits;
  const double whole = (units + Bounds::kToWhole) - Bounds::kToWhole;
  // The quotient of two exact numbers is the rounded value that reading the digits gives as well.
  reading = std::copysign(whole / Bounds::kUnits, value);
  // No short cuts among the tests: each alone is cheap, and a value hardly ever fails one.
  const bool plain = (units < Bounds::kLimit) & (std::fabs(units - whole) < Bounds::kSurely) &
                     (std::fabs(whole - Bounds::kThird) > 1) & (std::fabs(whole - Bounds::kTwoThirds) > 1);
  return plain;
}

}  // namespace lorv
