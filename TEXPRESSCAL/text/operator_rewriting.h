#pragma once

#include <algorithm>
#include <array>
#include <string>

#include "TEXPRESSCAL/text/replace_rule.h"
#include "framework/text/char_class.h"

// What is done to an upper-case formula before it is parsed: comparisons chained over a literal are taken
// apart, and operators of several characters become single control characters. Quoted text is not spared.
namespace lorv {

// Which rules can apply at all: the signs that a text holds, a bit each. Most formulas hold few of them.
enum OperatorSign : unsigned char {
  kLessSign = 1,
  kEqualSign = 2,
  kGreaterSign = 4,
  kAmpersandSign = 8,
  kBarSign = 16,
  kBlankSign = 32,
  kNotSign = 64
};

struct SignUnit {
  TCHAR unit;
  OperatorSign sign;
};

constexpr std::array<SignUnit, 7> kSignUnits = {{{'<', kLessSign},
                                                 {'=', kEqualSign},
                                                 {'>', kGreaterSign},
                                                 {'&', kAmpersandSign},
                                                 {'|', kBarSign},
                                                 {' ', kBlankSign},
                                                 {'!', kNotSign}}};

inline unsigned SignsOf(TextView text) {
  unsigned signs = 0;
  std::size_t at = 0;
#if defined(__SSE2__)
  __m128i seen[kSignUnits.size()] = {};
  for (; at + 8 <= text.size(); at += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    for (std::size_t i = 0; i < kSignUnits.size(); ++i) {
      const __m128i wanted = _mm_set1_epi16(static_cast<short>(kSignUnits[i].unit));
      seen[i] = _mm_or_si128(seen[i], _mm_cmpeq_epi16(units, wanted));
    }
  }
  for (std::size_t i = 0; i < kSignUnits.size(); ++i) {
    if (_mm_movemask_epi8(seen[i]) != 0) signs |= kSignUnits[i].sign;
  }
#endif
  for (; at < text.size(); ++at) {
    for (const SignUnit& wanted : kSignUnits) {
      if (text[at] == wanted.unit) signs |= wanted.sign;
    }
  }
  return signs;
}

constexpr bool IsLiteralUnit(TCHAR c) {
  return IsDigit(c) || c == '.' || c == '-';
}

// "1<2<X" becomes "1<2 AND 2<X": only behind the first place of each operator, only over a literal.
template <class Edit>
void SeparateChains(Edit& edit, unsigned signs) {
  static constexpr std::array<TCHAR, 3> kOperators = {'>', '=', '<'};
  static constexpr std::array<OperatorSign, 3> kSigns = {kGreaterSign, kEqualSign, kLessSign};
  for (std::size_t i = 0; i < kOperators.size(); ++i) {
    if ((signs & kSigns[i]) == 0) continue;
    const TCHAR first = kOperators[i];
    const std::size_t at = FindUnit(edit.Text(), edit.Length(), 0, first);
    if (at == edit.Length()) continue;
    std::size_t end = at + 1;
    while (end < edit.Length() && IsLiteralUnit(edit.Text()[end])) ++end;
    if (end == at + 1 || end == edit.Length()) continue;
    if (std::find(kOperators.begin(), kOperators.end(), edit.Text()[end]) == kOperators.end()) continue;
    const std::basic_string<TCHAR> literal(edit.Text() + at + 1, end - at - 1);
    edit.Splice(end, 0, _T(" AND ") + literal);
  }
}

// Operators become their control characters, in this order, each at kMaxReplacements places at most. The
// words need both blanks, and the blanks go with them.
template <class Edit>
void ShortenOperators(Edit& edit, unsigned signs) {
  const auto shorten = [&edit](TextView old, TCHAR fresh) { ReplaceFrom(edit, 0, old, {&fresh, 1}, true); };
  const auto has = [signs](unsigned wanted) { return (signs & wanted) == wanted; };
  if (has(kEqualSign | kGreaterSign)) {
    shorten(_T(">="), 4);
    shorten(_T("=>"), 4);
  }
  if (has(kEqualSign | kLessSign)) {
    shorten(_T("<="), 5);
    shorten(_T("=<"), 5);
  }
  if (has(kEqualSign | kNotSign)) shorten(_T("!="), 6);
  if (has(kLessSign | kGreaterSign)) shorten(_T("<>"), 6);
  if (has(kEqualSign)) {
    shorten(_T("=="), 7);
    shorten(_T("="), 7);
  }
  if (has(kBlankSign)) shorten(_T(" AND "), 8);
  if (has(kAmpersandSign)) shorten(_T("&&"), 8);
  if (has(kBlankSign)) shorten(_T(" OR "), 9);
  if (has(kBarSign)) shorten(_T("||"), 9);
}

// All of it. `edit` holds a formula in capitals.
template <class Edit>
void RewriteOperators(Edit& edit) {
  unsigned signs = SignsOf({edit.Text(), edit.Length()});
  if (signs & (kLessSign | kEqualSign | kGreaterSign)) {
    const std::size_t length = edit.Length();
    SeparateChains(edit, signs);
    if (edit.Length() != length) signs |= kBlankSign;
  }
  ShortenOperators(edit, signs);
}

}  // namespace lorv
