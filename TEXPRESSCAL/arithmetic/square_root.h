#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#else
#include <cmath>
#endif

namespace lorv::arithmetic {

// The double nearest to the square root, the same on every system; outside its domain the NaN that the
// processor makes.
//
// By the processor's own instruction: the C library of Windows, which a compiler may call instead, computes
// with 64 bits of mantissa and rounds twice.
inline double SquareRoot(double x) {
#if defined(__SSE2__) || defined(_M_X64)
  const __m128d value = _mm_set_sd(x);
  return _mm_cvtsd_f64(_mm_sqrt_sd(value, value));
#else
  return std::sqrt(x);
#endif
}

}  // namespace lorv::arithmetic
