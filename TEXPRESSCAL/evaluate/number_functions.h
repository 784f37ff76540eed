#pragma once

#include <cmath>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/evaluate/rounding.h"
#include "TEXPRESSCAL/language/expression_node.h"

// The functions of one number, written once for the tree, the direct evaluation and compiled formulas.
namespace lorv {

// Cut to a 32-bit integer; what lies outside its range becomes the lowest one.
inline double Through32Bits(double x) {
#if defined(__SSE2__)
  return _mm_cvttsd_si32(_mm_set_sd(x));
#else
  if (x > -kEndOf32Bits - 1 && x < kEndOf32Bits) return static_cast<double>(static_cast<std::int32_t>(x));
  return -kEndOf32Bits;
#endif
}

// The next whole number below or above, cut likewise. Asking the system's library costs more than all else.
inline double FloorThrough32Bits(double x) {
  const double cut = Through32Bits(x);
  return cut > x && cut > -kEndOf32Bits ? cut - 1 : cut;
}
inline double CeilThrough32Bits(double x) {
  const double cut = Through32Bits(x);
  const double next = cut < x && x < kEndOf32Bits ? cut + 1 : cut;
  return next == kEndOf32Bits ? -kEndOf32Bits : next;
}

inline double Round(double x) {
  return Through32Bits(x < 0 ? (x - 0.5) - kRoundNudge : x + 0.5 + kRoundNudge);
}

// Whether a function gives a whole number of 32 bits.
constexpr bool GoesThrough32Bits(unsigned short kind) {
  return kind == kFloor || kind == kCeil || kind == kRound || kind == kInt;
}

inline double ToRadians(double degrees) {
  return (degrees / 180) * kPi;
}

// A function of one number whose argument is in its domain: all but those that pick, compare or search.
inline double NumberFunction(unsigned short kind, double x) {
  switch (kind) {
    case kSin:
      return arithmetic::Sine(x);
    case kCos:
      return arithmetic::Cosine(x);
    case kExp:
      return arithmetic::Exponential(x);
    case kTg:
    case kTan:
      return arithmetic::Tangent(x);
    case kCtg:
      return 1 / arithmetic::Tangent(x);
    case kAsin:
      return arithmetic::ArcSine(x);
    case kAcos:
      return arithmetic::ArcCosine(x);
    case kAtg:
    case kAtan:
      return arithmetic::ArcTangent(x);
    case kFloor:
      return FloorThrough32Bits(x + kStepNudge);
    case kCeil:
      return CeilThrough32Bits(x - kStepNudge);
    case kRound:
      return Round(x);
    case kInt:
      return Through32Bits(x);
    case kAbs:
      return std::fabs(x);
    case kDtor:
      return ToRadians(x);
    case kRtod:
      return (x * 180) / kPi;
    case kSina:
      return arithmetic::Sine(ToRadians(x));
    case kCosa:
      return arithmetic::Cosine(ToRadians(x));
    case kTana:
      return arithmetic::Tangent(ToRadians(x));
    default:
      return 1 / arithmetic::Tangent(ToRadians(x));  // kCtga
  }
}

}  // namespace lorv
