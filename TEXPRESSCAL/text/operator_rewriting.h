#pragma once

#include <array>
#include <string>

#include "TEXPRESSCAL/language/operators.h"
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

// Unit by unit.
constexpr unsigned SignsIn(TextView text) {
  unsigned signs = 0;
  for (const TCHAR c : text) {
    for (const SignUnit& wanted : kSignUnits) {
      if (c == wanted.unit) signs |= wanted.sign;
    }
  }
  return signs;
}

// Many units at a step.
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
  return signs | SignsIn(text.substr(at));
}

constexpr bool IsLiteralUnit(TCHAR c) {
  return IsDigit(c) || c == '.' || c == '-';
}

// "1<2<X" becomes "1<2 AND 2<X": only behind the first place of each operator, only over a literal.
template <class Edit>
void SeparateChains(Edit& edit, unsigned signs) {
  static constexpr std::array<SignUnit, 3> kChaining = {
      {{'>', kGreaterSign}, {'=', kEqualSign}, {'<', kLessSign}}};
  const auto may_chain = [](TCHAR c) { return c >= '<' && c <= '>'; };
  for (const SignUnit& first : kChaining) {
    if ((signs & first.sign) == 0) continue;
    const std::size_t at = FindUnit(edit.Text(), edit.Length(), 0, first.unit);
    if (at == edit.Length()) continue;
    std::size_t end = at + 1;
    while (end < edit.Length() && IsLiteralUnit(edit.Text()[end])) ++end;
    if (end == at + 1 || end == edit.Length() || !may_chain(edit.Text()[end])) continue;
    const std::basic_string<TCHAR> literal(edit.Text() + at + 1, end - at - 1);
    edit.Splice(end, 0, _T(" AND ") + literal);
  }
}

// Operators become their control characters, in the order of their table, each at kMaxReplacements places at
// most. The words need both blanks, and the blanks go with them.
template <class Edit>
void ShortenOperators(Edit& edit, unsigned signs) {
  static constexpr auto kSignsNeeded = [] {
    std::array<unsigned, kOperators.size()> needed{};
    for (std::size_t i = 0; i < needed.size(); ++i) needed[i] = SignsIn(kOperators[i].typed);
    return needed;
  }();
  for (std::size_t i = 0; i < kOperators.size() && kOperators[i].IsRewritten(); ++i) {
    if ((signs & kSignsNeeded[i]) != kSignsNeeded[i]) continue;
    const auto control = static_cast<TCHAR>(kOperators[i].kind);
    ReplaceFrom(edit, 0, kOperators[i].typed, {&control, 1}, true);
  }
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
