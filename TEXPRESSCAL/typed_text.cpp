#include "TEXPRESSCAL/typed_text.h"

#include <algorithm>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lorv {
namespace {

constexpr std::size_t kStep = 8;

// Unit by unit: the terminator is among the units, so a shorter text differs before its end is passed, which
// a comparison of whole blocks would not stop at.
bool AreSame(LPCTSTR text, const TCHAR* units, std::size_t count) {
  std::size_t at = 0;
  while (at < count && text[at] == units[at]) ++at;
  return at == count;
}

}  // namespace

void TypedText::Remember(TextView text) {
  length_ = text.size();
  units_.assign((length_ / kStep + 1) * kStep, 0);
  std::copy(text.begin(), text.end(), units_.begin());
}

#if defined(__SSE2__)

// A step may reach behind the text's terminator, as long as it stays within one page of memory: a page is
// readable as a whole, and what lies behind the terminator is left out of the comparison. The units are read
// by no call: the sanitizer would watch what is called.
__attribute__((no_sanitize("address"))) bool TypedText::IsWhole(LPCTSTR text) const {
  constexpr std::uintptr_t kPage = 4096;
  const TCHAR* const known = units_.data();
  if (reinterpret_cast<std::uintptr_t>(text) % kPage + units_.size() * sizeof(TCHAR) > kPage)
    return AreSame(text, known, length_ + 1);
  for (std::size_t at = 0;; at += kStep) {
    const __m128i typed = *reinterpret_cast<const __m128i_u*>(text + at);
    const __m128i same = _mm_cmpeq_epi16(typed, *reinterpret_cast<const __m128i_u*>(known + at));
    const unsigned differing = static_cast<unsigned>(_mm_movemask_epi8(same)) ^ 0xFFFFU;
    // The terminator counts.
    if (at + kStep > length_) return (differing & ((4U << 2 * (length_ - at)) - 1)) == 0;
    if (differing != 0) return false;
  }
}

#else

bool TypedText::IsWhole(LPCTSTR text) const {
  return AreSame(text, units_.data(), length_ + 1);
}

#endif

}  // namespace lorv
