#include "TEXPRESSCAL/typed_text.h"

#include <algorithm>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lorv {
namespace {

constexpr std::size_t kStep = 8;

// The terminator is among the units, so a shorter text differs before its end is passed.
bool AreSame(LPCTSTR text, const TCHAR* units, std::size_t count) {
  return std::equal(units, units + count, text);
}

}  // namespace

void TypedText::Remember(TextView text) {
  length_ = text.size();
  units_.assign((length_ / kStep + 1) * kStep, 0);
  std::copy(text.begin(), text.end(), units_.begin());
}

#if defined(__SSE2__)

// A step may reach behind the text's terminator, as long as it stays within one page of memory: a page is
// readable as a whole, and what lies behind the terminator is left out of the comparison.
__attribute__((no_sanitize("address"))) bool TypedText::IsWhole(LPCTSTR text) const {
  constexpr std::uintptr_t kPage = 4096;
  const std::size_t count = length_ + 1;
  for (std::size_t at = 0; at < count; at += kStep) {
    const TCHAR* const known = units_.data() + at;
    const std::size_t left = count - at;
    if (reinterpret_cast<std::uintptr_t>(text + at) % kPage > kPage - kStep * sizeof(TCHAR)) {
      if (!AreSame(text + at, known, left < kStep ? left : kStep)) return false;
      continue;
    }
    const __m128i typed = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
    const __m128i same = _mm_cmpeq_epi16(typed, _mm_loadu_si128(reinterpret_cast<const __m128i*>(known)));
    const unsigned counting = left < kStep ? (1U << 2 * left) - 1 : 0xFFFFU;
    if ((static_cast<unsigned>(_mm_movemask_epi8(same)) & counting) != counting) return false;
  }
  return true;
}

#else

bool TypedText::IsWhole(LPCTSTR text) const {
  return AreSame(text, units_.data(), length_ + 1);
}

#endif

}  // namespace lorv
