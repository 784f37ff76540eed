#pragma once

#include "TEXPRESSCAL/arithmetic/angle_table.h"
#include "TEXPRESSCAL/arithmetic/double_pair.h"

// Angles in steps of a 512th of the full circle, whatever their size.
namespace lorv::arithmetic {

constexpr int kStepsOfQuarter = 128;

// angle = step * (pi / 256) + rest, the step counted modulo the full circle and |rest| at most some pi / 512.
struct ReducedAngle {
  int step;
  Pair rest;
};

// For finite angles from pi / 512 up. The rest's relative error is below 2^-100.
ReducedAngle ReducedByTable(double angle);

// For all finite angles, with the same error.
ReducedAngle FullyReduced(double angle);

constexpr double kFewSteps = 1024;                // up to here the count of steps has 17 bits
constexpr double kLosesDigits = PowerOfTwo(-20);  // a rest below this has too few good bits left

// The rest's relative error is below 2^-70; its low part may be some 2^-38 of the high one.
inline ReducedAngle QuicklyReduced(double angle) {
  if (!(std::fabs(angle) <= kFewSteps)) return ReducedByTable(angle);
  const double count = (angle * kStepsByAngle + kNearestWhole) - kNearestWhole;
  if (count == 0) return {0, {angle, 0}};
  const double first = angle - count * kAngleStep.high;
  const double second = count * kAngleStep.middle;  // below 2^-24
  const double rest = first - second;
  if (std::fabs(rest) < kLosesDigits) return ReducedByTable(angle);
  return {static_cast<int>(count), {rest, ((first - rest) - second) - count * kAngleStep.low}};
}

}  // namespace lorv::arithmetic
