#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "TEXPRESSCAL/text/replace_rule.h"
#include "TEXPRESSCAL/text_rewriting.h"
#include "TEXPRESSCAL/values/value_reading.h"
#include "comm/short_decimal.h"
#include "framework/text/char_class.h"

namespace lorv {

// Such a formula is read at once, without substitution or parse: a sign, digits and points in any mix.
inline bool IsPlainNumber(TextView text) {
  if (text.empty()) return false;
  if (text.front() == '-') text.remove_prefix(1);
  return std::all_of(text.begin(), text.end(), [](TCHAR c) { return IsDigit(c) || c == '.'; });
}

// A value as it stands in a formula. Thirds are kept as divisions, so that they lose nothing.
class ValueText {
 public:
  explicit ValueText(double value) {
    if (const int thirds = ThirdsOf(value)) {
      SetThirds(static_cast<TCHAR>('0' + thirds));
    } else {
      length_ = ShortDecimal(value, kDecimals, false, text_.data() + 1, kValueText);
    }
  }

  TextView Plain() const { return {text_.data() + 1, static_cast<std::size_t>(length_)}; }
  // With a "*" in front, for a place behind a digit.
  TextView Multiplied() const { return {text_.data(), static_cast<std::size_t>(length_ + 1)}; }

 private:
  static constexpr int kDecimals = 3;

  void SetThirds(TCHAR numerator) {
    text_[1] = numerator;
    text_[2] = '/';
    text_[3] = '3';
    length_ = 3;
  }

  std::array<TCHAR, kValueText + 1> text_{'*'};
  int length_ = 0;
};

// Whether a hit may be replaced, and how.
enum class Edge { kRefused, kPlain, kBehindDigit };

inline Edge EdgesOf(LPCTSTR text, std::size_t length, std::size_t hit, std::size_t end) {
  if (end < length && IsNameChar(text[end])) return Edge::kRefused;
  if (hit == 0) return Edge::kPlain;
  const TCHAR before = text[hit - 1];
  if (IsDigit(before)) return Edge::kBehindDigit;
  return IsNameChar(before) ? Edge::kRefused : Edge::kPlain;
}

// Puts a value in place of a name. The cursor is set behind each hit before the text changes its length and
// is not moved along: that is how the suite's stored formulas have always been evaluated.
template <class Edit>
void SubstituteValue(Edit& edit, TextView name, double value) {
  std::size_t hit = FindText(edit.Text(), edit.Length(), 0, name);
  if (hit == TextView::npos) return;
  const ValueText number(value);
  for (int pass = 0; pass < kMaxSubstitutions && hit != TextView::npos; ++pass) {
    const std::size_t cursor = hit + name.size();
    const Edge edge = EdgesOf(edit.Text(), edit.Length(), hit, cursor);
    const bool behind_digit = edge == Edge::kBehindDigit;
    if (edge != Edge::kRefused && !(behind_digit && number.Plain() == name)) {
      const TextView fresh = behind_digit ? number.Multiplied() : number.Plain();
      if (IsChange(name, fresh)) edit.Splice(hit, name.size(), fresh);
    }
    hit = cursor > edit.Length() ? TextView::npos : FindText(edit.Text(), edit.Length(), cursor, name);
  }
}

}  // namespace lorv
