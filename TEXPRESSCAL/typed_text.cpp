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
  const TCHAR* const known = units_.data();
  if (reinterpret_cast<std::uintptr_t>(text) % kPage + units_.size() * sizeof(TCHAR) > kPage)
    return AreSame(text, known, length_ + 1);
  const auto differing = [=](std::size_t at) {
    const __m128i typed = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
    const __m128i same =
        _mm_cmpeq_epi16(typed, _mm_loadu_si128(reinterpret_cast<const __m128i*>(known + at)));
    return static_cast<unsigned>(_mm_movemask_epi8(same)) ^ 0xFFFFU;
  };
  std::size_t at = 0;
  for (; at + kStep <= length_; at += kStep) {
    if (differing(at) != 0) return false;
  }
  return (differing(at) & ((4U << 2 * (length_ - at)) - 1)) == 0;  // the terminator counts
}

#else

bool TypedText::IsWhole(LPCTSTR text) const {
  return AreSame(text, units_.data(), length_ + 1);
}

#endif

}  // namespace lorv
