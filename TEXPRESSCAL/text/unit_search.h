#pragma once

#include <cstddef>

#include "framework/text/text_compare.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Searches over 16-bit units that the formula engine makes for every value and operator of every formula:
// eight units at a step where the processor can.
namespace lorv {

// The position of `unit` in the first `length` units of `text`, from `from` on; `length` when there is none.
inline std::size_t FindUnit(LPCTSTR text, std::size_t length, std::size_t from, TCHAR unit) {
#if defined(__SSE2__)
  const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
  for (; from + 8 <= length; from += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + from));
    const int hits = _mm_movemask_epi8(_mm_cmpeq_epi16(units, wanted));
    if (hits != 0) return from + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(hits))) / 2;
  }
#endif
  while (from < length && text[from] != unit) ++from;
  return from < length ? from : length;
}

// The position of `name` in the first `length` units of `text`, from `from` on; npos when there is none. The
// name is not empty.
inline std::size_t FindText(LPCTSTR text, std::size_t length, std::size_t from, TextView name) {
  if (length < name.size()) return TextView::npos;
  const std::size_t last = length - name.size();
  while (from <= last) {
    from = FindUnit(text, last + 1, from, name.front());
    if (from > last) break;
    if (TextView(text + from, name.size()) == name) return from;
    ++from;
  }
  return TextView::npos;
}

}  // namespace lorv
