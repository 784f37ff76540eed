#include "framework/text/text_compare.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Order and length of texts. Letter case folds for ASCII alone, whatever the locale, and units are compared
// by their number: the order of a sorted file must be the same on every machine that reads it.

namespace lorv {
namespace {

struct Same {
  TCHAR operator()(TCHAR c) const { return c; }
};

struct Folded {
  TCHAR operator()(TCHAR c) const { return ToLower(c); }
};

int Difference(TCHAR a, TCHAR b) {
  return static_cast<int>(a) - static_cast<int>(b);
}

template <class Fold>
int CompareViews(TextView a, TextView b, Fold fold) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = Difference(fold(a[i]), fold(b[i]));
    if (difference != 0) return difference;
  }
  // The shorter one first; what stands in both was equal.
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

// The first `count` units of a text that may end sooner.
TextView Beginning(LPCTSTR text, int count) {
  std::size_t length = 0;
  while (length < static_cast<std::size_t>(count) && text[length] != 0) ++length;
  return {text, length};
}

}  // namespace

#if defined(__SSE2__)

// Eight units at a step. A step begins at a multiple of its size and so lies within one page of memory, which
// is readable as a whole; what stands before the text or behind its terminator does not count.
__attribute__((no_sanitize("address", "thread"))) std::size_t TextLength(LPCTSTR text) {
  constexpr std::uintptr_t kStep = sizeof(__m128i);
  const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(text) % kStep;
  const char* at = reinterpret_cast<const char*>(text) - before;
  const __m128i zero = _mm_setzero_si128();
  unsigned ends = ~0U << before;
  for (;; at += kStep, ends = ~0U) {
    const __m128i units = *reinterpret_cast<const __m128i*>(at);
    ends &= static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)));
    if (ends != 0) break;
  }
  return (static_cast<std::size_t>(at - reinterpret_cast<const char*>(text)) +
          static_cast<std::size_t>(std::countr_zero(ends))) /
         sizeof(TCHAR);
}

#else

std::size_t TextLength(LPCTSTR text) {
  return std::char_traits<TCHAR>::length(text);
}

#endif

// The difference of the first unequal units and not only its sign, as callers of old have it.
int CompareExact(LPCTSTR a, LPCTSTR b) {
  while (*a == *b && *a != 0) ++a, ++b;
  return Difference(*a, *b);
}

int CompareExact(TextView a, TextView b) {
  return CompareViews(a, b, Same());
}

int CompareWithoutCase(TextView a, TextView b) {
  return CompareViews(a, b, Folded());
}

}  // namespace lorv

int strcompare(LPCTSTR a, LPCTSTR b, int count) {
  // Without a count the whole texts are compared.
  if (count < 0) return lorv::CompareWithoutCase(a, b);
  return lorv::CompareWithoutCase(lorv::Beginning(a, count), lorv::Beginning(b, count));
}
