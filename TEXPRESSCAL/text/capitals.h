#pragma once

#include <cstddef>
#include <string>

#include "framework/text/char_class.h"
#include "framework/text/text_compare.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lorv {

// True for a unit that some operator of several characters, or a chained comparison, needs. All of them lie
// below the digits or between them and the letters, so a formula of plain arithmetic holds none.
constexpr bool MayNeedRewriting(TCHAR c) {
  return (c >= '<' && c <= '>') || c == ' ' || c == '!' || c == '&' || c == '|';
}

// Copies `text` to `out` in capitals; true if any unit may need rewriting. Every formula takes this way, so
// it goes eight units at a step where the processor can.
inline bool CopyCapitals(TextView text, LPTSTR out) {
  std::size_t at = 0;
  bool found = false;
#if defined(__SSE2__)
  const auto all = [](TCHAR c) { return _mm_set1_epi16(static_cast<short>(c)); };
  // Signed comparisons: codes from 0x8000 upward are negative and so below every bound, as they should be.
  const __m128i before_a = all('a' - 1), behind_z = all('z' + 1), case_bit = all(32);
  const __m128i before_less = all('<' - 1), behind_greater = all('>' + 1);
  const __m128i before_blank = all(' ' - 1), behind_exclamation = all('!' + 1);
  __m128i seen = _mm_setzero_si128();
  for (; at + 8 <= text.size(); at += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    const auto between = [units](__m128i before, __m128i behind) {
      return _mm_and_si128(_mm_cmpgt_epi16(units, before), _mm_cmplt_epi16(units, behind));
    };
    const __m128i small = between(before_a, behind_z);
    const __m128i capitals = _mm_sub_epi16(units, _mm_and_si128(small, case_bit));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at), capitals);
    const __m128i single = _mm_or_si128(_mm_cmpeq_epi16(units, all('&')), _mm_cmpeq_epi16(units, all('|')));
    const __m128i pair =
        _mm_or_si128(between(before_less, behind_greater), between(before_blank, behind_exclamation));
    seen = _mm_or_si128(seen, _mm_or_si128(single, pair));
  }
  found = _mm_movemask_epi8(seen) != 0;
#endif
  for (; at < text.size(); ++at) {
    out[at] = ToUpper(text[at]);
    found |= MayNeedRewriting(text[at]);
  }
  return found;
}

inline std::basic_string<TCHAR> Capitals(TextView text) {
  std::basic_string<TCHAR> capitals(text.size(), 0);
  CopyCapitals(text, capitals.data());
  return capitals;
}

// Whether `text` in capitals is `capitals`, which is in capitals already.
inline bool IsInCapitals(TextView text, TextView capitals) {
  if (text.size() != capitals.size()) return false;
  std::size_t at = 0;
#if defined(__SSE2__)
  const auto all = [](TCHAR c) { return _mm_set1_epi16(static_cast<short>(c)); };
  const __m128i before_a = all('a' - 1), behind_z = all('z' + 1), case_bit = all(32);
  const auto units = [](const TCHAR* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  };
  for (; at + 8 <= text.size(); at += 8) {
    const __m128i typed = units(text.data() + at);
    const __m128i small = _mm_and_si128(_mm_cmpgt_epi16(typed, before_a), _mm_cmplt_epi16(typed, behind_z));
    const __m128i raised = _mm_sub_epi16(typed, _mm_and_si128(small, case_bit));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(raised, units(capitals.data() + at))) != 0xFFFF) return false;
  }
#endif
  while (at < text.size() && ToUpper(text[at]) == capitals[at]) ++at;
  return at == text.size();
}

}  // namespace lorv
