#pragma once

#include <array>

#include "TEXPRESSCAL/replace_rule.h"
#include "framework/char_class.h"

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
  kBlankSign = 32
};

constexpr std::array<unsigned char, 128> OperatorSigns() {
  std::array<unsigned char, 128> signs{};
  signs['<'] = kLessSign;
  signs['='] = kEqualSign;
  signs['>'] = kGreaterSign;
  signs['&'] = kAmpersandSign;
  signs['|'] = kBarSign;
  signs[' '] = kBlankSign;
  return signs;
}

inline unsigned SignsOf(TextView text) {
  static constexpr auto kSigns = OperatorSigns();
  unsigned signs = 0;
  for (const TCHAR c : text) {
    if (c < kSigns.size()) signs |= kSigns[c];
  }
  return signs;
}

inline bool IsLiteral(TextView stretch) {
  for (const TCHAR c : stretch) {
    if (!IsDigit(c) && c != '.' && c != '-') return false;
  }
  return !stretch.empty();
}

// "1<2<X" becomes "1<2 AND 2<X": only behind the first place of each operator, only over a literal.
template <class Edit>
void SeparateChains(Edit& edit) {
  static constexpr std::array<TCHAR, 3> kOperators = {'>', '=', '<'};
  for (const TCHAR first : kOperators) {
    const std::size_t at = FindUnit(edit.Text(), edit.Length(), 0, first);
    if (at == edit.Length()) continue;
    for (const TCHAR second : kOperators) {
      const std::size_t end = FindUnit(edit.Text(), edit.Length(), at + 1, second);
      if (end == edit.Length()) continue;
      const std::basic_string<TCHAR> literal(edit.Text() + at + 1, end - at - 1);
      if (IsLiteral(literal)) edit.Splice(end, 0, _T(" AND ") + literal);
    }
  }
}

// Operators become their control characters, in this order, each at kMaxReplacements places at most. The
// words need both blanks, and the blanks go with them.
template <class Edit>
void ShortenOperators(Edit& edit, unsigned signs) {
  const auto shorten = [&edit](TextView old, TCHAR fresh) { ReplaceFrom(edit, 0, old, {&fresh, 1}, true); };
  if (signs & kEqualSign) {
    shorten(_T(">="), 4);
    shorten(_T("=>"), 4);
    shorten(_T("<="), 5);
    shorten(_T("=<"), 5);
    shorten(_T("!="), 6);
  }
  if ((signs & kLessSign) && (signs & kGreaterSign)) shorten(_T("<>"), 6);
  if (signs & kEqualSign) {
    shorten(_T("=="), 7);
    shorten(_T("="), 7);
  }
  if (signs & kBlankSign) shorten(_T(" AND "), 8);
  if (signs & kAmpersandSign) shorten(_T("&&"), 8);
  if (signs & kBlankSign) shorten(_T(" OR "), 9);
  if (signs & kBarSign) shorten(_T("||"), 9);
}

// All of it. `edit` holds a formula in capitals.
template <class Edit>
void RewriteOperators(Edit& edit) {
  unsigned signs = SignsOf({edit.Text(), edit.Length()});
  if (signs & (kLessSign | kEqualSign | kGreaterSign)) {
    const std::size_t length = edit.Length();
    SeparateChains(edit);
    if (edit.Length() != length) signs |= kBlankSign;
  }
  ShortenOperators(edit, signs);
}

}  // namespace lorv
