#pragma once

#include <cstddef>
#include <string_view>

#include "framework/native/export.h"
#include "framework/native/native_types.h"
#include "framework/text/char_class.h"

// Lengths and three-way comparisons of 16-bit texts.
//
// Units: text units of 16 bits; order is by unit value, so characters beyond the basic plane sort by
//   their surrogates.
// Edges: without case, the letters A to Z count as a to z and nothing else folds, so "_" sorts before the
//   letters. Pointers must not be null.
// Result: negative, zero or positive.
// No locale, no shared state: any thread.
namespace lorv {

using TextView = std::basic_string_view<TCHAR>;

COMM_LORV_API std::size_t TextLength(LPCTSTR text);
COMM_LORV_API int CompareExact(LPCTSTR a, LPCTSTR b);
COMM_LORV_API int CompareExact(TextView a, TextView b);
COMM_LORV_API int CompareWithoutCase(TextView a, TextView b);

// In the header to be inlined: keys are compared with it all the time, and most differ at once.
inline int CompareWithoutCase(LPCTSTR a, LPCTSTR b) {
  for (;; ++a, ++b) {
    if (*a == *b && *a != 0) continue;
    const int difference = static_cast<int>(ToLower(*a)) - static_cast<int>(ToLower(*b));
    if (difference != 0 || *a == 0) return difference;
  }
}

}  // namespace lorv

// The suite's own comparison of texts: without case, of the first `count` units, the whole texts for -1.
//
//   strcompare(_T("Beam"), _T("BEAM"), -1)  gives 0
COMM_LORV_API int strcompare(LPCTSTR a, LPCTSTR b, int count);
