#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "framework/text/number_text.h"

// Double2String step by step as it is defined, without any short cut: what the fast way is held against.
namespace lorv::test {

inline double PlainPower(double base, unsigned exponent) {
  double result = 1.0;
  for (;; base *= base) {
    if ((exponent & 1U) != 0) result *= base;
    if ((exponent >>= 1) == 0) return result;
  }
}

inline std::int64_t PlainCut(double value) {
  if (!(value >= -9223372036854775808.0 && value < 9223372036854775808.0)) {
    return std::numeric_limits<std::int64_t>::min();
  }
  return static_cast<std::int64_t>(value);
}

inline std::string PlainDecimal(double value, int digits, bool fixed) {
  const double e = PlainPower(0.1, static_cast<unsigned>(digits + 1));
  std::int32_t scale = 1;
  int places = 0;
  bool stopped = false;
  while (places < digits) {
    const double shifted = value < 0 ? value * scale - 0.5 * e : value * scale + 0.5 * e;
    const double r = static_cast<double>(PlainCut(shifted)) / scale;
    if (std::fabs(value - r) < 5 * e) {
      stopped = true;
      break;
    }
    scale = static_cast<std::int32_t>(static_cast<std::uint32_t>(scale) * 10U);
    ++places;
  }
  if (stopped) {
    if (fixed && places < digits) places = digits;
    return RealToText(value, 'f', places <= 5 ? places : 6);
  }
  return RealToText(value, 'f', digits >= 0 && digits <= 6 ? digits : 6);
}

}  // namespace lorv::test
